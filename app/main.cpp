#include "Languages.h"
#include "LeftOverFiles.h"
#include "Look.h"
#include "LumroScanner.h"
#include "Settings.h"
#include "SingleInstance.h"
#include "StartReport.h"
#include "UiMap.h"
#include "VideoView.h"

#include <QApplication>
#include <QDir>
#include <QIcon>
#include <QStandardPaths>
#include <QTranslator>

#include <memory>

namespace {

void install(QTranslator& translator, const QString& file)
{
    if (file.isEmpty())
        return;
    const QString path = QStringLiteral("%1/lib/%2").arg(QCoreApplication::applicationDirPath(), file);
    if (translator.load(path))
        QCoreApplication::installTranslator(&translator);
}

/// A fresh account may have no documents folder yet; the default folder for pictures lies in it.
void makeDocumentsFolder()
{
    QDir().mkpath(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // No window draws with OpenGL; without this the first one loads the whole driver, a third of the start.
    QApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/common/images/common/lumro.png")));

    SingleInstance instance(QCoreApplication::applicationName());
    if (!instance.acquire())
        return 0;

    const int language = settings::appLanguage.read();
    QTranslator toolkitTexts;
    install(toolkitTexts, languages::toolkitTranslationFile(language, QLocale::system()));
    QTranslator ownTexts;
    install(ownTexts, languages::translationFile(language, QLocale::system()));
    makeDocumentsFolder();
    Look::install(app);
    UiMap::startIfWanted(app);

    LumroScanner window;
    const StartReport report(*window.findChild<VideoView*>());
    window.showMaximized();
    ConfigSettings store;
    leftOverFiles::removeInBackground(settings::savePath(store));
    return QApplication::exec();
}
