// What the pages of the settings show, store and tell.
#include "AnsweredDialogs.h"
#include "FreshSettings.h"
#include "Part.h"
#include "SetAbout.h"
#include "SetAutoPage.h"
#include "SetGlobal.h"
#include "SetImage.h"
#include "SetShortcut.h"
#include "Settings.h"
#include "ShortcutText.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFileDialog>
#include <QLineEdit>
#include <QRadioButton>
#include <QSignalSpy>
#include <QTest>

namespace {

class SettingsPages : public FreshSettings
{
protected:
    QVariant stored(const char* key) { return settings.GetSettings()->value(QLatin1String(key)); }
    void store(const char* key, const QVariant& value)
    {
        settings.GetSettings()->setValue(QLatin1String(key), value);
    }
    QVariantMap everything()
    {
        QVariantMap values;
        for (const QString& key : settings.GetSettings()->allKeys())
            values[key] = settings.GetSettings()->value(key);
        return values;
    }
};

class Prefix : public SettingsPages
{
protected:
    Prefix() : edit(part<QLineEdit>(page, "editPrefix"))
    {
        edit->clear();
        settings.GetSettings()->clear();
    }
    void type(const QString& text) { QTest::keyClicks(edit, text); }
    QString stored() { return SettingsPages::stored("Naming_Prefix").toString(); }

    SetGlobal page;
    QLineEdit* edit;
};

/// Does what the user does with a control: ticks, or goes to the last row.
void use(QWidget* widget)
{
    if (qobject_cast<QComboBox*>(widget))
        QTest::keyClick(widget, Qt::Key_End);
    else if (qobject_cast<QLineEdit*>(widget))
        QTest::keyClicks(widget, QStringLiteral("xy"));
    else
        qobject_cast<QAbstractButton*>(widget)->click();
}

struct Row
{
    const char* control;
    const char* key;
    QVariant after;
};

} // namespace

TEST_F(SettingsPages, StoreEveryControlUnderItsKeyAlone)
{
    store("App_Language", 0);
    const SetGlobal global;
    const SetImage image;
    const SetAutoPage automatic;
    const SetShortcut shortcut;
    const Row rows[] = {
        {"radioDateTime", "Naming_Rules", 1},
        {"radioSerialNumber", "Naming_Rules", 0},
        {"radioRemoveBackground", "Scan_Type", 1},
        {"radioBinary", "Scan_Type", 2},
        {"radioEnhance", "Scan_Type", 3},
        {"radioRedSeal", "Scan_Type", 4},
        {"radioBlueSeal", "Scan_Type", 5},
        {"radioOriginal", "Scan_Type", 0},
        {"checkDirByDate", "Create_dir_data", true},
        {"checkMarkUnsure", "Ocr_Mark_Unsure", false},
        {"comboLanguage", "App_Language", 2},
        {"comboFormat", "Image_Format", 2},
        {"comboScanSize", "Scan_Size", 2},
        {"checkComposite", "Camera_Synthesis", true},
        {"comboMergePosition", "Merge_Pos", 3},
        {"checkSound", "Scanner_Sound", true},
        {"checkBookLine", "Book_Line", true},
        {"comboWatermarkPosition", "Watermark_Pos", 4},
        {"checkTimeWatermark", "Watermark_Time", true},
        {"editWatermark", "Watermark_Text", QStringLiteral("xy")},
        {"radioTimerScan", "AutoScan_Type", 1},
        {"radioAutoScan", "AutoScan_Type", 0},
        {"comboDelay", "AutoScan_Delay", 30},
        {"editScanner", "Shortcut_Scanner", QStringLiteral("Y")},
    };
    for (const Row& row : rows) {
        QVariantMap expected = everything();
        expected[QLatin1String(row.key)] = row.after;
        for (const QWidget* page :
             std::initializer_list<const QWidget*>{&global, &image, &automatic, &shortcut})
            if (auto* used = page->findChild<QWidget*>(QLatin1String(row.control)))
                use(used);
        EXPECT_EQ(everything(), expected) << row.control;
    }
}

TEST_F(SettingsPages, CountTheRowsOfAPosition)
{
    const SetImage image;
    const SetAutoPage automatic;
    auto* delay = part<QComboBox>(automatic, "comboDelay");
    EXPECT_EQ(delay->currentText(), QStringLiteral("5")) << "where nothing is stored";
    auto* watermark = part<QComboBox>(image, "comboWatermarkPosition");
    auto* merge = part<QComboBox>(image, "comboMergePosition");
    const std::tuple<QComboBox*, const char*, const char*, int> choices[] = {
        {watermark, "Bottom left", "Watermark_Pos", 2},
        {watermark, "None", "Watermark_Pos", 0},
        {merge, "Bottom left", "Merge_Pos", 1},
        {delay, "1", "AutoScan_Delay", 1}};
    for (const auto& [box, text, key, value] : choices) {
        box->setCurrentIndex(box->findText(QLatin1String(text)));
        EXPECT_EQ(stored(key), value) << text;
    }
}

TEST_F(SettingsPages, ShowWhatIsStoredTheFirstOfWhatIsUnknownAndWriteNothing)
{
    store("Naming_Prefix", QString(50, QLatin1Char('p'))); // longer than the edit takes
    store("Naming_Rules", 1);
    store("Scan_Type", 4);
    store("App_Language", 7); // none of the rows: the locale decides
    store("Merge_Pos", 2);
    store("Scan_Size", 1);
    store("Book_Line", true);
    store("AutoScan_Delay", 31); // no row
    store("AutoScan_Type", 1);
    store("Save_Path", QStringLiteral("/some/where"));
    store("Shortcut_Book", QStringLiteral("Ctrl+B"));
    const QVariantMap before = everything();
    SetGlobal global;
    SetImage image;
    SetAutoPage automatic;
    SetShortcut shortcut;
    for (QWidget* page : std::initializer_list<QWidget*>{&global, &image, &automatic, &shortcut}) {
        page->show();
        QCoreApplication::processEvents();
        page->hide();
    }
    EXPECT_EQ(everything(), before);
    EXPECT_EQ(part<QLineEdit>(global, "editPrefix")->text(), QString(40, QLatin1Char('p')));
    EXPECT_TRUE(part<QRadioButton>(global, "radioDateTime")->isChecked());
    EXPECT_TRUE(part<QRadioButton>(global, "radioRedSeal")->isChecked());
    EXPECT_EQ(part<QComboBox>(global, "comboLanguage")->currentIndex(), -1);
    EXPECT_EQ(part<QComboBox>(image, "comboMergePosition")->currentText(), QStringLiteral("Top right"));
    EXPECT_EQ(part<QComboBox>(image, "comboScanSize")->currentText(), QStringLiteral("A4"));
    EXPECT_TRUE(part<QCheckBox>(image, "checkBookLine")->isChecked());
    EXPECT_EQ(part<QLineEdit>(image, "editPath")->text(), QStringLiteral("/some/where"));
    EXPECT_TRUE(part<QRadioButton>(automatic, "radioTimerScan")->isChecked());
    EXPECT_EQ(part<QComboBox>(automatic, "comboDelay")->currentIndex(), -1);
    EXPECT_EQ(part<QLineEdit>(shortcut, "editBook")->text(), QStringLiteral("Ctrl+B"));

    store("Naming_Rules", 2);
    store("Scan_Type", -3);
    settings.GetSettings()->remove(QStringLiteral("AutoScan_Type"));
    const SetGlobal unknown;
    EXPECT_TRUE(part<QRadioButton>(unknown, "radioSerialNumber")->isChecked());
    EXPECT_TRUE(part<QRadioButton>(unknown, "radioOriginal")->isChecked());
    EXPECT_EQ(stored("Naming_Rules"), 2) << "but nothing is written";
    part<QRadioButton>(unknown, "radioOriginal")->click();
    EXPECT_EQ(stored("Scan_Type"), 0) << "a click on the ticked one is a choice too";
    const SetAutoPage unset;
    EXPECT_TRUE(part<QRadioButton>(unset, "radioAutoScan")->isChecked()) << "where nothing is stored";
}

TEST_F(Prefix, TakesForbiddenCharactersOutOfTheEditOnlyAndIsStoredUpTo32)
{
    type(QStringLiteral("ab"));
    QTest::keyClick(edit, Qt::Key_Left);
    type(QStringLiteral("/"));
    EXPECT_EQ(edit->text(), QStringLiteral("ab"));
    EXPECT_EQ(edit->cursorPosition(), 1) << "the next character belongs where the slash was";
    EXPECT_EQ(stored(), QStringLiteral("a/b"));
    type(QStringLiteral("c"));
    EXPECT_EQ(edit->text(), QStringLiteral("acb"));
    EXPECT_EQ(stored(), QStringLiteral("acb"));
    edit->setText(QStringLiteral("\\x/:*?\"y<>|")); // as pasted
    EXPECT_EQ(edit->text(), QStringLiteral("xy"));
    EXPECT_EQ(stored(), QStringLiteral("\\x/:*?\"y<>|"));

    edit->clear();
    const QString longest(32, QLatin1Char('a'));
    type(longest);
    EXPECT_EQ(stored(), longest);
    type(QStringLiteral("b"));
    EXPECT_EQ(stored(), longest);
    EXPECT_EQ(edit->text(), longest + QLatin1Char('b'));
    type(QString(20, QLatin1Char('c')));
    EXPECT_EQ(edit->text().size(), 40);
    EXPECT_EQ(stored(), longest);
}

TEST_F(Prefix, FallsBackWhereNothingIsLeft)
{
    type(QStringLiteral("/"));
    EXPECT_EQ(edit->text(), QString());
    EXPECT_EQ(stored(), QStringLiteral("IMAGE"));
    type(QStringLiteral(" "));
    EXPECT_EQ(edit->text(), QStringLiteral("IMAGE"));
    EXPECT_EQ(stored(), QStringLiteral("IMAGE"));
    edit->selectAll();
    type(QStringLiteral("x"));
    EXPECT_EQ(stored(), QStringLiteral("x"));
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(SettingsPages::stored("Naming_Prefix"), QVariant(QString()));
    EXPECT_EQ(edit->text(), QString()) << "not while the user is about to write";
    page.show();
    EXPECT_EQ(edit->text(), QStringLiteral("IMAGE"));
}

TEST(FileName, HasItsLimits)
{
    const auto isCorrect = [](const QString& name) { return SetGlobal::IsCorrectFileName(name); };
    EXPECT_FALSE(isCorrect(QString()) || isCorrect(QStringLiteral(" ")));
    EXPECT_TRUE(isCorrect(QStringLiteral("  ")) && isCorrect(QStringLiteral("a")));
    EXPECT_TRUE(isCorrect(QString(128, QLatin1Char('a'))) && !isCorrect(QString(129, QLatin1Char('a'))));
    for (const QChar character : QStringLiteral("\\/:*?\"<>|"))
        EXPECT_FALSE(isCorrect(QStringLiteral("a") + character)) << character.toLatin1();
    EXPECT_TRUE(isCorrect(QStringLiteral("[Договор] 2024.05 合同;'-_^$()")));
}

TEST_F(SettingsPages, ChooseAFolderAndNameTheProgramAndItsVersion)
{
    AnsweredDialogs answers;
    const SetImage image;
    auto* path = part<QLineEdit>(image, "editPath");
    const QString usual =
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation) + QStringLiteral("/ScannerImage");
    EXPECT_EQ(path->text(), usual);
    auto* browse = part<QAbstractButton>(image, "buttonBrowse");
    browse->click(); // cancelled
    EXPECT_EQ(path->text(), usual);
    EXPECT_FALSE(stored("Save_Path").isValid());

    QString title;
    Dialogs::instance().chooseFiles = [&title](QFileDialog& dialog) {
        title = dialog.windowTitle();
        EXPECT_EQ(dialog.fileMode(), QFileDialog::Directory);
        return QStringList{QStringLiteral("/mnt/scans")};
    };
    browse->click();
    EXPECT_EQ(title, QStringLiteral("Select Directory"));
    EXPECT_EQ(path->text(), QStringLiteral("/mnt/scans"));
    EXPECT_EQ(stored("Save_Path"), QStringLiteral("/mnt/scans"));
    QTest::keyClicks(path, QStringLiteral("x"));
    EXPECT_EQ(path->text(), QStringLiteral("/mnt/scans")) << "what is shown is what is stored";

    const SetAbout about;
    EXPECT_EQ(part<QLabel>(about, "labelProduct")->text(),
              QStringLiteral("Lumro High Speed Portable Scanner"));
    EXPECT_EQ(part<QLabel>(about, "labelNumber")->text(), QStringLiteral(BUILT_VERSION));
    EXPECT_FALSE(part<QLabel>(about, "labelLogo")->pixmap(Qt::ReturnByValue).isNull());
}

TEST_F(SettingsPages, MarkWhatIsNoShortcutAndRecordTheKeysThatArePressed)
{
    store("Shortcut_Document", QStringLiteral("rubbish"));
    const SetShortcut page;
    const auto isMarked = [&page](const char* edit) {
        return part<QLineEdit>(page, edit)->property("unusable").toBool();
    };
    const auto* hint = part<QLabel>(page, "labelHint");
    EXPECT_TRUE(isMarked("editDocument"));
    EXPECT_FALSE(hint->isHidden());
    EXPECT_FALSE(isMarked("editBook")) << "an empty text is no mistake";

    auto* scanner = part<QLineEdit>(page, "editScanner");
    for (const char* text : {"F5", "Ctrl+S", "ctrl+shift+s", "Ctrl+K, Ctrl+S", "Ctrl++", "Space"}) {
        scanner->setText(QLatin1String(text));
        EXPECT_FALSE(isMarked("editScanner")) << text;
    }
    for (const char* text : {"Ctrl", "Ctrl+", "Ctrl+Rubbish", "abc", "Ctrl+S, what", "   "}) {
        scanner->setText(QLatin1String(text));
        EXPECT_TRUE(isMarked("editScanner")) << text;
        EXPECT_FALSE(scanner->accessibleDescription().isEmpty()) << "the colour alone is not seen by all";
        EXPECT_EQ(stored("Shortcut_Scanner"), QLatin1String(text)) << "stored all the same";
    }
    scanner->clear();
    EXPECT_FALSE(isMarked("editScanner"));
    EXPECT_TRUE(scanner->accessibleDescription().isEmpty());
    EXPECT_EQ(stored("Shortcut_Scanner"), QVariant(QString()));
    scanner->setText(QString(60, QLatin1Char('x')));
    EXPECT_EQ(stored("Shortcut_Scanner").toString().size(), 40);

    QTest::keyClicks(part<QLineEdit>(page, "editDocument"), QStringLiteral("x"));
    QTest::keyClicks(part<QLineEdit>(page, "editBook"), QStringLiteral("x"));
    EXPECT_EQ(stored("Shortcut_Document"), QStringLiteral("rubbish"));
    EXPECT_FALSE(stored("Shortcut_Book").isValid());

    scanner->clear();
    const auto* strip = part<QLabel>(page, "labelStrip");
    EXPECT_FALSE(scanner->placeholderText().isEmpty());
    EXPECT_TRUE(scanner->font().italic()) << "what stands in an empty field is no key";
    struct Press
    {
        Qt::Key key;
        Qt::KeyboardModifiers modifiers;
        const char* stored;
        bool stripLosesIt;
    };
    const Press presses[] = {{Qt::Key_S, Qt::ControlModifier | Qt::ShiftModifier, "Ctrl+Shift+S", false},
                             {Qt::Key_F5, Qt::NoModifier, "F5", false},
                             {Qt::Key_Shift, Qt::ShiftModifier, "F5", false}, // not yet a combination
                             {Qt::Key_Escape, Qt::NoModifier, "F5", false},
                             {Qt::Key_Tab, Qt::NoModifier, "F5", false},
                             {Qt::Key_Z, Qt::ControlModifier, "Ctrl+Z", true},
                             {Qt::Key_5, Qt::KeypadModifier, "5", false},
                             {Qt::Key_Return, Qt::NoModifier, "Return", true},
                             {Qt::Key_F2, Qt::NoModifier, "F2", true},
                             {Qt::Key_R, Qt::ShiftModifier, "Shift+R", true},
                             {Qt::Key_C, Qt::NoModifier, "C", true},
                             {Qt::Key_C, Qt::AltModifier, "Alt+C", false},
                             {Qt::Key_A, Qt::ControlModifier, "Ctrl+A", true},
                             {Qt::Key_Backspace, Qt::NoModifier, "", false},
                             {Qt::Key_Backspace, Qt::ControlModifier, "Ctrl+Backspace", false},
                             {Qt::Key_Delete, Qt::NoModifier, "", false},
                             {Qt::Key_Space, Qt::NoModifier, "Space", false}};
    for (const Press& press : presses) {
        QTest::keyClick(scanner, press.key, press.modifiers);
        EXPECT_EQ(stored("Shortcut_Scanner").toString(), QLatin1String(press.stored));
        EXPECT_EQ(scanner->text(), QLatin1String(press.stored));
        EXPECT_EQ(scanner->font().italic(), scanner->text().isEmpty());
        EXPECT_EQ(strip->isHidden(), !press.stripLosesIt) << press.stored;
    }
    EXPECT_TRUE(part<QLabel>(page, "labelFile")->text().contains(settings.GetSettings()->fileName()));
}

TEST_F(SettingsPages, MarkTheSecondOfTwoEqualShortcuts)
{
    store("Shortcut_Document", QStringLiteral("Ctrl+D"));
    store("Shortcut_Book", QStringLiteral("F5"));
    SetShortcut page;
    const QSignalSpy changed(&page, &SetShortcut::shortcutschanged);
    const auto marks = [&page] {
        QStringList marked;
        for (const QLineEdit* edit : page.findChildren<QLineEdit*>())
            if (edit->property("unusable").toBool())
                marked << edit->objectName();
        return marked;
    };
    const auto* why = part<QLabel>(page, "labelTaken");
    EXPECT_TRUE(marks().isEmpty());
    EXPECT_TRUE(why->isHidden());
    auto* scanner = part<QLineEdit>(page, "editScanner");
    scanner->setText(QStringLiteral("f5"));
    EXPECT_EQ(marks(), QStringList{QStringLiteral("editBook")});
    EXPECT_FALSE(why->isHidden());
    EXPECT_TRUE(part<QLabel>(page, "labelHint")->isHidden());
    EXPECT_EQ(part<QLineEdit>(page, "editBook")->accessibleDescription(), why->text());
    EXPECT_EQ(why->text(), QStringLiteral("F5 does not start \"Book\", because \"Scanner\" has these keys."));
    scanner->setText(QStringLiteral("Ctrl+D, Ctrl+E"));
    EXPECT_EQ(marks(), QStringList{QStringLiteral("editDocument")}) << "its key is the first of two";
    EXPECT_EQ(changed.count(), 2);
    using ShortcutText::Use; // of three the second alone collides with each of the others
    EXPECT_EQ(ShortcutText::uses(
                  {QStringLiteral("Ctrl+K, A"), QStringLiteral("Ctrl+K"), QStringLiteral("Ctrl+K, B")}),
              (QVector<Use>{Use::Bound, Use::Taken, Use::Bound}));
}
