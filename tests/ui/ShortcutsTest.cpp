#include "Shortcuts.h"

#include "ConfigSet.h"
#include "FreshSettings.h"

#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

namespace {

/// The toolkit's own wait takes a window for active whose owner is.
bool activate(QWidget& window)
{
    window.show();
    window.activateWindow();
    return QTest::qWaitFor([&] { return QApplication::activeWindow() == &window; });
}

class ShortcutsTest : public FreshSettings
{
protected:
    ShortcutsTest()
    {
        store("Shortcut_Scanner", "F5");
        store("Shortcut_Document", "Ctrl+D");
        store("Shortcut_Book", "b");
        window.resize(300, 200);
        EXPECT_TRUE(activate(window));
    }
    void store(const char* key, const char* text)
    {
        settings.GetSettings()->setValue(QLatin1String(key), QLatin1String(text));
    }
    /// How often each of the three was pressed since the last call.
    QVector<int> pressed()
    {
        QVector<int> counts;
        for (QSignalSpy* spy : {&scanner, &document, &book}) {
            counts << spy->count();
            spy->clear();
        }
        return counts;
    }

    QWidget window;
    QWidget* host = new QWidget(&window);
    Shortcuts* shortcuts = new Shortcuts(*host);
    QSignalSpy scanner{shortcuts, &Shortcuts::scannerPressed};
    QSignalSpy document{shortcuts, &Shortcuts::documentPressed};
    QSignalSpy book{shortcuts, &Shortcuts::bookPressed};
};

} // namespace

TEST_F(ShortcutsTest, EachKeyStartsItsCapture)
{
    shortcuts->rebind();
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(pressed(), (QVector<int>{1, 0, 0}));
    QTest::keyClick(&window, Qt::Key_D, Qt::ControlModifier);
    EXPECT_EQ(pressed(), (QVector<int>{0, 1, 0}));
    QTest::keyClick(&window, Qt::Key_D);
    QTest::keyClick(&window, Qt::Key_B);
    EXPECT_EQ(pressed(), (QVector<int>{0, 0, 1}));
    QKeyEvent held(QEvent::KeyPress, Qt::Key_F5, Qt::NoModifier, QString(), true);
    qApp->notify(&window, &held);
    EXPECT_EQ(pressed(), (QVector<int>{0, 0, 0})) << "a key held down";
}

TEST_F(ShortcutsTest, BindsNothingToWhatIsNoCombinationOrTaken)
{
    struct Case
    {
        const char* scanner;
        const char* document;
        QVector<int> counts; // after F5, Ctrl+D
    };
    const Case cases[] = {
        {"rubbish", "Ctrl+D", {0, 1, 0}},
        {"", "F5", {0, 1, 0}},
        {"F5", "F5", {1, 0, 0}},         // the first one wins
        {"F5", "f5 ", {1, 0, 0}},        // however it is written
        {"F5", "F5, Ctrl+D", {1, 0, 0}}, // never reached
        {"F5, Ctrl+D", "F5", {1, 0, 0}}, // would eat the first key
    };
    for (const Case& c : cases) {
        store("Shortcut_Scanner", c.scanner);
        store("Shortcut_Document", c.document);
        shortcuts->rebind();
        QTest::keyClick(&window, Qt::Key_F5);
        QTest::keyClick(&window, Qt::Key_D, Qt::ControlModifier);
        EXPECT_EQ(pressed(), c.counts) << c.scanner << " | " << c.document;
    }
}

TEST_F(ShortcutsTest, StaysOutOfOtherWindowsAndGoesAlongIntoOneOfItsOwn)
{
    shortcuts->rebind();
    for (const auto modality : {Qt::NonModal, Qt::WindowModal}) {
        QDialog dialog(&window);
        dialog.setWindowModality(modality);
        QLineEdit edit(&dialog);
        ASSERT_TRUE(activate(dialog));
        edit.setFocus();
        QTest::keyClicks(&edit, QStringLiteral("abba"));
        QTest::keyClick(&edit, Qt::Key_F5);
        EXPECT_EQ(edit.text(), QStringLiteral("abba"));
        EXPECT_EQ(pressed(), (QVector<int>{0, 0, 0})) << modality;
    }

    host->setWindowFlags(Qt::Window | Qt::FramelessWindowHint); // as the preview does for the full screen
    ASSERT_TRUE(activate(*host));
    QTest::keyClick(host, Qt::Key_F5);
    EXPECT_EQ(pressed(), (QVector<int>{1, 0, 0}));
    host->setWindowFlags(Qt::Widget);
    host->show();
    ASSERT_TRUE(activate(window));
    QTest::keyClick(&window, Qt::Key_F5);
    EXPECT_EQ(pressed(), (QVector<int>{1, 0, 0}));
}

TEST_F(ShortcutsTest, AChangeInTheSettingsWorksAtOnce)
{
    ConfigSet dialog(&window);
    QObject::connect(&dialog, &ConfigSet::shortcutschanged, shortcuts, &Shortcuts::rebind);
    dialog.show();
    dialog.findChild<QPushButton*>(QStringLiteral("buttonShortcut"))->click();
    auto* edit = dialog.findChild<QLineEdit*>(QStringLiteral("editScanner"));
    edit->setFocus();
    QTest::keyClick(edit, Qt::Key_G, Qt::ControlModifier);
    dialog.close();
    ASSERT_TRUE(activate(window));
    EXPECT_EQ(pressed(), (QVector<int>{0, 0, 0}));
    QTest::keyClick(&window, Qt::Key_F5);
    QTest::keyClick(&window, Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(pressed(), (QVector<int>{1, 0, 0})) << "the new one, not the old one too";
}
