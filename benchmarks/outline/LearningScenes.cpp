#include "LearningScenes.h"

#include "PlainScenes.h"
#include "map/MapScenes.h"

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

void forSmallScenesOf(unsigned seed, const UseScene& use)
{
    for (const auto& scene : {sheetmap::makeMapScene(seed), sheetmap::makeStackScene(seed)})
        use(scene.picture, scene.sheet);
}

int writeExamples(int argc,
                  char** argv,
                  const char* usage,
                  const std::function<UseScene(std::FILE* file, const std::string& option)>& use,
                  const std::function<void(unsigned seed, const UseScene& use)>& scenes)
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
    const std::string option = argc > 4 ? argv[4] : "";
    const UseScene write = use(file.get(), option);
    for (unsigned seed = first; seed < first + count; ++seed) {
        if (option.rfind("small", 0) == 0)
            forSmallScenesOf(seed, write);
        else
            scenes(seed, write);
    }
    return std::fflush(file.get()) == 0 && std::ferror(file.get()) == 0 ? 0 : 1;
}
