#include "JobBar.h"

#include "Job.h"
#include "Part.h"
#include "Words.h"

#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QShortcut>
#include <QSignalSpy>
#include <QTest>

namespace {

struct JobBarTest : ::testing::TestWithParam<const char*>
{
    bool appears()
    {
        return QTest::qWaitFor([&] { return bar.isVisible(); });
    }
    bool says(const char* text) const
    {
        return QTest::qWaitFor([&] {
            QStringList texts;
            for (const QLabel* label : bar.findChildren<QLabel*>())
                texts << label->text();
            return texts.contains(QLatin1String(text));
        });
    }

    QWidget window;
    JobBar bar{&window};
    QSignalSpy ended{&bar, &JobBar::ended};
    std::shared_ptr<Job> job = std::make_shared<Job>();
};

} // namespace

TEST_F(JobBarTest, ShowsWhatLastsAndNothingOfWhatDoesNot)
{
    window.show();
    bar.follow(QStringLiteral("short"), job);
    job.reset();
    ASSERT_TRUE(ended.wait());
    EXPECT_FALSE(bar.isVisible()) << "what is over has no bar";
    job = std::make_shared<Job>();
    bar.follow(QStringLiteral("long"), job);
    EXPECT_FALSE(bar.isVisible()) << "it may be done at once";
    job->reach(1, 4);
    ASSERT_TRUE(appears());
    EXPECT_TRUE(says("long") && says("Page 2 of 4"));
    EXPECT_EQ(bar.findChild<QProgressBar*>()->value() * 4, bar.findChild<QProgressBar*>()->maximum());
    job->reach(4, 4);
    EXPECT_TRUE(says("Page 4 of 4")) << "there is no fifth";
    bar.follow(QStringLiteral("other"), job = std::make_shared<Job>());
    job->reach(0.25);
    EXPECT_TRUE(says("25 %"));
    job.reset();
    EXPECT_TRUE(ended.wait());
    EXPECT_FALSE(bar.isVisible());
}

TEST_F(JobBarTest, EscapeCancelsWhereTheKeyboardIsAndNowhereElse)
{
    auto* field = new QLineEdit(&window);
    window.setFocusPolicy(Qt::StrongFocus);
    window.show();
    window.activateWindow();
    field->setFocus();
    bar.follow(QStringLiteral("long"), job);
    ASSERT_TRUE(appears());
    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_FALSE(job->isStopped());
    EXPECT_TRUE(field->hasFocus()) << "the bar takes no keyboard";
    auto* cancel = part<QPushButton>(bar, "buttonCancelJob");
    for (int i = 0; i < 3 && !cancel->hasFocus(); ++i)
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    ASSERT_TRUE(cancel->hasFocus());
    QShortcut leaves(Qt::Key_Escape, &window);
    QSignalSpy left(&leaves, &QShortcut::activated);
    QTest::keyClick(cancel, Qt::Key_Escape);
    EXPECT_TRUE(job->isStopped());
    EXPECT_EQ(left.count(), 0) << "the job is meant, not the window";
    EXPECT_FALSE(cancel->isEnabled()) << "once is enough";
    EXPECT_TRUE(bar.isVisible()) << "until it has really ended";
    bar.follow(QStringLiteral("again"), job = std::make_shared<Job>());
    QTest::mouseClick(cancel, Qt::LeftButton);
    EXPECT_TRUE(job->isStopped());
}

TEST_P(JobBarTest, FitsInEveryLanguage)
{
    const Words words(GetParam());
    JobBar own(&window);
    job->reach(98, 100);
    own.follow(QCoreApplication::translate("PdfEx", "The PDF is being written..."), job);
    window.show();
    own.show();
    own.resize(440, own.heightForWidth(440)); // the view of a window that takes half of a small screen
    for (const QWidget* each : own.findChildren<QWidget*>())
        EXPECT_TRUE(own.rect().contains(each->geometry()) && each->width() >= each->minimumWidth());
}
INSTANTIATE_TEST_SUITE_P(All, JobBarTest, ::testing::ValuesIn(Words::languages));
