#include "MsgBox.h"
#include "AnsweredDialogs.h"
#include "Part.h"

#include <QPushButton>
#include <QTest>
#include <QTimer>

namespace {

QList<QPushButton*> visibleButtons(const MsgBox& box)
{
    QList<QPushButton*> visible;
    for (QPushButton* button : box.findChildren<QPushButton*>()) {
        if (button->isVisible())
            visible.append(button);
    }
    return visible;
}

/// Runs the box and does `act` as soon as it stands.
template <class Act> int runAnd(MsgBox& box, Act act)
{
    QTimer::singleShot(0, &box, act);
    return box.exec();
}

} // namespace

TEST(MsgBox, SaysWhatItIsGiven)
{
    MsgBox box;
    const auto says = [&](const char* title, const char* text) {
        EXPECT_EQ(part<QLabel>(box, "labelTitle")->text(), QLatin1String(title));
        EXPECT_EQ(part<QLabel>(box, "labelMessage")->text(), QLatin1String(text));
    };
    box.Warnning(QStringLiteral("a < b & <b>c</b>"));
    says("warnning", "a < b & <b>c</b>");
    EXPECT_EQ(box.findChild<QLabel*>(QStringLiteral("labelMessage"))->textFormat(), Qt::PlainText);
    box.Error(QStringLiteral("broken"));
    says("error", "broken");
    box.Information(QStringLiteral("Tips"), QStringLiteral("text"));
    says("Tips", "text");
    box.Information(QString(), QString());
    says("warnning", "warnning");
}

TEST(MsgBox, EndsByItsOneButtonOrByEscape)
{
    MsgBox box;
    box.Error(QStringLiteral("broken"));
    EXPECT_EQ(runAnd(box,
                     [&] {
                         const QList<QPushButton*> buttons = visibleButtons(box);
                         ASSERT_EQ(buttons.size(), 1);
                         EXPECT_EQ(buttons[0]->text(), QStringLiteral("OK"));
                         QTest::mouseClick(buttons[0], Qt::LeftButton);
                     }),
              QDialog::Accepted);
    EXPECT_EQ(runAnd(box, [&] { QTest::keyClick(&box, Qt::Key_Return); }), QDialog::Accepted);
    EXPECT_EQ(runAnd(box, [&] { QTest::keyClick(&box, Qt::Key_Escape); }), QDialog::Rejected);
    EXPECT_EQ(runAnd(box, [&] { box.close(); }), QDialog::Rejected);
    EXPECT_EQ(runAnd(box, [&] { part<QPushButton>(box, "buttonOk")->click(); }), QDialog::Accepted);
    EXPECT_EQ(runAnd(box, [&] { part<QPushButton>(box, "buttonCancel")->click(); }), QDialog::Rejected);
    MsgBox question;
    question.Question(QStringLiteral("Delete all?"));
    EXPECT_EQ(runAnd(question, [&] { QTest::keyClick(&question, Qt::Key_Return); }), QDialog::Rejected)
        << "Enter loses nothing";
    EXPECT_EQ(runAnd(question, [&] { part<QPushButton>(question, "buttonOkSecond")->click(); }),
              QDialog::Accepted);
}

TEST(MsgBox, StandsInTheMiddleOfTheLargestWindowsSize)
{
    QWidget large;
    large.setGeometry(300, 200, 1201, 702); // its own position does not count
    QWidget small;
    small.resize(300, 900);
    MsgBox box;
    box.Warnning(QStringLiteral("text"));
    runAnd(box, [&] {
        EXPECT_EQ(box.pos(), QPoint((1200 - box.width()) / 2, (701 - box.height()) / 2));
        box.accept();
    });
    large.resize(1400, 702); // judged anew on every show
    runAnd(box, [&] {
        EXPECT_EQ(box.x(), (1399 - box.width()) / 2);
        box.accept();
    });
}

TEST(MsgBox, GrowsAndShrinksWithItsText)
{
    const QString path = QStringLiteral("/home/user/") + QString(60, QLatin1Char('x'));
    MsgBox box;
    QSize sizes[3];
    int next = 0;
    for (const QString& text :
         {QStringLiteral("short"), QStringLiteral("many words ").repeated(40) + path, QStringLiteral("x")}) {
        box.Warnning(text);
        runAnd(box, [&] {
            const auto* label = box.findChild<QLabel*>(QStringLiteral("labelMessage"));
            EXPECT_GE(label->height(), label->heightForWidth(label->width())) << "text cut off";
            EXPECT_LE(label->width(), box.width());
            if (text.contains(path)) {
                EXPECT_GE(label->width(), label->fontMetrics().horizontalAdvance(path))
                    << "it cannot be broken";
            }
            sizes[next++] = box.size();
            box.accept();
        });
    }
    EXPECT_GT(sizes[1].height(), sizes[0].height());
    EXPECT_EQ(sizes[2], sizes[0]);
    EXPECT_LE(sizes[1].width(), 800) << "one long path does not push the box off the screen";
}

TEST(Dialogs, RunTheMessageThroughTheSeam)
{
    AnsweredDialogs answers;
    EXPECT_EQ(Dialogs::warn(nullptr, QStringLiteral("one")), QDialog::Accepted);
    Dialogs::error(nullptr, QStringLiteral("two"));
    Dialogs::inform(nullptr, QStringLiteral("title"), QStringLiteral("three"));
    EXPECT_EQ(answers.messages.join(u' '), QStringLiteral("one two three"));
}
