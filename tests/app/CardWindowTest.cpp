// The window of identity cards, as the main window opens it.
#include "WindowFixture.h"

#include "IdCardReader.h"
#include "More.h"

#include <QLineEdit>

namespace {

class CardWindowTest : public LumroScannerTest
{
protected:
    CardWindowTest()
    {
        Dialogs::instance().information = [this](QWidget*, const QString&, const QString& text, auto) {
            messages_ << text;
            return QMessageBox::Ok;
        };
    }
    IdCardReader* reader() const { return window_->findChild<IdCardReader*>(); }
};

TEST_F(CardWindowTest, ItOpensWithoutACameraOnceAndGoesWhenItIsClosed)
{
    show();
    window_->findChild<More*>()->show();
    click("btnReadIdCard");
    EXPECT_EQ(reader(), nullptr) << "another dialog is open";
    window_->findChild<More*>()->close();
    window_->setMergePending(true);
    click("btnReadIdCard");
    EXPECT_EQ(reader(), nullptr);
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    window_->setMergePending(false);
    for (int times = 1; times <= 2; ++times) {
        click("btnReadIdCard");
        QPointer<IdCardReader> shown = reader();
        ASSERT_NE(shown, nullptr);
        EXPECT_TRUE(shown->isVisible());
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

} // namespace
