// The settings window as a whole.
#include "ConfigSet.h"
#include "FreshSettings.h"
#include "Part.h"
#include "Words.h"

#include <QAccessible>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSet>
#include <QStackedWidget>
#include <QTest>

namespace {

class SettingsWindow : public FreshSettings
{
protected:
    void open()
    {
        dialog.show();
        pages = dialog.findChild<QStackedWidget*>(QStringLiteral("pages"));
        ASSERT_TRUE(QTest::qWaitForWindowActive(&dialog));
    }
    template <class Control> Control* control(const char* name) { return part<Control>(dialog, name); }
    QList<QPushButton*> pageButtons()
    {
        return dialog.findChild<QFrame*>(QStringLiteral("framePages"))->findChildren<QPushButton*>();
    }

    ConfigSet dialog;
    QStackedWidget* pages = nullptr;
};

QList<QWidget*> visibleParts(const QWidget& window)
{
    QList<QWidget*> visible;
    for (auto* widget : window.findChildren<QWidget*>())
        if (widget->isVisible())
            visible.append(widget);
    return visible;
}

/// As a screen reader says it: by the control's own name or by the label that belongs to it.
bool isNamed(QWidget& widget)
{
    QAccessibleInterface* spoken = QAccessible::queryAccessibleInterface(&widget);
    for (const auto& relation : spoken->relations(QAccessible::Label))
        if (!relation.first->text(QAccessible::Name).isEmpty())
            return true;
    return !qobject_cast<QComboBox*>(&widget) && !spoken->text(QAccessible::Name).isEmpty();
}

bool isCutOff(QWidget* widget)
{
    const QRect shown = QRect(widget->mapTo(widget->window(), QPoint()), widget->size());
    if (!widget->window()->rect().contains(shown))
        return true;
    if (const auto* label = qobject_cast<QLabel*>(widget); label && label->wordWrap())
        return label->height() < label->heightForWidth(label->width());
    const auto* button = qobject_cast<QAbstractButton*>(widget); // that which empties a field has a picture
    const bool hasText = qobject_cast<QLabel*>(widget) || (button && !button->text().isEmpty()) ||
                         qobject_cast<QComboBox*>(widget);
    return hasText && widget->maximumWidth() > 100 && widget->width() < widget->sizeHint().width();
}

} // namespace

TEST_F(SettingsWindow, OpensThePageOfTheButton)
{
    open();
    EXPECT_EQ(dialog.windowModality(), Qt::WindowModal);
    const QList<QPushButton*> buttons = pageButtons();
    ASSERT_EQ(buttons.size(), pages->count());
    for (int page = pages->count() - 1; page >= 0; --page) {
        QTest::mouseClick(buttons[page], Qt::LeftButton);
        EXPECT_EQ(pages->currentIndex(), page);
        EXPECT_TRUE(buttons[page]->isChecked());
    }
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Down);
    EXPECT_EQ(pages->currentIndex(), 1) << "the arrows leaf through the pages";
    QTest::keyClick(&dialog, Qt::Key_S, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([&] { return pages->currentIndex() == 3; })) << "the button is animated";
    control<QPushButton>("buttonGlobal")->click();
    auto* prefix = control<QLineEdit>("editPrefix");
    prefix->clear();
    control<QPushButton>("buttonImage")->click();
    control<QPushButton>("buttonGlobal")->click();
    EXPECT_EQ(prefix->text(), QStringLiteral("IMAGE")) << "each time the page is shown";
}

TEST_F(SettingsWindow, ClosesAndKeepsItsContentsAndTheOptionsOfBooksForThisRun)
{
    bool finger = true, two = true, document = true;
    const auto flags = [&] {
        dialog.getBookFlatInfo(finger, two, document);
        return QVector<bool>{finger, two, document};
    };
    EXPECT_EQ(flags(), (QVector<bool>{false, false, false})) << "before it is ever shown";
    open();
    control<QCheckBox>("checkRemoveFinger")->click();
    EXPECT_EQ(flags(), (QVector<bool>{true, false, false}));
    control<QCheckBox>("checkDoublePage")->click();
    EXPECT_EQ(flags(), (QVector<bool>{true, true, false}));
    control<QCheckBox>("checkDocProcess")->click();
    control<QCheckBox>("checkRemoveFinger")->click();
    EXPECT_EQ(flags(), (QVector<bool>{false, true, true}));
    EXPECT_TRUE(settings.GetSettings()->allKeys().isEmpty());
    dialog.close();

    const auto closings = {std::function<void()>([&] { control<QPushButton>("buttonClose")->click(); }),
                           std::function<void()>([&] { QTest::keyClick(&dialog, Qt::Key_Escape); }),
                           std::function<void()>([&] {
                               dialog.findChild<QWidget*>(QStringLiteral("titleBar"))
                                   ->findChild<QPushButton*>(QStringLiteral("buttonClose"))
                                   ->click();
                           })};
    const QStackedWidget* first = nullptr;
    for (const auto& close : closings) {
        open();
        first = first ? first : pages;
        EXPECT_EQ(pages, first) << "built once";
        close();
        EXPECT_FALSE(dialog.isVisible());
    }
}

TEST_F(SettingsWindow, MakesCloseTheDefault)
{
    dialog.setDefaultBtn(0); // before it is ever shown
    open();
    const auto buttons = dialog.findChild<QFrame*>(QStringLiteral("frameFoot"))->findChildren<QPushButton*>();
    ASSERT_EQ(buttons.size(), 1);
    EXPECT_TRUE(buttons[0]->isDefault());
    EXPECT_EQ(dialog.focusWidget(), buttons[0]);
    pageButtons()[1]->setFocus();
    QTest::keyClick(pageButtons()[1], Qt::Key_Return);
    EXPECT_EQ(pages->currentIndex(), 1) << "Enter on a page button opens its page";
    EXPECT_TRUE(dialog.isVisible());
    control<QLineEdit>("editWatermark")->setFocus();
    QTest::keyClick(control<QLineEdit>("editWatermark"), Qt::Key_Return);
    EXPECT_FALSE(dialog.isVisible());
}

TEST_F(SettingsWindow, StandsInTheMiddleOfItsWindow)
{
    QWidget window;
    window.setGeometry(60, 30, 900, 700);
    QWidget inner(&window);
    ConfigSet owned(&inner);
    for (const QPoint dragged : {QPoint(0, 0), QPoint(300, 200)}) {
        owned.move(dragged);
        owned.show();
        const QPoint off = owned.geometry().center() - window.geometry().center();
        EXPECT_LE(off.manhattanLength(), 2) << "rounding, each way";
        owned.close();
    }
}

TEST_F(SettingsWindow, TellsThePreviewOfAChangeBeforeOrAfterItIsStored)
{
    QVariantList told; // the value, and what is stored under its key by then
    const auto look = [&](const char* key) {
        return [&told, this, key](const QVariant& value) {
            told << value << settings.GetSettings()->value(QLatin1String(key));
        };
    };
    QObject::connect(&dialog, &ConfigSet::booklineclicked, &dialog, look("Book_Line"));
    QObject::connect(&dialog, &ConfigSet::languageitemchanged, &dialog, look("App_Language"));
    QObject::connect(&dialog, &ConfigSet::currentmergepos, &dialog, look("Merge_Pos"));
    QObject::connect(&dialog, &ConfigSet::scansizechanged, &dialog, look("Scan_Size"));
    open();
    EXPECT_TRUE(told.isEmpty()) << "loading is silent";
    control<QCheckBox>("checkBookLine")->click();
    control<QComboBox>("comboLanguage")->setCurrentIndex(1);
    control<QComboBox>("comboMergePosition")->setCurrentIndex(3);
    control<QComboBox>("comboScanSize")->setCurrentIndex(2);
    EXPECT_EQ(told, (QVariantList{true, true, 1, 1, 3, 3, 2, QVariant()}))
        << "the camera is set before the size is stored";
}

TEST_F(SettingsWindow, IsReachedSeenAndSpokenWhole)
{
    open();
    for (QPushButton* button : pageButtons()) {
        button->click();
        button->setFocus();
        QSet<QWidget*> reached;
        while (!reached.contains(dialog.focusWidget())) {
            QWidget* current = dialog.focusWidget();
            reached.insert(current);
            const QImage focused = current->grab().toImage();
            QTest::keyClick(current, Qt::Key_Tab);
            EXPECT_NE(current->grab().toImage(), focused) << qPrintable(current->objectName());
        }
        EXPECT_EQ(dialog.focusWidget(), button) << "the way goes round";
        for (QWidget* widget : visibleParts(dialog)) {
            if (widget->focusPolicy() == Qt::NoFocus || widget == &dialog)
                continue;
            EXPECT_TRUE(isNamed(*widget)) << qPrintable(widget->objectName());
            const bool byArrows = !(widget->focusPolicy() & Qt::TabFocus); // the others of a group
            EXPECT_TRUE(byArrows || reached.contains(widget)) << qPrintable(widget->objectName());
        }
    }
}

TEST_F(SettingsWindow, FitsInEveryLanguage)
{
    for (const char* language : Words::languages) {
        const Words words(language);
        settings.GetSettings()->setValue(QStringLiteral("Shortcut_Book"), QStringLiteral("rubbish"));
        for (const char* key : {"Shortcut_Scanner", "Shortcut_Document"}) // and of two equal ones
            settings.GetSettings()->setValue(QLatin1String(key), QStringLiteral("F5"));
        ConfigSet translated;
        translated.show();
        EXPECT_LE(translated.width(), 800) << language;
        EXPECT_LE(translated.height(), 600) << language;
        QSet<QKeySequence> shortcuts;
        for (auto* button : translated.findChildren<QPushButton*>()) {
            if (button->shortcut().isEmpty())
                continue;
            EXPECT_FALSE(shortcuts.contains(button->shortcut())) << language << qPrintable(button->text());
            shortcuts.insert(button->shortcut());
        }
        EXPECT_EQ(shortcuts.size(), 6) << language << ": five pages and Close";
        for (auto* button :
             translated.findChild<QFrame*>(QStringLiteral("framePages"))->findChildren<QPushButton*>()) {
            button->click();
            QCoreApplication::processEvents();
            for (QWidget* widget : visibleParts(translated))
                EXPECT_FALSE(isCutOff(widget)) << language << " " << qPrintable(widget->objectName());
        }
    }
}
