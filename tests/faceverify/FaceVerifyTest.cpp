// The face window over cameras of the virtual desk, with card and face calls of its own, which answer as each
// test wants.
#include "FaceVerify.h"

#include "../ui/AnsweredDialogs.h"
#include "DeskFixture.h"
#include "FaceMatch.h"
#include "FaceVideo.h"
#include "Part.h"
#include "Settings.h"
#include "hidcard.h"
#include "idfacesdk.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>

#include <atomic>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <map>
#include <thread>

namespace {

struct Libraries
{
    int opens = HIDCARD_OK, cardType = 0;
    int readers = 0;           ///< that are open
    std::string portraitPath;  ///< as it was told
    QColor portrait = Qt::red; ///< of the card; none when it is not valid
    std::atomic<int> starts{ID_FACE_OK};
    std::atomic<bool> isFaceSeen{true}; ///< in the live picture
    int faces = 1, features = 0, score = 0, status = 1;
    int width = 2;                    ///< px of the pictures that are read, half as high
    std::map<std::string, int> reads; ///< what a picture's reading says; 0 where none is named
    std::vector<int> lives;           ///< scores, one a question
    std::vector<std::string> asked;   ///< the pictures that were read, in full
    std::atomic<bool> isRunning{false};
};
Libraries* libraries = nullptr;
const std::thread::id gui = std::this_thread::get_id();

std::string fileName(const char* path)
{
    const std::string text = path;
    return text.substr(text.rfind('/') + 1);
}

} // namespace

int h_idcard_openDevice(void)
{
    libraries->readers += libraries->opens == HIDCARD_OK ? 1 : 0;
    return libraries->opens;
}
int h_idcard_closeDevice(void)
{
    --libraries->readers;
    return HIDCARD_OK;
}
void h_idcard_setPhotoPath(const char* path)
{
    libraries->portraitPath = path;
}
int h_idcard_readInfo(void)
{
    QImage portrait(102, 126, QImage::Format_RGB888);
    portrait.fill(libraries->portrait);
    if (libraries->portrait.isValid() && !portrait.save(QString::fromStdString(libraries->portraitPath)))
        ADD_FAILURE() << libraries->portraitPath;
    return libraries->cardType;
}
int h_idcard_readData(int, int index, char* text)
{
    const char* const texts[] = {"张样本",
                                 "2",
                                 "01",
                                 "19900203",
                                 "街1号",
                                 "000000199002030028",
                                 "样本市公安局",
                                 "20200101",
                                 "20400101"};
    std::snprintf(text, HIDCARD_TEXT_BYTES, "%s", index < 9 ? texts[index] : "");
    return HIDCARD_OK;
}
int IdFaceSdkInit(const char* folder, const char*)
{
    EXPECT_EQ(fileName(folder), "lib");
    EXPECT_FALSE(libraries->isRunning) << "what it remembers would count";
    libraries->isRunning = libraries->starts == ID_FACE_OK;
    return libraries->starts;
}
int IdFaceSdkUninit(void)
{
    libraries->isRunning = false;
    return 0;
}
int IdFaceSdkFeatureSize(void)
{
    return 4;
}
int IdFaceSdkDetectFace(const unsigned char*, int width, int height, IdFaceInfo* face)
{
    if (std::this_thread::get_id() == gui)
        return libraries->faces;
    EXPECT_EQ(width * 3, height * 4);
    if (!libraries->isFaceSeen)
        return 0;
    face->left = face->top = 160;
    face->width = face->height = 240;
    return 1;
}
int IdFaceSdkFeatureGet(const unsigned char* rgb, int, int, const IdFaceInfo*, unsigned char* feature)
{
    feature[0] = rgb[0];
    return libraries->features;
}
int IdFaceSdkFeatureCompare(const unsigned char* a, const unsigned char* b)
{
    return a[0] == 'e' && b[0] == 'I' ? libraries->score : 0; // elphoto.bmp with IMAGE_...
}
int IdFaceSdkGetLiveFaceStatus(void)
{
    return libraries->status;
}
int IdFaceSdkLiveFaceDetect(
    int, int, const unsigned char*, const IdFaceInfo*, void* first, void* second, int* score)
{
    EXPECT_TRUE(!first && !second);
    *score = libraries->lives.front();
    libraries->lives.erase(libraries->lives.begin());
    return *score >= 90 ? 1 : 0;
}
int ReadImageFile(const char* path, unsigned char* rgb, int size, int* width, int* height, int bits)
{
    EXPECT_EQ(bits, 24);
    const std::string name = fileName(path);
    *width = libraries->width;
    *height = libraries->width / 2;
    if (!rgb)
        return name.empty() ? ID_FACE_BAD_ARGUMENT : libraries->reads[name];
    EXPECT_EQ(size, 6);
    rgb[0] = static_cast<unsigned char>(name.front());
    libraries->asked.push_back(name);
    return ID_FACE_OK;
}

namespace {

class FaceVerifyTest : public DeskTest
{
protected:
    FaceVerifyTest()
    {
        libraries = &libraries_;
        store_.GetSettings()->clear();
        settings::setSavePath(store_, pictures());
        std::filesystem::create_directory(folder().file("tmp"));
        setenv("TMPDIR", folder().file("tmp").c_str(), 1);
    }
    ~FaceVerifyTest() override
    {
        window_.reset();
        EXPECT_FALSE(libraries_.isRunning) << "each start of the face library has its end";
        EXPECT_EQ(libraries_.readers, 0) << "and each opened reader";
        unsetenv("TMPDIR");
        camera_.MirvakDevs_Deinit();
        store_.GetSettings()->clear();
    }

    std::string colour(const std::string& more = "") { return camera("colour", Qt::red, 2, more); }
    std::string infrared(const std::string& more = "") { return camera("infrared", Qt::gray, 3, more); }
    void open(const std::string& cameras)
    {
        useDesk(camera("main", Qt::yellow, 1) + (cameras.empty() ? "" : ", " + cameras));
        camera_.MirvakDevs_Init();
        window_ = std::make_unique<FaceVerify>(nullptr, &camera_);
        window_->SetMainIdx(0);
        window_->resize(1000, 640);
        window_->show();
        window_->SetOpenCamera(2, 0);
    }
    void click(const char* name) const
    {
        QTest::mouseClick(part<QPushButton>(*window_, name), Qt::LeftButton);
    }
    QString result() const { return part<QLabel>(*window_, "labelResult")->text(); }
    QString note() const { return part<QLabel>(*window_, "labelNote")->text(); }
    QString box(const char* name) const { return part<QLineEdit>(*window_, name)->text(); }
    QString pictures() const { return QString::fromStdString(folder().file("out")); }
    QStringList files() const { return QDir(pictures()).entryList(QDir::Files, QDir::Name); }
    /// Pulled out; these stay.
    void keepOnly(const std::string& cameras)
    {
        changeDesk(camera("main", Qt::yellow, 1) + (cameras.empty() ? "" : ", " + cameras));
        camera_.MirvakDevs_Refresh(); // finds the file changed,
        camera_.MirvakDevs_Refresh(); // and at rest
        EXPECT_TRUE(
            QTest::qWaitFor([this] { return note().contains(QStringLiteral("disconnected")); }, 60'000));
    }
    bool isShown(const QColor& colour) const
    {
        const auto* video = part<FaceVideo>(*window_, "video");
        const QColor shown =
            const_cast<FaceVideo*>(video)->grab().toImage().pixelColor(video->rect().center());
        return std::abs(shown.red() - colour.red()) + std::abs(shown.green() - colour.green()) < 40;
    }
    QString placeholder() const { return part<FaceVideo>(*window_, "video")->accessibleDescription(); }
    QColor portrait() const
    {
        const QPixmap picture = part<QLabel>(*window_, "labelPortrait")->pixmap(Qt::ReturnByValue);
        return picture.isNull() ? QColor() : picture.toImage().pixelColor(picture.rect().center());
    }
    QColor colourOf(int file) const
    {
        return QImage(pictures() + QLatin1Char('/') + files().at(file)).pixelColor(320, 240);
    }

    AnsweredDialogs dialogs_;
    ConfigSettings store_;
    Libraries libraries_;
    MirvakCamera camera_;
    std::unique_ptr<FaceVerify> window_;
};

TEST_F(FaceVerifyTest, OneClickReadsTheCardTakesTheFaceAndComparesThem)
{
    open(colour() + ", " + infrared());
    libraries_.score = 50;
    click("buttonOneClick");
    ASSERT_EQ(dialogs_.messages.size(), 1);
    EXPECT_TRUE(
        dialogs_.messages.first().startsWith(QStringLiteral("Please confirm that your ID card is in")));
    const QStringList shown{box("editName"),
                            box("editGender"),
                            box("editNation"),
                            box("editYear"),
                            box("editMonth"),
                            box("editDay"),
                            box("editPeriod")};
    EXPECT_EQ(shown.join(QLatin1Char('|')), QStringLiteral("张样本|女|汉族|1990|02|03|20200101-20400101"));
    EXPECT_EQ(result(), QStringLiteral("Face comparison success, score:50"));
    EXPECT_EQ(libraries_.asked, (std::vector<std::string>{"elphoto.bmp", "IMAGE_000.jpg"}));
    ASSERT_EQ(files().size(), 1);
    EXPECT_GT(colourOf(0).red(), 200) << "of the colour camera, whichever is first";
    EXPECT_LT(colourOf(0).green(), 60);
    EXPECT_EQ(QFile::permissions(pictures() + QStringLiteral("/IMAGE_000.jpg")) &
                  (QFile::ReadGroup | QFile::ReadOther),
              0);
    auto* video = part<FaceVideo>(*window_, "video");
    const auto frame = [&] { // left edge of the face: a quarter of the picture, which is as high as the view
        const double scale = std::min(video->width() / 640.0, video->height() / 480.0);
        const QPointF corner = video->rect().center() - QPointF(320, 240) * scale;
        const QColor line =
            video->grab().toImage().pixelColor((corner + QPointF(160, 280) * scale).toPoint());
        return line.green() > 150;
    };
    EXPECT_EQ(portrait(), QColor(Qt::red)) << "of the card";
    EXPECT_TRUE(QTest::qWaitFor(frame, 10'000)) << "the found face is framed";
    click("buttonVerify"); // while the live picture is looked at
    EXPECT_EQ(result(), QStringLiteral("Face comparison success, score:50"));
    libraries_.isFaceSeen = false;
    EXPECT_TRUE(QTest::qWaitFor([&] { return !frame(); }, 60'000)) << "it has gone";

    click("buttonScanner"); // both roles
    ASSERT_EQ(files().size(), 3);
    EXPECT_GT(colourOf(1).red() - colourOf(1).green(), 150);
    EXPECT_LT(colourOf(2).red() - colourOf(2).green(), 30);
}

TEST_F(FaceVerifyTest, ScoresAndFailedStepsBecomeTexts)
{
    open(colour());
    window_->readidcard();
    window_->scannerimg();
    const auto says = [&](const char* text) {
        libraries_.asked.clear();
        click("buttonVerify");
        EXPECT_EQ(result(), QLatin1String(text));
    };
    libraries_.score = 49;
    says("Face comparison failed, score:49");
    libraries_.score = 100;
    says("Face comparison success, score:100");
    libraries_.reads["IMAGE_000.jpg"] = 77; // no match, whatever its number
    says("Face comparison failed, score:-77");
    libraries_.reads.clear();
    libraries_.faces = 0;
    says("Face comparison failed, score:0");
    libraries_.faces = 2;
    says("Face comparison success, score:100");
    libraries_.features = ID_FACE_NO_FACE;
    says("Face comparison failed, score:-6");
    libraries_.features = 0;
    libraries_.starts = ID_FACE_NO_WEIGHTS;
    says("");
    EXPECT_EQ(dialogs_.messages,
              QStringList{QStringLiteral("The face library cannot be used on this computer!")});
    libraries_.starts = ID_FACE_OK;

    libraries_.cardType = 1; // and the last person's card is forgotten
    click("buttonReadCard");
    EXPECT_EQ(dialogs_.messages.last(), QStringLiteral("Read idcard failed!"));
    EXPECT_EQ(box("editName"), QString());
    EXPECT_EQ(portrait(), QColor());
    says("Face comparison failed, score:-2");
    libraries_.cardType = 0;
    libraries_.portrait = QColor();
    click("buttonReadCard");
    EXPECT_EQ(box("editName"), QStringLiteral("张样本"));
    EXPECT_EQ(portrait(), QColor()) << "that of the card before";
}

TEST_F(FaceVerifyTest, InfraredIsShownOnlyWhenTheColourCameraHasGone)
{
    std::string slow = colour();
    slow.replace(slow.find("fps = 30"), 8, "fps = 2");
    open(slow + ", " + infrared());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::red); }, 60'000));
    window_->scannerimgIR(); // so infrared frames have come since the last one in colour
    QCoreApplication::processEvents();
    EXPECT_TRUE(isShown(Qt::red));
    keepOnly(infrared());
    EXPECT_TRUE(isShown(Qt::red)) << "the last picture stays until the other camera's are shown";
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::gray); }, 60'000));
    click("buttonOneClick");
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-2"))
        << "infrared is no face to compare";
    keepOnly(slow);
    EXPECT_TRUE(QTest::qWaitFor([this] { return isShown(Qt::black); }, 60'000)) << "the last one has gone";
    EXPECT_EQ(placeholder(), QStringLiteral("The face camera was disconnected."));
}

TEST_F(FaceVerifyTest, WhatTheLibraryCannotReadIsNoLivingFaceWhateverItsNumber)
{
    open(colour() + ", " + infrared("fail_start = true;"));
    EXPECT_EQ(placeholder(), QString()) << "the colour camera is enough";
    window_.reset();
    open(colour() + ", " + infrared());
    for (const char* name : {"IMAGE_000.jpg", "IMAGE_001.jpg"})
        libraries_.reads[name] = 90;
    click("buttonLiveFace");
    EXPECT_EQ(result(), QStringLiteral("This is not a living face."));
    libraries_.reads.clear();
    libraries_.width = 20'002; // more pixels than any camera has
    window_->readidcard();
    click("buttonVerify");
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-3"));
}

TEST_F(FaceVerifyTest, NobodyIsJudgedByAnInfraredPictureOfTheOneBefore)
{
    open(colour() + ", " + infrared());
    click("buttonScanner");
    ASSERT_EQ(files().size(), 2);
    keepOnly(colour());
    libraries_.lives = {95};
    click("buttonLiveFace");
    EXPECT_EQ(result(), QString());
    EXPECT_EQ(libraries_.lives.size(), 1U) << "looked at";
}

TEST_F(FaceVerifyTest, WhatKeepsTheVideoEmptyIsSaidAndPicturesHaveOneSize)
{
    open("");
    EXPECT_EQ(placeholder(), QStringLiteral("There is no face camera."));
    window_.reset();
    open(colour("fail_create = true;"));
    EXPECT_EQ(placeholder(), QStringLiteral("The face camera cannot be opened. It may be in use."));
    window_.reset();
    std::string small = colour();
    small.erase(small.find("\"640x480\", "), 11);
    open(small);
    EXPECT_EQ(placeholder(), QString());
    window_->scannerimg();
    ASSERT_EQ(files().size(), 1);
    EXPECT_EQ(QImage(pictures() + QLatin1Char('/') + files().first()).size(), QSize(640, 480));
}

TEST_F(FaceVerifyTest, TheInfraredPictureHasTheFirstWordOnLiveness)
{
    constexpr const char* living = "This is a living face.";
    constexpr const char* notLiving = "This is not a living face.";
    struct Life
    {
        std::vector<int> scores;
        int status, faces;
        const char* text;
        const char* printed; ///< of the last question
        size_t asked;        ///< pictures
    };
    open(colour() + ", " + infrared());
    for (const Life& life : {Life{{19, 50}, 1, 1, living, "IdFaceSdkFaceLive return 0. (score=50)", 2},
                             Life{{20}, 1, 1, notLiving, "return 0. (score=20)", 1},
                             Life{{49}, 1, 1, notLiving, "(score=49)", 1},
                             Life{{0, 19}, 1, 1, notLiving, "(score=19)", 2},
                             Life{{90}, 1, 1, living, "return 1. (score=90)", 1},
                             Life{{}, 0, 1, notLiving, "LiveFace not support!", 0},
                             Life{{}, 1, 2, notLiving, "Detect face fail.", 2}}) {
        libraries_.lives = life.scores;
        libraries_.status = life.status;
        libraries_.faces = life.faces;
        libraries_.asked.clear();
        testing::internal::CaptureStdout();
        click("buttonLiveFace");
        const std::string printed = testing::internal::GetCapturedStdout();
        EXPECT_NE(printed.find(life.printed), std::string::npos) << printed;
        EXPECT_EQ(result(), QLatin1String(life.text));
        EXPECT_EQ(libraries_.asked.size(), life.asked);
        const std::string infraredName = files().last().toStdString(); // the second of the two
        EXPECT_TRUE(life.asked == 0 || libraries_.asked.front() == infraredName);
        EXPECT_TRUE(libraries_.lives.empty());
    }
}

TEST_F(FaceVerifyTest, WithoutDevicesItSaysSoAndHangsNowhere)
{
    libraries_.opens = HIDCARD_NO_READER;
    {
        FaceVerify window(nullptr, &camera_);
        const QSignalSpy closed(&window, &FaceVerify::closefacesign);
        window.SetMainIdx(0);
        EXPECT_EQ(closed.count(), 1);
    }
    EXPECT_EQ(dialogs_.messages,
              QStringList{QStringLiteral("Init IDCard failed,this device may not support this feature!")});
    libraries_.opens = HIDCARD_OK;

    open(colour()); // and no infrared one
    window_->scannerimg();
    ASSERT_EQ(files().size(), 1);
    keepOnly("");
    click("buttonLiveFace");
    EXPECT_EQ(result(), QString());
    click("buttonOneClick"); // the last picture is not this person's
    EXPECT_EQ(result(), QStringLiteral("Face comparison failed, score:-2"));
    EXPECT_EQ(files().size(), 1);
    const QSignalSpy closed(window_.get(), &FaceVerify::closefacesign);
    QTest::mouseClick(
        part<QWidget>(*window_, "titleBar")->findChild<QPushButton*>(QStringLiteral("buttonClose")),
        Qt::LeftButton);
    EXPECT_EQ(closed.count(), 1);
    EXPECT_EQ(libraries_.readers, 0) << "others may use the reader";
    window_.reset();
    open("");
    click("buttonScanner");
    EXPECT_EQ(files().size(), 1);
}

} // namespace
