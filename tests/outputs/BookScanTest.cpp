#include "BookScan.h"

#include "Dialogs.h"
#include "Image.h"
#include "MsgBox.h"
#include "OutputFixture.h"

#include <QApplication>
#include <QLabel>
#include <QTest>
#include <QThread>

#include <future>

namespace {

const QString known = QStringLiteral("1b172000");
const cv::Vec3b red(250, 0, 0), blue(0, 0, 250);

class BookScanTest : public OutputTest
{
protected:
    BookScanTest()
    {
        Dialogs::instance().runMessage = [this](MsgBox& box) {
            for (const QLabel* label : box.findChildren<QLabel*>())
                messages << label->text();
            return 1;
        };
        book.setFlatten([this](void* frame, bool removeFinger, int pageMode, void*& left, void*& right) {
            given = static_cast<mirvak::Image*>(frame)->pixels.size();
            asked = {removeFinger, pageMode};
            left = hasLeft ? makeImageHandle(8, 8, red) : nullptr;
            right = makeImageHandle(8, 8, blue);
            return code;
        });
    }
    ~BookScanTest() override
    {
        EXPECT_FALSE(QApplication::overrideCursor()) << "the busy cursor is left on";
        Dialogs::instance() = Dialogs::real();
    }
    bool says(const char* text) { return messages.contains(QLatin1String(text)); }
    void scanToTheEnd()
    {
        book.scan(known, true);
        EXPECT_TRUE(book.isRunning()) << "the call returns at once";
        ASSERT_TRUE(QTest::qWaitFor([this] { return !book.isRunning(); }, 10000));
    }

    QStringList messages;
    BookScan::Options options;
    int framesWhenAsked = -1;
    QStringList names{QStringLiteral("first.jpg"), QStringLiteral("second.jpg")}; ///< of the pages to come
    std::vector<cv::Vec3b> saved;                                                 ///< the colour of each page
    QList<int> colourModes;                                                       ///< how
    std::function<void()> whenSaved;                                              ///< a page; worker thread
    cv::Size given;
    std::pair<bool, int> asked; ///< fingers, page mode
    bool hasLeft = true;
    int code = MIRVAK_OK;
    BookScan book{desk,
                  desk.camera,
                  nullptr,
                  [this] {
                      framesWhenAsked = desk.framesTaken;
                      return options;
                  },
                  [this](void* page, int colourMode) {
                      EXPECT_NE(QThread::currentThread(), qApp->thread()) << "the window would stand still";
                      saved.push_back(static_cast<mirvak::Image*>(page)->pixels.at<cv::Vec3b>(0, 0));
                      colourModes << colourMode;
                      if (whenSaved)
                          whenSaved();
                      return names.isEmpty() ? QString() : names.takeFirst();
                  }};
};

} // namespace

TEST_F(BookScanTest, CameraAndGuideLineAreLookedAtBeforeEverythingElse)
{
    desk.allowed = false;
    book.scan(QStringLiteral("1b172009"), false);
    EXPECT_TRUE(says("This device does not support this feature!"));
    EXPECT_FALSE(says("Please turn on the book-line first!")) << "one message at a time";
    messages.clear();
    book.scan({}, true);
    EXPECT_TRUE(says("This device does not support this feature!"));
    messages.clear();
    book.scan(known, false);
    EXPECT_TRUE(says("Please turn on the book-line first!"));
    messages.clear();
    book.scan(known, true);
    EXPECT_TRUE(messages.isEmpty()) << "the guard speaks for itself";
    EXPECT_EQ(desk.framesTaken, 0);
    desk.allowed = true;
    desk.frameComes = false;
    book.scan(known, true);
    EXPECT_FALSE(book.isRunning());
    EXPECT_TRUE(desk.cropModes.isEmpty());
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(BookScanTest, BothPagesAreSavedAndListedTheFrameOnlySaved)
{
    options = {true, true, true};
    desk.frameSize = {32, 24};
    desk.cropping = 1;
    scanToTheEnd();
    EXPECT_EQ(framesWhenAsked, 1);
    EXPECT_EQ(given, cv::Size(32, 24));
    EXPECT_EQ(asked, std::pair(true, 2));
    EXPECT_EQ(desk.colourModes, QList<int>{0}) << "the frame itself";
    EXPECT_EQ(saved, (std::vector<cv::Vec3b>{red, blue}));
    EXPECT_EQ(colourModes, (QList<int>{2, 2}));
    EXPECT_EQ(desk.thumbnails, (QStringList{QStringLiteral("first.jpg"), QStringLiteral("second.jpg")}));
    EXPECT_EQ(desk.jobs.size(), 1) << "says what goes on";
    EXPECT_TRUE(desk.job.expired()) << "and that it is over";
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(BookScanTest, OnePageIsAllThatIsSavedWithoutTheDoublePage)
{
    scanToTheEnd();
    EXPECT_EQ(asked, std::pair(false, 1));
    EXPECT_EQ(colourModes, QList<int>{0});
    EXPECT_EQ(saved, std::vector<cv::Vec3b>{red});
    EXPECT_EQ(desk.thumbnails, QStringList{QStringLiteral("first.jpg")});
    hasLeft = false;
    scanToTheEnd();
    EXPECT_EQ(desk.thumbnails.size(), 1) << "no page, no file, no message";
    EXPECT_EQ(saved.size(), 1U);
    EXPECT_TRUE(messages.isEmpty());
}

TEST_F(BookScanTest, AFailureIsToldAndLeavesTheFrame)
{
    options.doublePage = true;
    code = MIRVAK_NOT_FOUND;
    scanToTheEnd();
    EXPECT_TRUE(says("Book flat failed!"));
    EXPECT_EQ(desk.cropModes.size(), 1);
    EXPECT_TRUE(saved.empty());
    code = MIRVAK_OK;
    names.removeLast(); // the disk is full
    scanToTheEnd();
    EXPECT_EQ(desk.thumbnails, QStringList{QStringLiteral("first.jpg")});
    EXPECT_EQ(saved.size(), 2U) << "the right page is tried all the same";
    EXPECT_EQ(desk.notices.size(), 1);
}

TEST_F(BookScanTest, OneAtATimeAndItCanBeCancelled)
{
    std::promise<void> stopped;
    desk.whenShown = [&](Job& job) {
        job.stop();
        stopped.set_value();
    };
    book.setFlatten([this, &stopped](void*, bool, int, void*& left, void*& right) {
        stopped.get_future().wait();
        left = makeImageHandle(8, 8, red);
        right = makeImageHandle(8, 8, blue);
        return code;
    });
    options.doublePage = true;
    book.scan(known, true);
    book.scan(known, true);
    EXPECT_EQ(desk.framesTaken, 1);
    EXPECT_EQ(desk.notices.size(), 1) << "and says why";
    ASSERT_TRUE(QTest::qWaitFor([this] { return !book.isRunning(); }, 10000));
    EXPECT_EQ(desk.cropModes.size(), 1) << "the frame itself stays";
    EXPECT_TRUE(saved.empty());
    EXPECT_TRUE(desk.thumbnails.isEmpty());
    EXPECT_TRUE(messages.isEmpty()) << "no failure";
    EXPECT_EQ(desk.notices.size(), 2);
}

TEST_F(BookScanTest, CancelledAfterTheFirstPageItKeepsBothAndSaysNothing)
{
    std::promise<Job*> shown;
    desk.whenShown = [&](Job& job) { shown.set_value(&job); };
    Job* job = nullptr; // of the worker
    book.setFlatten([&](void*, bool, int, void*& left, void*& right) {
        job = shown.get_future().get();
        left = makeImageHandle(8, 8, red);
        right = makeImageHandle(8, 8, blue);
        return code;
    });
    whenSaved = [&] { job->stop(); };
    options.doublePage = true;
    scanToTheEnd();
    EXPECT_EQ(desk.thumbnails.size(), 2);
    EXPECT_TRUE(desk.notices.isEmpty() && messages.isEmpty());
}
