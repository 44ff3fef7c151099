// The window of identity cards, as the main window opens it.
#include "WindowFixture.h"

#include "IdCardReader.h"
#include "More.h"

#include <QLineEdit>

using CardWindowTest = LumroScannerTest;

TEST_F(CardWindowTest, ItOpensWithoutACameraOnceAndGoesWhenItIsClosed)
{
    Dialogs::instance().information = [this](QWidget*, const QString&, const QString& text, auto) {
        messages_ << text;
        return QMessageBox::Ok;
    };
    show();
    const auto reader = [this] { return window_->findChild<IdCardReader*>(); };
    auto* more = window_->findChild<More*>();
    more->show();
    click("btnReadIdCard"); // another dialog is open
    more->close();
    EXPECT_TRUE(messages_.isEmpty());
    window_->setMergePending(true);
    click("btnReadIdCard");
    EXPECT_EQ(messages_.takeLast(), QStringLiteral("Please complete the image merge first!"));
    EXPECT_EQ(reader(), nullptr);
    window_->setMergePending(false);
    for (int times = 1; times <= 2; ++times) {
        click("btnReadIdCard");
        QPointer<IdCardReader> shown = reader();
        ASSERT_TRUE(shown && shown->isVisible());
        EXPECT_EQ(messages_.count(QStringLiteral("Init IDCard failed!")), times) << "no reader, each time";
        EXPECT_EQ(shown->findChild<QLineEdit*>(QStringLiteral("editPath"))->text(),
                  pictures() + QStringLiteral("/cardinfo.cvs"));
        window_->onReadIdCard();
        EXPECT_EQ(reader(), shown);
        shown->close();
        EXPECT_TRUE(QTest::qWaitFor([=] { return shown.isNull(); }));
    }
    click("btnReadIdCard");
    window_.reset(); // with the window open
}
