// Documents made of captures, as the window's user meets them.
#include "WindowFixture.h"

#include "CaptureProcessor.h"
#include "PdfEx.h"
#include "PdfView.h"
#include "PrinterWidget.h"
#include "ShotHint.h"
#include "ToolBar.h"

namespace {

class OutputWindowTest : public LumroScannerTest
{
protected:
    QStringList pdfs() const { return QDir(pictures()).entryList(QStringList{QStringLiteral("*.pdf")}); }
    QByteArray head(const QString& name) const
    {
        QFile file(pictures() + QLatin1Char('/') + name);
        return file.open(QIODevice::ReadOnly) ? file.read(5) : QByteArray();
    }
};

TEST_F(OutputWindowTest, ThePdfButtonMakesAPictureAndAPdfOfIt)
{
    ASSERT_TRUE(shows(camera()));
    click("btnPdf");
    ASSERT_EQ(pdfs().size(), 1);
    EXPECT_EQ(head(pdfs().first()), "%PDF-");
    EXPECT_EQ(files().size(), 2);
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 2; }));
    window_->setMergePending(true);
    click("btnPdf");
    EXPECT_TRUE(messages_.contains(QStringLiteral("Please complete the image merge first!")));
    EXPECT_EQ(files().size(), 2);
}

TEST_F(OutputWindowTest, TheMultiPageDialogHasTheLivePictureAndTheTools)
{
    ASSERT_TRUE(shows(camera()));
    click("btnPdfEx");
    auto* dialog = window_->findChild<PdfEx*>();
    ASSERT_TRUE(dialog->isVisible());
    auto* tools = view().findChild<ToolBar*>();
    EXPECT_FALSE(tools->isEnabled());
    for (int page = 1; page <= 2; ++page) {
        dialog->onScannerImg();
        EXPECT_TRUE(QTest::qWaitFor([=] { return dialog->pages().size() == page; }, 10000));
    }
    dialog->onPdfEx();
    ASSERT_TRUE(QTest::qWaitFor([=] { return !dialog->isVisible(); }, 10000));
    EXPECT_EQ(pdfs().size(), 1);
    EXPECT_TRUE(tools->isEnabled());
    EXPECT_TRUE(QTest::qWaitFor([this] { return strip().Count() == 1; })) << "the PDF, not its pages";

    click("btnPdfEx");
    EXPECT_TRUE(dialog->pages().isEmpty());
    window_->close(); // with the dialog open
    window_.reset();
}

TEST_F(OutputWindowTest, WhatSpoilsThePageIsToldWhereItsPictureIs)
{
    settings::deskew.write(store_, cropping::deskew);
    const QImage blurred = page().scaled(64, 48, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    ASSERT_TRUE(shows(camera(), blurred.scaled(640, 480, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)));
    const auto isTold = [](QWidget& where) { return where.findChild<ShotHint*>()->isVisible(); };
    ASSERT_TRUE(QTest::qWaitFor([&] { return isTold(view()); }, 15000));
    click("btnPdfEx");
    auto* dialog = window_->findChild<PdfEx*>();
    auto& preview = *dialog->findChild<PdfView*>();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isTold(preview) && !isTold(view()); }, 15000));
    dialog->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return isTold(view()); }, 15000));
}

TEST_F(OutputWindowTest, TheReceiptPrintersWindowComesOnceUnderTheGuard)
{
    const auto windows = [] {
        const QWidgetList all = QApplication::topLevelWidgets();
        return std::count_if(
            all.begin(), all.end(), [](QWidget* each) { return qobject_cast<PrinterWidget*>(each); });
    };
    ASSERT_TRUE(shows(camera()));
    for (const int expected : {0, 1, 1}) {
        window_->setMergePending(expected == 0);
        window_->onPrint();
        EXPECT_EQ(windows(), expected);
        EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    }
    window_.reset();
    EXPECT_EQ(windows(), 0);
}

} // namespace
