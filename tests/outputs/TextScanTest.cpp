#include "TextScan.h"

#include "DiskFullAt.h"
#include "OutputFixture.h"
#include "RtfText.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPainter>
#include <QTest>

namespace {

class TextScanTest : public OutputTest
{
protected:
    TextScanTest()
    {
        desk.savesAs << save("扫描_000.png", printed(QStringLiteral("Friday. Please come back later.")));
        settings::setSavePath(settings, path("texts"));
        settings::scanType.write(settings, 6);
    }
    ~TextScanTest() override
    {
        text.reset();
        EXPECT_FALSE(QApplication::overrideCursor()) << "the busy cursor is left on";
    }

    QStringList documents(const char* below = "texts") const
    {
        return QDir(path(below)).entryList({QStringLiteral("*.rtf")});
    }
    bool finishes() const
    {
        return QTest::qWaitFor([this] { return !text->isRunning(); }, 60000);
    }
    void use(const QString& models) { text = std::make_unique<TextScan>(desk, models); }

    const QString picture = path("扫描_000.png");
    std::unique_ptr<TextScan> text = std::make_unique<TextScan>(desk, QStringLiteral(OCR_MODELS));
};

} // namespace

TEST_F(TextScanTest, MakesADocumentOfACapture)
{
    settings::createDirByDate.write(settings, true);
    QDir().mkpath(path("texts"));
    text->scan();
    EXPECT_TRUE(text->isRunning()) << "the call returns at once";
    EXPECT_EQ(desk.jobs.size(), 1) << "and says what goes on";
    ASSERT_TRUE(QApplication::overrideCursor());
    EXPECT_EQ(desk.colourModes, QList<int>{6});
    ASSERT_TRUE(finishes());
    ASSERT_EQ(desk.documents.size(), 1);
    const QString today = QDate::currentDate().toString(QStringLiteral("yyyyMMdd"));
    const QStringList made = documents(("texts/" + today.toStdString()).c_str());
    ASSERT_EQ(made.size(), 1);
    EXPECT_TRUE(desk.documents[0].endsWith(QStringLiteral("/texts/") + today + QLatin1Char('/') + made[0]));
    const QDateTime named = QDateTime::fromString(made[0], QStringLiteral("yyyyMMddhhmmss'.rtf'"));
    EXPECT_LE(qAbs(named.secsTo(QDateTime::currentDateTime())), 5);
    EXPECT_FALSE(desk.documentIcons[0].isNull());
    EXPECT_TRUE(desk.thumbnails.isEmpty()) << "the picture itself is not listed";
    EXPECT_TRUE(desk.notices.last().isEmpty()) << "the notice is gone";
    QFile file(desk.documents[0]);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(rtfText(file.readAll().toStdString()),
              U"The harbour office is closed on Friday. Please come back later.\n");
}

TEST_F(TextScanTest, HighlightsWhatCouldBeMisreadUnlessThatIsSwitchedOff)
{
    QImage page(picture);
    QPainter painter(&page);
    QFont font(QStringLiteral("DejaVu Serif"));
    font.setPixelSize(36);
    const QFontMetrics metrics(font);
    const int left = 80 + metrics.horizontalAdvance(QStringLiteral("The harbour "));
    painter.setPen(QPen(Qt::black, 5)); // crosses the word out
    for (int x = left; x < left + metrics.horizontalAdvance(QStringLiteral("office")) - 35; x += 20)
        painter.drawLine(x, 70, x + 35, 104);
    painter.end();
    ASSERT_TRUE(page.save(picture));
    std::u32string highlighted[2], texts[2];
    for (const bool on : {true, false}) {
        desk.savesAs << picture;
        if (!on) // it is on by itself
            settings::markUnsure.write(settings, false);
        text->scan();
        ASSERT_TRUE(finishes());
        QFile file(desk.documents.last());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const std::string rtf = file.readAll().toStdString();
        highlighted[on] = rtfHighlighted(rtf).value_or(U"broken");
        texts[on] = rtfText(rtf).value_or(U"");
    }
    EXPECT_NE(highlighted[1], U"");
    for (const char32_t* sure : {U"harbour", U"closed", U"Friday", U"Please", U"later"})
        EXPECT_EQ(highlighted[1].find(sure), std::u32string::npos) << "the words around it are sure";
    EXPECT_EQ(highlighted[0], U"");
    EXPECT_EQ(texts[0], texts[1]) << "the text is the same";
}

TEST_F(TextScanTest, OneAtATime)
{
    desk.savesAs << picture;
    text->scan();
    text->scan();
    EXPECT_EQ(desk.framesTaken, 1);
    EXPECT_EQ(desk.notices.size(), 1) << "and says why";
    ASSERT_TRUE(finishes());
    EXPECT_EQ(desk.documents.size(), 1);
    text->scan();
    EXPECT_EQ(desk.framesTaken, 2) << "and then another";
    ASSERT_TRUE(finishes());
    EXPECT_EQ(desk.documents.size(), 2);
    EXPECT_EQ(documents().size(), 2) << "none replaces another";
}

TEST_F(TextScanTest, DoesNothingWithoutLeavePictureOrModels)
{
    desk.allowed = false;
    text->scan();
    EXPECT_EQ(desk.framesTaken, 0);
    desk.allowed = true;
    desk.frameComes = false;
    text->scan();
    EXPECT_FALSE(text->isRunning());
    desk.frameComes = true;
    use(path("models"));
    text->scan();
    EXPECT_FALSE(text->isRunning()) << "no models";
    desk.savesAs.clear();
    text->scan();
    EXPECT_FALSE(text->isRunning()) << "nothing saved";
    EXPECT_TRUE(desk.documents.isEmpty());
    EXPECT_EQ(desk.notices.size(), 2) << "no frame, no models";
}

TEST_F(TextScanTest, NothingReadOrNoFolderMakesNoDocumentAFullDiskAListedOne)
{
    desk.savesAs[0] = QString::fromStdString(folder.write("broken.jpg", "no picture"));
    text->scan();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(desk.notices.size(), 1);
    EXPECT_FALSE(desk.notices.last().isEmpty());
    settings::setSavePath(settings, path("one/two"));
    desk.savesAs << picture;
    text->scan();
    ASSERT_TRUE(finishes());
    EXPECT_FALSE(desk.notices.last().isEmpty());
    EXPECT_TRUE(desk.documents.isEmpty());

    settings::setSavePath(settings, path("texts"));
    desk.savesAs << picture;
    // The strip lists what was to be made, as the user saw it begun; a notice says that it is not there.
    const DiskFullAt limit(10);
    text->scan();
    ASSERT_TRUE(finishes());
    EXPECT_TRUE(documents().isEmpty());
    EXPECT_EQ(desk.documents.size(), 1);
    EXPECT_FALSE(desk.notices.last().isEmpty());
}

TEST_F(TextScanTest, CancelledAtAnyPointItMakesNoDocumentAndCanBeginAgainAsAtTheEndOfTheWindow)
{
    const QImage few(picture);
    QImage many(few.width(), few.height() * 12, few.format());
    QPainter painter(&many);
    for (int i = 0; i < 12; ++i)
        painter.drawImage(0, i * few.height(), few);
    painter.end();
    EXPECT_TRUE(many.save(picture));
    for (const double at : {0.0, 0.2}) {
        desk.savesAs << picture;
        text->scan();
        ASSERT_TRUE(QTest::qWaitFor([&] { return desk.jobProgress() >= at; }, 60000));
        desk.cancelJob();
        ASSERT_TRUE(finishes());
        EXPECT_TRUE(desk.job.expired()) << "the bar would stay";
        EXPECT_TRUE(desk.documents.isEmpty() && documents().isEmpty());
        EXPECT_TRUE(desk.notices.last().contains(QStringLiteral("cancelled")));
    }
    text->scan();
    ASSERT_TRUE(finishes());
    EXPECT_EQ(documents().size(), 1);

    desk.savesAs << picture;
    text->scan();
    ASSERT_TRUE(text->isRunning());
    text.reset();
    QCoreApplication::processEvents();
    EXPECT_EQ(desk.documents.size(), 1);
    EXPECT_TRUE(QFile::exists(picture));
}
