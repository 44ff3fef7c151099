// The library as the program uses it: a picture file in, a document out.
#include "RtfText.h"
#include "TempDir.h"
#include "TestPages.h"
#include "Unicode.h"
#include "mirvakocr.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QPainter>
#include <QTransform>

#include <algorithm>
#include <atomic>
#include <set>
#include <thread>

using testPages::Style;

namespace {

const char* const models = OCR_MODELS;

/// Without white space, which no two readers count alike.
std::u32string dense(std::u32string text)
{
    text.erase(std::remove_if(text.begin(), text.end(), [](char32_t c) { return c <= U' '; }), text.end());
    return text;
}

double errorShare(const std::u32string& truth, const std::u32string& read)
{
    const std::u32string wanted = dense(truth);
    return static_cast<double>(editDistance(wanted, dense(read))) / static_cast<double>(wanted.size());
}

class Recognition : public ::testing::Test
{
protected:
    /// The text of the picture; nothing when any step fails.
    std::u32string read(const std::string& picture)
    {
        MirvakOCR ocr;
        EXPECT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
        EXPECT_EQ(ocr.MirvakOCR_Discern(picture.c_str()), MIRVAK_OCR_OK);
        int percent = 0;
        EXPECT_EQ(ocr.MirvakOCR_GetProgress(percent), MIRVAK_OCR_OK);
        EXPECT_EQ(percent, 100);
        QFile::remove(QString::fromStdString(document)); // of the page before
        EXPECT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_OK);
        EXPECT_EQ(ocr.MirvakOCR_Deinit(), MIRVAK_OCR_OK);
        const auto text = rtfText(folder.content(documentName));
        EXPECT_TRUE(text.has_value()) << "no well-formed document";
        return text.value_or(std::u32string());
    }
    std::u32string read(const QImage& image) { return read(saved(image)); }
    std::string saved(const QImage& image, const char* name = "page.png") const
    {
        const QString path = QString::fromStdString(folder.file(name));
        EXPECT_TRUE(image.save(path));
        return path.toStdString();
    }
    /// After a page that was read: nothing of it may be left.
    int discern(const std::string& picture)
    {
        MirvakOCR ocr;
        EXPECT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
        const std::string good =
            saved(testPages::page({1150, 200}, {QStringLiteral("good page")}), "good.png");
        EXPECT_EQ(ocr.MirvakOCR_Discern(good.c_str()), MIRVAK_OCR_OK);
        const int result = ocr.MirvakOCR_Discern(picture.c_str());
        EXPECT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_NOT_READY) << "there is no text";
        EXPECT_FALSE(QFile::exists(QString::fromStdString(document)));
        return result;
    }

    const TempDir folder;
    const std::string documentName = "文本.rtf", document = folder.file(documentName);
};

const QStringList english{QStringLiteral("The harbour office keeps forty-four volumes."),
                          QStringLiteral("Anyone who asks politely may take one down"),
                          QStringLiteral("and read it by the window until five o'clock.")};

struct DeskPage
{
    const char* picture;
    const char* text;
    double mostErrors;
};

} // namespace

// Frames of a small camera, 1600 pixels for the desk: a letter of the text is seven pixels high.
class DeskPages : public Recognition, public ::testing::WithParamInterface<DeskPage>
{
};

TEST_P(DeskPages, AreReadFromTheFrameAsItIs)
{
    const DeskPage& page = GetParam();
    const std::string truth = TempDir::contentOf(std::string(LUMRO_DESK_DIR "/texts/") + page.text);
    ASSERT_FALSE(truth.empty());
    const std::u32string text = read(std::string(LUMRO_DESK_DIR "/pictures/1600x1200/") + page.picture);
    EXPECT_LE(errorShare(mirvak::fromUtf8(truth), text), page.mostErrors);
    const auto paragraphs = std::count(truth.begin(), truth.end(), '\n');
    EXPECT_NEAR(
        static_cast<double>(std::count(text.begin(), text.end(), U'\n')), static_cast<double>(paragraphs), 1);
}

// Twice what is measured, so that another version of the data does not fail the test at once.
INSTANTIATE_TEST_SUITE_P(AllLanguages,
                         DeskPages,
                         ::testing::Values(DeskPage{"03-english-text.jpg", "english.txt", 0.004},
                                           DeskPage{"04-chinese-text.jpg", "chinese.txt", 0.01},
                                           DeskPage{"05-russian-text.jpg", "russian.txt", 0.004}),
                         [](const auto& page) { return std::string(page.param.text, 7); });

TEST_F(Recognition, APageOnItsSideOrHeadIsTurned)
{
    const QImage upright = testPages::page({1150, 700}, english);
    const std::u32string truth = english.join(QLatin1Char(' ')).toStdU32String();
    for (const int degrees : {0, 90, 180, 270}) {
        const QImage turned = upright.transformed(QTransform().rotate(degrees));
        EXPECT_LE(errorShare(truth, read(turned)), 0.02) << degrees;
    }
}

TEST_F(Recognition, LanguagesMayBeMixed)
{
    const Style chinese{testPages::chineseFamily(), 38, 64};
    QImage page = testPages::page({1300, 700},
                                  {QStringLiteral("本软件支持多种系统，请访问网站下载说明书。"),
                                   QStringLiteral("联系人：王小明，欢迎大家来这里看书喝茶。")},
                                  chinese);
    testPages::print(page, english, Style(), 120, 340);
    const std::u32string text = read(page);
    const QString all =
        QStringLiteral("本软件支持多种系统，请访问网站下载说明书。联系人：王小明，欢迎大家来这里看书喝茶。") +
        english.join(QLatin1Char(' '));
    EXPECT_LE(errorShare(all.toStdU32String(), text), 0.04);
    EXPECT_EQ(text.find(U"支 持"), std::u32string::npos) << "no spaces between ideographs";
    const QStringList russian{QStringLiteral("Часы на старой станции отстали на четыре минуты,"),
                              QStringLiteral("и каждый вечер смотритель записывал это в тетрадь."),
                              QStringLiteral("Потом он закрывал дверь и шёл домой по берегу.")};
    page = testPages::page({1300, 500}, russian + english.mid(0, 1));
    EXPECT_LE(errorShare((russian + english.mid(0, 1)).join(QLatin1Char(' ')).toStdU32String(), read(page)),
              0.02);
}

TEST_F(Recognition, CharactersThatTheModelHardlyKnowsAreReadByTheirShapes)
{
    const QString text = QStringLiteral("中间只留一条窄窄的小路，从开业的那一天起，"
                                        "登记簿一本也没有湿，半条街都被淹了，再用鸡毛掸子扫去灰尘。");
    const QString picture =
        QString::fromStdString(saved(testPages::page({1300, 500},
                                                     {text.left(21), text.mid(21, 18), text.mid(39)},
                                                     Style{testPages::chineseFamily(), 38, 64})));
    EXPECT_EQ(errorShare(text.toStdU32String(), read(picture.toStdString())), 0);
    // Without what it knows of the shapes, or with a broken file of it, the rest is read all the same.
    folder.write("chi_sim.traineddata", TempDir::contentOf(std::string(models) + "/chi_sim.traineddata"));
    for (const bool isBroken : {false, true}) {
        if (isBroken)
            folder.write("chi_sim.glyphs", "no shapes at all");
        MirvakOCR ocr;
        ASSERT_EQ(ocr.MirvakOCR_Init(folder.path().c_str()), MIRVAK_OCR_OK);
        ASSERT_EQ(ocr.MirvakOCR_Discern(picture.toUtf8().constData()), MIRVAK_OCR_OK);
        QFile::remove(QString::fromStdString(document));
        ASSERT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_OK);
        const auto plainly = rtfText(folder.content(documentName));
        ASSERT_TRUE(plainly);
        EXPECT_GT(errorShare(text.toStdU32String(), *plainly), 0) << "or this test shows nothing";
        EXPECT_LT(errorShare(text.toStdU32String(), *plainly), 0.2);
    }
}

TEST_F(Recognition, LightPrintShadowsAndRulesDoNotMatter)
{
    QImage page = testPages::page({1150, 500}, english);
    QLinearGradient light(0, 0, page.width(), 0);
    light.setColorAt(0, Qt::white);
    light.setColorAt(1, QColor(90, 90, 90)); // a third of the light at the right edge
    QPainter shade(&page);
    shade.setCompositionMode(QPainter::CompositionMode_Multiply);
    shade.fillRect(page.rect(), light);
    shade.end();
    EXPECT_LE(errorShare(english.join(QLatin1Char(' ')).toStdU32String(), read(page)), 0.02);
}

TEST_F(Recognition, ColumnsRoundAPictureAreReadOneAfterTheOther)
{
    QStringList left, right;
    for (int i = 0; i < 3; ++i) {
        left << QStringLiteral("The harbour office keeps") << QStringLiteral("forty-four volumes there");
        right << QStringLiteral("Anyone who asks politely") << QStringLiteral("may take one down to read");
    }
    const Style style{QStringLiteral("DejaVu Serif"), 30, 44};
    QImage page = testPages::page({1250, 900}, left, style, 120, 150);
    testPages::print(page, right, style, 650, 172); // on lines of its own
    testPages::print(page, left, style, 120, 640);
    testPages::print(page, right, style, 650, 662);
    QPainter painter(&page);
    QLinearGradient tones(0, 420, 0, 600);
    tones.setColorAt(0, QColor(60, 70, 90));
    tones.setColorAt(1, QColor(190, 180, 150));
    painter.fillRect(300, 430, 600, 160, tones);
    painter.end();
    const QStringList inOrder = left + left + right + right;
    EXPECT_LE(errorShare(inOrder.join(QLatin1Char(' ')).toStdU32String(), read(page)), 0.03);
}

TEST_F(Recognition, WhatIsNoPageIsRefused)
{
    EXPECT_EQ(discern(folder.file("nothing.png")), MIRVAK_OCR_BAD_PICTURE);
    EXPECT_EQ(discern(folder.path()), MIRVAK_OCR_BAD_PICTURE);
    EXPECT_EQ(discern(folder.write("broken.jpg", std::string("\xff\xd8\xff\xe0") + std::string(4000, 'x'))),
              MIRVAK_OCR_BAD_PICTURE);
    EXPECT_EQ(discern(""), MIRVAK_OCR_BAD_ARGUMENT);
    QImage page(900, 700, QImage::Format_RGB32);
    for (const Qt::GlobalColor colour : {Qt::white, Qt::black}) {
        page.fill(colour);
        EXPECT_EQ(discern(saved(page)), MIRVAK_OCR_NO_TEXT) << colour;
    }
    EXPECT_EQ(discern(saved(page.copy(0, 0, 1, 1))), MIRVAK_OCR_NO_TEXT);
    page = QImage(1600, 1200, QImage::Format_RGB32);
    page.fill(Qt::white);
    unsigned seed = 7;
    const auto next = [&](int below) {
        seed = seed * 1103515245U + 12345U;
        return static_cast<int>((seed >> 8) % static_cast<unsigned>(below));
    };
    for (int i = 0; i < 20000; ++i) { // dirt, or a coarse cloth
        const int x = next(1597), y = next(1197), size = 1 + next(3);
        for (int j = 0; j < size * size; ++j)
            page.setPixel(x + j % size, y + j / size, qRgb(20, 20, 20));
    }
    EXPECT_EQ(discern(saved(page)), MIRVAK_OCR_NO_TEXT) << "specks";
}

TEST_F(Recognition, ModelsThatAreMissingOrBrokenAreRefused)
{
    const std::string picture = saved(testPages::page({1150, 400}, english));
    MirvakOCR ocr;
    EXPECT_EQ(ocr.MirvakOCR_Discern(picture.c_str()), MIRVAK_OCR_NOT_READY);
    EXPECT_EQ(ocr.MirvakOCR_Init(nullptr), MIRVAK_OCR_BAD_ARGUMENT);
    EXPECT_EQ(ocr.MirvakOCR_Init(folder.file("missing").c_str()), MIRVAK_OCR_NO_MODEL);
    EXPECT_EQ(ocr.MirvakOCR_Init(folder.path().c_str()), MIRVAK_OCR_NO_MODEL) << "no data in it";
    const std::string good = std::string(models) + "/eng.traineddata";
    folder.write("eng.traineddata", TempDir::contentOf(good).substr(0, 70000));
    folder.write("rus.traineddata", "no data at all");
    ASSERT_EQ(ocr.MirvakOCR_Init(folder.path().c_str()), MIRVAK_OCR_OK);
    EXPECT_EQ(ocr.MirvakOCR_Discern(picture.c_str()), MIRVAK_OCR_NO_MODEL);
    ASSERT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
    EXPECT_EQ(ocr.MirvakOCR_Discern(picture.c_str()), MIRVAK_OCR_OK) << "usable again";
    EXPECT_EQ(ocr.MirvakOCR_Deinit(), MIRVAK_OCR_OK);
    EXPECT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_NOT_READY);
}

TEST_F(Recognition, ADocumentThatCannotBeWrittenLeavesNothing)
{
    MirvakOCR ocr;
    ASSERT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
    ASSERT_EQ(ocr.MirvakOCR_Discern(saved(testPages::page({1150, 400}, english)).c_str()), MIRVAK_OCR_OK);
    EXPECT_EQ(ocr.MirvakOCR_Save(folder.file("no/such/folder.rtf").c_str()), MIRVAK_OCR_IO_ERROR);
    EXPECT_EQ(ocr.MirvakOCR_Save(nullptr), MIRVAK_OCR_BAD_ARGUMENT);
    QDir().mkpath(QString::fromStdString(folder.file("taken.rtf")));
    EXPECT_EQ(ocr.MirvakOCR_Save(folder.file("taken.rtf").c_str()), MIRVAK_OCR_EXISTS);
    EXPECT_EQ(QDir(QString::fromStdString(folder.path())).entryList(QDir::Files | QDir::Hidden).size(), 1);
    EXPECT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_OK) << "the text is still there";
}

/// A recognition on another thread, which is stopped as soon as it has come so far, in percent.
class WatchedRecognition : public Recognition,
                           public ::testing::WithParamInterface<std::pair<const char*, int>>
{
protected:
    /// Its percents on the way.
    std::set<int> watch(const std::string& picture, int stopAt)
    {
        std::atomic<bool> isOver{false};
        std::thread worker([&] {
            result = ocr.MirvakOCR_Discern(picture.c_str());
            isOver = true;
        });
        std::set<int> seen;
        for (int percent = 0; !isOver; std::this_thread::sleep_for(std::chrono::milliseconds(1))) {
            const int last = percent;
            if (ocr.MirvakOCR_GetProgress(percent) != MIRVAK_OCR_OK)
                continue;
            EXPECT_GE(percent, last);
            seen.insert(percent);
            if (percent >= stopAt)
                stopAt % 2 == 0 ? ocr.MirvakOCR_Stop() : ocr.MirvakOCR_Deinit();
        }
        worker.join();
        return seen;
    }

    MirvakOCR ocr;
    int result = 1;
};

TEST_P(WatchedRecognition, EndsWhereItIsStoppedAndTheNextOneIsWhole)
{
    const auto [picture, stopAt] = GetParam();
    const std::string page = std::string(LUMRO_DESK_DIR "/pictures/1600x1200/") + picture;
    ASSERT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
    const std::set<int> seen = watch(page, stopAt);
    if (stopAt > 100) {
        EXPECT_EQ(result, MIRVAK_OCR_OK);
        EXPECT_GT(seen.size(), 20U) << "in jumps";
        int percent = 0;
        ocr.MirvakOCR_GetProgress(percent);
        EXPECT_EQ(percent, 100);
        return;
    }
    EXPECT_EQ(result, MIRVAK_OCR_TIMEOUT) << "last seen at " << *seen.rbegin();
    EXPECT_EQ(ocr.MirvakOCR_Save(document.c_str()), MIRVAK_OCR_NOT_READY);
    EXPECT_NE(ocr.MirvakOCR_Discern(page.c_str()), MIRVAK_OCR_OK) << "stopped until the next Init";
    ASSERT_EQ(ocr.MirvakOCR_Init(models), MIRVAK_OCR_OK);
    const QImage line = testPages::page({900, 300}, {QStringLiteral("The harbour office is closed")});
    EXPECT_EQ(ocr.MirvakOCR_Discern(saved(line).c_str()), MIRVAK_OCR_OK);
}
INSTANTIATE_TEST_SUITE_P(At,
                         WatchedRecognition,
                         ::testing::Values(std::pair("04-chinese-text.jpg", 0),
                                           std::pair("04-chinese-text.jpg", 1),
                                           std::pair("05-russian-text.jpg", 30),
                                           std::pair("03-english-text.jpg", 61),
                                           std::pair("03-english-text.jpg", 1000),
                                           std::pair("04-chinese-text.jpg", 1000),
                                           std::pair("05-russian-text.jpg", 1000)));
