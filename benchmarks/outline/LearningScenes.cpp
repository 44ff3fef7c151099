#include "LearningScenes.h"

#include "PlainScenes.h"

#include <QGuiApplication>

#include <cstdlib>
#include <memory>

void forScenesOf(unsigned seed, const UseScene& use)
{
    for (size_t desk = 0; desk < desktops::names.size(); ++desk) {
        const auto kind = static_cast<desktops::Kind>(desk);
        const OutlineScene scene = makeOutlineScene(kind, learningFrame, seed);
        use(scene.picture, scene.sheet);
        if (seed % 2 == 0)
            use(makeEmptyDesk(kind, learningFrame, seed), {});
    }
    for (int desk = 0; desk < plainDesks; ++desk) {
        const PlainScene scene = makePlainScene(static_cast<made::Desk>(desk), learningFrame, seed);
        use(scene.picture, scene.sheet);
    }
}

int writeExamples(int argc,
                  char** argv,
                  const char* usage,
                  const std::function<UseScene(std::FILE* file, bool hasOption)>& use,
                  const std::function<void(unsigned seed, bool hasOption, const UseScene& use)>& scenes)
{
    if (argc < 2) {
        std::fprintf(stderr, "%s\n", usage);
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    cv::setNumThreads(1);
    const unsigned count = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 100;
    const unsigned first = argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1000;
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::fopen(argv[1], "wb"), std::fclose);
    if (!file) {
        std::perror(argv[1]);
        return 1;
    }
    const bool hasOption = argc > 4;
    const UseScene write = use(file.get(), hasOption);
    for (unsigned seed = first; seed < first + count; ++seed)
        scenes(seed, hasOption, write);
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0 ? 0 : 1;
}
