// Every window of the program on small screens, beside its main window, and on its way out.
#include "WindowFixture.h"

#include "BarCode.h"
#include "More.h"
#include "PdfEx.h"
#include "VideoRecord.h"
#include "WindowCare.h"
#include "Words.h"

#include <QAbstractButton>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QScrollArea>
#include <QWindow>

namespace {

class WindowCareTest : public LumroScannerTest
{
protected:
    void haveFree(const QRect& area) const
    {
        window_->findChild<WindowCare*>()->setFreeArea([=](const QScreen&) { return area; });
    }
    void merge() const
    {
        QPixmap side(300, 200);
        side.fill(Qt::red);
        window_->ImgMerge(side, side, pictures() + QStringLiteral("/merged.jpg"));
    }
    /// The window of that name, wherever it lies.
    static QWidget* shown(const char* name)
    {
        for (QWidget* window : QApplication::topLevelWidgets())
            if (window->isVisible() && window->objectName() == QLatin1String(name))
                return window;
        return nullptr;
    }
    static void escape(QWidget& window)
    {
        QTest::keyClick(window.focusWidget() ? window.focusWidget() : &window, Qt::Key_Escape);
    }
};

/// What a desktop's panel leaves of a screen, and the language of the texts.
class SmallScreen : public WindowCareTest,
                    public ::testing::WithParamInterface<std::tuple<QRect, const char*>>
{
protected:
    /// It lies on the screen, and so does each of its buttons, if need be after scrolling.
    void expectInside(QWidget* window, const char* name) const
    {
        ASSERT_TRUE(window) << name;
        for (int round = 0; round < 3; ++round) // a layout settles in steps
            QCoreApplication::processEvents();
        EXPECT_TRUE(area_.contains(window->geometry())) << name << ' ' << window->x() << ' ' << window->y()
                                                        << ' ' << window->width() << ' ' << window->height();
        const auto* scrolling = window->findChild<QScrollArea*>(QString(), Qt::FindDirectChildrenOnly);
        for (QAbstractButton* button : window->findChildren<QAbstractButton*>()) {
            if (!button->isVisible())
                continue;
            if (scrolling && scrolling->widget()->isAncestorOf(button))
                const_cast<QScrollArea*>(scrolling)->ensureWidgetVisible(button);
            EXPECT_EQ(button->visibleRegion().boundingRect(), button->rect())
                << name << ' ' << qPrintable(button->objectName()) << ' ' << qPrintable(button->text());
        }
        window->close();
    }

    const QRect area_ = std::get<0>(GetParam());
    const Words words_{std::get<1>(GetParam())};
};

} // namespace

TEST_P(SmallScreen, HasRoomForEveryWindow)
{
    ASSERT_TRUE(shows(camera()));
    window_->setGeometry(area_);
    haveFree(area_);
    click("btnMore");
    expectInside(shown("More"), "More");
    for (const char* page :
         {"buttonGlobal", "buttonImage", "buttonAutoPage", "buttonShortcut", "buttonAbout"}) {
        click("setting");
        shown("ConfigSet")->findChild<QPushButton*>(QLatin1String(page))->click();
        expectInside(shown("ConfigSet"), page);
    }
    click("btnPdfEx");
    expectInside(shown("PdfEx"), "PdfEx");
    merge();
    expectInside(shown("ImageMerge"), "ImageMerge");
    click("btnAutoScanner");
    expectInside(shown("AutoScan"), "AutoScan");
    click("btnRecord");
    expectInside(shown("VideoRecord"), "VideoRecord");

    BarCode codes;
    MsgBox message(window_.get());
    message.Question(QStringLiteral("many words ").repeated(60));
    QFileDialog files(window_.get());
    files.resize(area_.size() * 2);
    QPrinter printer;
    QPrintDialog printing(&printer, window_.get());
    QMessageBox question;
    question.setText(QStringLiteral("many words ").repeated(30));
    const std::pair<QWidget*, const char*> others[] = {{&codes, "BarCode"},
                                                       {&message, "MsgBox"},
                                                       {&files, "QFileDialog"},
                                                       {&printing, "QPrintDialog"},
                                                       {&question, "QMessageBox"}};
    for (const auto& [other, name] : others) {
        other->show();
        expectInside(other, name);
    }
}

// 1280 x 720 at scale 2 and 1.5, 1920 x 1080 at scale 2; the panel lies at the top.
INSTANTIATE_TEST_SUITE_P(Sizes,
                         SmallScreen,
                         ::testing::Combine(::testing::Values(QRect(0, 16, 640, 344),
                                                              QRect(0, 20, 853, 460),
                                                              QRect(0, 20, 960, 520)),
                                            ::testing::ValuesIn(Words::languages)));

TEST_F(WindowCareTest, EveryWindowBelongsToTheMainWindowAndKeepsItsKind)
{
    ASSERT_TRUE(shows(camera()));
    haveFree({0, 16, 640, 344});
    click("btnMore");
    EXPECT_LT(shown("More")->width(), 800);
    shown("More")->close();
    haveFree({0, 0, 1280, 720}); // a larger screen was plugged in
    click("btnMore");
    QWidget* more = shown("More");
    ASSERT_TRUE(more);
    EXPECT_EQ(more->size(), QSize(800, 600));
    EXPECT_EQ(more->windowType(), Qt::Window);
    BarCode codes; // without a parent, and blocks nobody
    codes.show();
    QMessageBox question;
    question.show();
    for (const QWidget* window : {more, static_cast<QWidget*>(&codes), static_cast<QWidget*>(&question)}) {
        const QWindow* owner = window->windowHandle()->transientParent();
        while (owner && owner->transientParent())
            owner = owner->transientParent();
        EXPECT_EQ(owner, window_->windowHandle()) << window->metaObject()->className();
        EXPECT_EQ(window->windowHandle()->type(), Qt::Dialog) << window->metaObject()->className();
        EXPECT_TRUE(window->windowHandle()->flags() & Qt::FramelessWindowHint);
    }
    more->close();
    question.close();
    click("btnMore");
    EXPECT_TRUE(shown("More")) << "the codes block nobody";
    shown("More")->close();
    codes.close();
}

TEST_F(WindowCareTest, EscapeClosesAndAsksOnceWhenWorkWouldBeLost)
{
    int asked = 0, answer = QDialog::Rejected;
    Dialogs::instance().runMessage = [&](MsgBox&) { return ++asked, answer; };
    ASSERT_TRUE(shows(camera()));
    click("btnMore");
    QKeyEvent held(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier, QString(), true);
    qApp->notify(shown("More"), &held);
    EXPECT_TRUE(shown("More")) << "a key that closed something else is still held down";
    escape(*shown("More"));
    EXPECT_FALSE(shown("More"));
    click("btnPdfEx");
    escape(*shown("PdfEx"));
    EXPECT_FALSE(shown("PdfEx"));
    EXPECT_EQ(asked, 0) << "there was nothing to lose";

    click("btnPdfEx");
    auto* pdf = window_->findChild<PdfEx*>();
    pdf->onScannerImg();
    merge();
    for (const char* name : {"ImageMerge", "PdfEx"}) {
        asked = 0;
        answer = QDialog::Rejected;
        escape(*shown(name));
        EXPECT_EQ(asked, 1) << name;
        ASSERT_TRUE(shown(name)) << "not agreed";
        answer = QDialog::Accepted;
        escape(*shown(name));
        EXPECT_FALSE(shown(name));
    }
    escape(*window_);
    EXPECT_TRUE(window_->isVisible()) << "the main window is no dialog";
}

TEST_F(WindowCareTest, WhatStaysOnTopGoesAndComesWithTheMainWindow)
{
    Dialogs::instance().ask = [](QMessageBox&) { return QMessageBox::Ok; }; // about the film
    ASSERT_TRUE(shows(camera()));
    click("btnRecord");
    auto* film = window_->findChild<VideoRecord*>();
    ASSERT_TRUE(film && film->isVisible());
    for (int round = 0; round < 2; ++round) {
        window_->showMinimized();
        EXPECT_TRUE(QTest::qWaitFor([=] { return film->isMinimized(); }));
        window_->showNormal();
        EXPECT_TRUE(QTest::qWaitFor([=] { return !film->isMinimized(); }));
    }
    film->findChild<QPushButton*>(QStringLiteral("ButtonStop"))->click();
}
