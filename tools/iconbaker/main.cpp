// Makes the program's images from their drawings: every icon as PNG in three densities, the function buttons
// with a caption in each language, and the resource collection that lists them all. Runs while the program is
// built.
#include "ButtonPainter.h"
#include "ImageStore.h"
#include "Tables.h"

#include <QGuiApplication>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <exception>

namespace {

constexpr int densities[] = {1, 2, 3};

void bakePlain(const PlainImage& image,
               const QVector<QString>& languages,
               const ButtonPainter& painter,
               ImageStore& store)
{
    const QVector<QString> groups =
        image.folder == QLatin1String("languages") ? languages : QVector<QString>{image.folder};
    for (const int scale : densities) {
        const QImage picture = painter.plain(image.source, image.size, image.iconHeight, scale);
        for (const QString& group : groups)
            store.add(group, image.name, scale, picture);
    }
}

void bakeCaptioned(const CaptionedImage& button,
                   const QVector<QString>& languages,
                   const ButtonPainter& painter,
                   ImageStore& store)
{
    for (int i = 0; i < languages.size(); ++i) {
        for (const int scale : densities) {
            store.add(languages[i],
                      button.name,
                      scale,
                      painter.captioned(button.source, button.captions[i], languages[i], scale));
        }
    }
}

void bake(const QString& sourceFolder, const QString& outputFolder)
{
    const ButtonPainter painter(sourceFolder + QStringLiteral("/icons"));
    const Captions captions = readCaptions(sourceFolder + QStringLiteral("/captions.csv"));
    ImageStore store(outputFolder);
    for (const PlainImage& image : readImages(sourceFolder + QStringLiteral("/images.csv")))
        bakePlain(image, captions.languages, painter, store);
    for (const CaptionedImage& button : captions.buttons)
        bakeCaptioned(button, captions.languages, painter, store);
    store.writeCollection(outputFolder + QStringLiteral("/images.qrc"));
}

} // namespace

int main(int argc, char** argv)
{
    setenv("QT_QPA_PLATFORM", "offscreen", 1); // a build machine has no display
    const QTemporaryDir runtimeFolder;         // nor a session, which the toolkit would mention
    setenv("XDG_RUNTIME_DIR", runtimeFolder.path().toUtf8().constData(), 1);
    const QGuiApplication app(argc, argv);
    if (QCoreApplication::arguments().size() != 3) {
        std::fprintf(stderr, "usage: iconbaker <resources folder> <output folder>\n");
        return 2;
    }
    try {
        bake(QCoreApplication::arguments().at(1), QCoreApplication::arguments().at(2));
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "iconbaker: %s\n", failure.what());
        return 1;
    }
    return 0;
}
