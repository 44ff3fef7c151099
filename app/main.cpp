#include "ChineseLetters.h"
#include "Dialogs.h"
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
#include <QScreen>
#include <QStandardPaths>
#include <QTranslator>

#include <cstdio>

namespace {

/// A capture may hold the other instance's window up for ten seconds.
constexpr std::chrono::seconds patienceWithTheOther(12);

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

/// Texts in the chosen language, and the look of the windows.
class Interface
{
public:
    explicit Interface(QApplication& app)
    {
        const int language = settings::appLanguage.read();
        install(toolkitTexts_, languages::toolkitTranslationFile(language, QLocale::system()));
        install(ownTexts_, languages::translationFile(language, QLocale::system()));
        Look::install(app);
        if (languages::wantChineseLetters(language, QLocale::system()))
            QApplication::setFont(ChineseLetters::in(QApplication::font()));
    }

private:
    QTranslator toolkitTexts_;
    QTranslator ownTexts_;
};

/// Where the window goes when it is restored for the first time: in the middle, with some desktop around it.
QRect restoredPlace(const QSize& wanted)
{
    const QRect area = QGuiApplication::primaryScreen()->availableGeometry();
    QRect place(QPoint(), wanted.boundedTo(area.size() * 9 / 10));
    place.moveCenter(area.center());
    return place;
}

/// @return the exit status
int giveWay(SingleInstance::Start other, QApplication& app)
{
    if (other == SingleInstance::Start::Forward) {
        std::fputs("start: the program runs already; its window has come forward\n", stderr);
        return 0;
    }
    std::fputs("start: the program runs already but does not answer\n", stderr);
    const Interface interface(app);
    QWidget screen; // stays hidden: messages stand in the middle of the largest window
    screen.resize(QGuiApplication::primaryScreen()->size());
    Dialogs::warn(
        nullptr,
        QCoreApplication::translate("Start",
                                    "The program is already running but does not answer. Please end "
                                    "it, or wait a moment, and start again."));
    return 1;
}

} // namespace

int main(int argc, char** argv)
{
    QApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    // No window draws with OpenGL; without this the first one loads the whole driver, a third of the start.
    QApplication::setAttribute(Qt::AA_ForceRasterWidgets);
    // File dialogs with the frame and the buttons of the other windows, on every desktop.
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    QApplication app(argc, argv);
    Q_INIT_RESOURCE(images);
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/images/common/images/common/lumro.png")));

    SingleInstance instance(QCoreApplication::applicationName());
    const SingleInstance::Start start = instance.start(patienceWithTheOther);
    if (start != SingleInstance::Start::Runs)
        return giveWay(start, app);

    const Interface interface(app);
    makeDocumentsFolder();
    UiMap::startIfWanted(app);

    LumroScanner window;
    const StartReport report(*window.findChild<VideoView*>());
    window.setGeometry(restoredPlace(window.size()));
    window.showMaximized();
    ConfigSettings store;
    leftOverFiles::removeInBackground(settings::savePath(store));
    QObject::connect(&instance, &SingleInstance::asked, &window, &LumroScanner::onSecondStart);
    // What is still being written when the window has closed need not keep the next start waiting.
    QObject::connect(&app, &QApplication::aboutToQuit, &instance, &SingleInstance::release);
    return QApplication::exec();
}
