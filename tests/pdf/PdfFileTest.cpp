// The PDF calls, judged by other programs.
#include "DiskFullAt.h"
#include "OddPictures.h"
#include "PdfTools.h"
#include "PictureBytes.h"
#include "Pixels.h"
#include "TempDir.h"
#include "mirvakcamera.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>

#include <sys/stat.h>

using mirvak::Bytes;
using mirvak::Image;

namespace {

/// Four fields of 16 x 12 pixels: black and red above, green and blue below. Blocks of a JPEG lie within
/// them.
cv::Mat fields(int width = 32, int height = 24)
{
    cv::Mat rgb(height, width, CV_8UC3, cv::Scalar(0, 0, 0));
    const cv::Size half(width / 2, height / 2);
    rgb(cv::Rect({half.width, 0}, half)).setTo(cv::Scalar(255, 0, 0));
    rgb(cv::Rect({0, half.height}, half)).setTo(cv::Scalar(0, 255, 0));
    rgb(cv::Rect({half.width, half.height}, half)).setTo(cv::Scalar(0, 0, 255));
    return rgb;
}

cv::Mat greyRamp()
{
    cv::Mat rgb(24, 32, CV_8UC3);
    for (int y = 0; y < rgb.rows; ++y)
        for (int x = 0; x < rgb.cols; ++x)
            rgb.at<cv::Vec3b>(y, x) = cv::Vec3b::all(static_cast<uchar>(x * 8 + y % 2 * 7));
    return rgb;
}

/// Greatest difference in the middles of the four fields: at their edges a JPEG's coarser colours run over.
double fieldsDifference(const cv::Mat& page, const cv::Mat& wanted)
{
    if (page.empty())
        return 1e9;
    double worst = 0;
    for (const auto& [x, y] : {std::pair(1, 1), {3, 1}, {1, 3}, {3, 3}}) {
        const auto seen = page.at<cv::Vec3b>(page.rows * y / 4, page.cols * x / 4);
        const auto meant = wanted.at<cv::Vec3b>(wanted.rows * y / 4, wanted.cols * x / 4);
        worst = std::max(worst, cv::norm(seen, meant, cv::NORM_INF));
    }
    return worst;
}

class PdfFile : public ::testing::Test
{
protected:
    std::string jpegFile(const char* name, const odd::JpegKind& kind = {}) const
    {
        return dir.write(name, odd::jpeg(fields(), kind));
    }
    int add(const std::string& path) { return camera.MirvakPDF_AddPage(path.c_str()); }
    int save(const std::string& path) { return camera.MirvakPDF_Save(path.c_str()); }
    /// A fresh document with this one page, rendered one pixel a point.
    cv::Mat pageOf(const std::string& picture)
    {
        std::filesystem::remove(pdf);
        EXPECT_EQ(add(picture), MIRVAK_OK) << picture;
        EXPECT_EQ(save(pdf), MIRVAK_OK) << picture;
        EXPECT_EQ(tools::complaints(pdf), "") << picture;
        return tools::rendered(pdf);
    }
    /// What the call prints on standard error: it must be one line.
    template <class Call> void expectOneLine(const char* what, Call&& call)
    {
        testing::internal::CaptureStderr();
        call();
        const std::string said = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(said.begin(), said.end(), '\n'), 1) << what << ": " << said;
    }
    const TempDir dir;
    const std::string pdf = dir.file("合同 扫描.pdf");
    MirvakCamera camera;
};

} // namespace

TEST_F(PdfFile, JpegFilesAreKeptByteForByteInTheirOrder)
{
    std::vector<Bytes> sources;
    odd::JpegKind kind;
    for (const bool progressive : {false, true, false}) {
        kind.progressive = progressive;
        kind.dpiAcross = kind.dpiDown = 90 + static_cast<int>(sources.size());
        sources.push_back(odd::jpeg(fields(), kind));
    }
    sources[2].insert(sources[2].end(), 300, 0x55); // what some cameras append
    cv::Mat large(300, 400, CV_8UC3);               // more than is written at a time
    cv::randu(large, 0, 256);
    kind.dpiAcross = kind.dpiDown = 1; // which no camera means
    sources.push_back(odd::jpeg(large, kind));
    ASSERT_GT(sources[3].size(), 100'000U);
    for (const Bytes& source : sources)
        ASSERT_EQ(add(dir.write("页 1.png", source)), MIRVAK_OK) << "whatever its name says";
    EXPECT_EQ(save(pdf), MIRVAK_IO_ERROR) << "the file was written anew for each page";
    for (size_t i = 0; i < sources.size(); ++i)
        ASSERT_EQ(add(dir.write("页 " + std::to_string(i) + ".png", sources[i])), MIRVAK_OK);
    ASSERT_EQ(save(pdf), MIRVAK_OK);
    EXPECT_EQ(tools::complaints(pdf), "");
    EXPECT_EQ(tools::jpegStreams(pdf), sources);
    EXPECT_THAT(
        tools::pageSizes(pdf),
        testing::ElementsAre("25.6 x 19.2", "25.3187 x 18.989", "25.0435 x 18.7826", "133.963 x 100.472"));
    const std::string about = tools::run("pdfinfo '" + pdf + "'");
    EXPECT_THAT(about, testing::HasSubstr("Producer:        Lumro"));
    EXPECT_THAT(about, testing::HasSubstr("CreationDate:"));
    EXPECT_THAT(about, testing::HasSubstr("PDF version:     1.5"));
}

TEST_F(PdfFile, EveryKindOfJpegLooksAsItShould)
{
    const int lossy = 12; // levels, of flat colours
    for (const auto& [name, kind] : std::initializer_list<std::pair<const char*, odd::JpegKind>>{
             {"usual", {}},
             {"progressive", {JCS_RGB, JCS_YCbCr, true}},
             {"arithmetic", {JCS_RGB, JCS_YCbCr, false, true}},
             {"RGB by Adobe's mark", {JCS_RGB, JCS_RGB}},
             {"RGB by its components' names", {JCS_RGB, JCS_RGB, false, false, false, false}}}) {
        EXPECT_LE(fieldsDifference(pageOf(jpegFile("a.jpg", kind)), fields()), lossy) << name;
        const std::string text = tools::run("qpdf --qdf --object-streams=disable '" + pdf + "' - | strings");
        EXPECT_EQ(text.find("/ColorTransform 0") != std::string::npos, kind.stored == JCS_RGB) << name;
    }
    cv::Mat grey;
    cv::extractChannel(greyRamp(), grey, 0);
    const cv::Mat page = pageOf(dir.write("grey.jpg", odd::jpeg(grey, {JCS_GRAYSCALE, JCS_GRAYSCALE})));
    EXPECT_LE(difference(page, greyRamp()), 2 * lossy) << "steps, not flat";
}

TEST_F(PdfFile, CmykIsNeverANegative)
{
    // Ink shares of white paper and of red; with Adobe's mark 255 stands for no ink.
    for (const bool adobe : {true, false}) {
        for (const J_COLOR_SPACE stored : {JCS_CMYK, JCS_YCCK}) {
            if (!adobe && stored == JCS_YCCK)
                continue; // cannot be told from CMYK
            cv::Mat inks(24, 32, CV_8UC4, cv::Scalar(0, 0, 0, 0));
            inks.colRange(16, 32).setTo(cv::Scalar(0, 255, 255, 0));
            if (adobe)
                cv::bitwise_not(inks, inks);
            odd::JpegKind kind{JCS_CMYK, stored};
            kind.adobe = adobe;
            kind.jfif = false;
            const Bytes jpeg = odd::jpeg(inks, kind);
            const std::optional<Image> decoded = mirvak::decodeImage(jpeg);
            ASSERT_TRUE(decoded);
            // Without a resolution of its own: 215 dpi, so that a page has 11 x 8 pixels.
            for (const cv::Mat& page : {pageOf(dir.write("cmyk.jpg", jpeg)), decoded->pixels}) {
                ASSERT_FALSE(page.empty());
                const auto white = page.at<cv::Vec3b>(page.rows / 2, 1);
                const auto red = page.at<cv::Vec3b>(page.rows / 2, page.cols - 2);
                EXPECT_GE(*std::min_element(white.val, white.val + 3), 240) << adobe << stored;
                EXPECT_GE(red[0], 180) << adobe << stored;
                EXPECT_LE(std::max(red[1], red[2]), 80) << adobe << stored;
            }
        }
    }
}

TEST_F(PdfFile, TurnedAndMirroredPicturesStandUpright)
{
    for (int orientation = 1; orientation <= 8; ++orientation) {
        const Bytes jpeg = withOrientation(odd::jpeg(fields(48, 32), {}), orientation);
        const std::optional<Image> upright = mirvak::decodeImage(jpeg);
        ASSERT_TRUE(upright);
        const cv::Mat page = pageOf(dir.write("turned.jpg", jpeg));
        EXPECT_EQ(page.size(), upright->pixels.size()) << orientation;
        EXPECT_LE(fieldsDifference(page, upright->pixels), 12) << orientation;
    }
}

TEST_F(PdfFile, APixelMayBeHigherThanWide)
{
    odd::JpegKind kind;
    kind.dpiDown = 144; // as of a fax: half as high as wide
    const Bytes jpeg = odd::jpeg(fields(48, 32), kind);
    for (const auto& [orientation, size] :
         {std::pair(1, "48 x 16"), {3, "48 x 16"}, {6, "16 x 48"}, {8, "16 x 48"}}) {
        pageOf(dir.write("fax.jpg", withOrientation(jpeg, orientation)));
        EXPECT_THAT(tools::pageSizes(pdf), testing::ElementsAre(size)) << orientation;
    }
    // Inks, which an archive gets as light: 72 dots an inch across and 144 down, by Exif alone.
    odd::JpegKind inks{JCS_CMYK, JCS_CMYK};
    inks.jfif = false;
    const Bytes plain = odd::jpeg(cv::Mat(32, 48, CV_8UC4, cv::Scalar::all(200)), inks);
    Bytes exif = hexBytes("ffe1 004a 457869660000 4d4d002a00000008 0003 0112 0003 00000001 00000000"
                          "011a 0005 00000001 00000032 011b 0005 00000001 0000003a 00000000"
                          "00000048 00000001 00000090 00000001");
    MirvakPdfOptions archival;
    archival.isArchival = true;
    for (const auto& [orientation, size] : {std::pair(1, "48 x 16"), {5, "16 x 48"}, {6, "16 x 48"}}) {
        exif[29] = static_cast<std::uint8_t>(orientation);
        std::filesystem::remove(pdf);
        ASSERT_EQ(add(dir.write("inks.jpg", withSegment(plain, exif))), MIRVAK_OK);
        ASSERT_EQ(camera.MirvakPDF_SaveAs(pdf.c_str(), archival, nullptr, nullptr), MIRVAK_OK);
        EXPECT_THAT(tools::pageSizes(pdf), testing::ElementsAre(size)) << orientation;
    }
}

TEST_F(PdfFile, EveryKindOfPngAndABmpKeepTheirPixels)
{
    const auto expectPage = [&](const char* name, const Bytes& png, const cv::Mat& wanted) {
        EXPECT_EQ(difference(pageOf(dir.write("picture.jpg", png)), wanted), 0) << name;
    };
    cv::Mat blackWhite = greyRamp(), nibbles = greyRamp(), fieldsOnWhite = fields(), palette = greyRamp();
    cv::Mat halves = cv::Mat(24, 32, CV_8UC3, cv::Scalar::all(0));
    halves.colRange(0, 9).setTo(cv::Scalar::all(255));
    nibbles.forEach<cv::Vec3b>(
        [](cv::Vec3b& p, const int*) { p = cv::Vec3b::all(static_cast<uchar>(p[0] / 16 * 17)); });
    palette.forEach<cv::Vec3b>([](cv::Vec3b& p, const int*) { p[2] = static_cast<uchar>(255 - p[0]); });
    fieldsOnWhite.forEach<cv::Vec3b>([](cv::Vec3b& p, const int*) {
        if (p[0] == 0)
            p = cv::Vec3b::all(255);
    });
    expectPage("16 bits", odd::png(greyRamp(), {0, 16}), greyRamp());
    expectPage("RGB, 16 bits", odd::png(fields(), {2, 16}), fields());
    const cv::Mat ochre(24, 32, CV_8UC3, cv::Scalar(190, 130, 50));
    expectPage("RGB with opacity, 16 bits", odd::png(ochre, {6, 16}), ochre);
    EXPECT_EQ(add(dir.write("a.png", odd::png(fields(), {2, 16, true}))), MIRVAK_BAD_ARGUMENT)
        << "not readable whole";
    cv::Mat noise(24, 32, CV_8UC3);
    cv::randu(noise, 0, 256);
    expectPage("many chunks", odd::png(noise, {2, 8}), noise);
    for (const bool interlaced : {false, true}) {
        expectPage("1 bit", odd::png(halves, {0, 1, interlaced}), halves);
        expectPage("4 bits", odd::png(nibbles, {0, 4, interlaced}), nibbles);
        expectPage("grey", odd::png(greyRamp(), {0, 8, interlaced}), greyRamp());
        expectPage("RGB", odd::png(fields(), {2, 8, interlaced}), fields());
        expectPage("palette", odd::png(palette, {3, 8, interlaced}), palette);
        expectPage("RGB with opacity", odd::png(fields(), {6, 8, interlaced}), fieldsOnWhite);
    }
    Image image;
    image.dpi = 72;
    for (const cv::Mat& pixels : {fields(), greyRamp()}) {
        image.pixels = pixels;
        expectPage("BMP", mirvak::encodeImage("bmp", image, 0), pixels);
    }
}

TEST_F(PdfFile, VeryLongPicturesFit)
{
    const cv::Mat banner(40, 30000, CV_8UC3, cv::Scalar(10, 200, 30));
    ASSERT_EQ(add(dir.write("banner.jpg", odd::jpeg(banner, {}))), MIRVAK_OK);
    ASSERT_EQ(add(dir.write("short.jpg", odd::jpeg(banner.colRange(0, 40).clone(), {}))), MIRVAK_OK);
    ASSERT_EQ(save(pdf), MIRVAK_OK);
    EXPECT_EQ(tools::complaints(pdf), "");
    EXPECT_THAT(tools::run("qpdf --show-object=4 '" + pdf + "'"), testing::HasSubstr("/UserUnit 3"));
    EXPECT_THAT(tools::run("pdfinfo '" + pdf + "'"), testing::HasSubstr("PDF version:     1.6"));
}

TEST_F(PdfFile, WhatIsNoPictureIsRefusedAndTheOtherPagesStay)
{
    const Bytes jpeg = odd::jpeg(fields(), {});
    const Bytes png = odd::png(fields(), {2, 8});
    Bytes broken = png;
    broken[broken.size() / 2] ^= 0xff;
    Bytes forged = jpeg; // 65535 x 65535 pixels
    const Bytes frame = hexBytes("ffc0");
    std::fill_n(std::search(forged.begin(), forged.end(), frame.begin(), frame.end()) + 5, 4, 0xff);
    ASSERT_EQ(mkfifo(dir.file("pipe").c_str(), 0600), 0);
    Bytes unpainted = odd::png(fields(), {3, 8}); // without the colours that its pixels name
    const Bytes palette{'P', 'L', 'T', 'E'};
    const auto chunk = std::search(unpainted.begin(), unpainted.end(), palette.begin(), palette.end()) - 4;
    unpainted.erase(chunk, chunk + 12 + chunk[2] * 256 + chunk[3]);
    const std::string huge = dir.write("huge.jpg", jpeg); // nearly all of it a hole
    std::filesystem::resize_file(huge, 4 * std::uintmax_t(mirvak::maxPixels) + 1);
    const std::pair<std::string, int> cases[] = {
        {dir.file("missing.jpg"), MIRVAK_IO_ERROR},
        {dir.path(), MIRVAK_IO_ERROR},
        {dir.file("pipe"), MIRVAK_IO_ERROR},
        {dir.write("empty.jpg", ""), MIRVAK_BAD_ARGUMENT},
        {dir.write("text.jpg", "no picture at all"), MIRVAK_BAD_ARGUMENT},
        {dir.write("cut.jpg", Bytes(jpeg.begin(), jpeg.end() - 40)), MIRVAK_BAD_ARGUMENT},
        {dir.write("forged.jpg", forged), MIRVAK_BAD_ARGUMENT},
        {dir.write("cut.png", Bytes(png.begin(), png.end() - 20)), MIRVAK_BAD_ARGUMENT},
        {dir.write("broken.png", broken), MIRVAK_BAD_ARGUMENT},
        {dir.write("unpainted.png", unpainted), MIRVAK_BAD_ARGUMENT},
        {huge, MIRVAK_IO_ERROR},
        {dir.write("cut.bmp", "BM" + std::string(60, '\1')), MIRVAK_BAD_ARGUMENT}};
    ASSERT_EQ(add(jpegFile("first.jpg")), MIRVAK_OK);
    for (const auto& [path, result] : cases)
        expectOneLine(path.c_str(),
                      [&, path = path, result = result] { EXPECT_EQ(add(path), result) << path; });
    EXPECT_EQ(camera.MirvakPDF_AddPage(nullptr), MIRVAK_BAD_ARGUMENT);
    EXPECT_EQ(camera.MirvakPDF_AddPage(""), MIRVAK_BAD_ARGUMENT);
    ASSERT_EQ(add(jpegFile("second.jpg")), MIRVAK_OK);
    EXPECT_EQ(save(pdf), MIRVAK_OK);
    EXPECT_EQ(tools::pageSizes(pdf).size(), 2U);
}

TEST_F(PdfFile, ACutAnywhereIsNoPage)
{
    const Bytes jpeg = withOrientation(odd::jpeg(fields(), {JCS_RGB, JCS_YCbCr, true}), 6);
    const Bytes png = odd::png(fields(), {3, 8});
    testing::internal::CaptureStderr();
    for (const Bytes& whole : {jpeg, png})
        for (size_t size = 0; size < whole.size(); size += size < 700 ? 3 : 41)
            EXPECT_NE(add(dir.write("cut", Bytes(whole.begin(), whole.begin() + static_cast<long>(size)))),
                      MIRVAK_OK)
                << size;
    testing::internal::GetCapturedStderr();
}

TEST_F(PdfFile, WhatFailsLeavesNoFileAndNoPages)
{
    const std::string first = jpegFile("first.jpg");
    const std::string second = jpegFile("second.jpg");
    const auto expectFailure = [&](const char* what, const std::string& target, int result) {
        expectOneLine(what, [&] { EXPECT_EQ(save(target), result) << what; });
        expectOneLine(
            what, [&] { EXPECT_EQ(save(pdf), MIRVAK_BAD_ARGUMENT) << what << ": the list is not empty"; });
        EXPECT_THAT(dir.names(), testing::Each(testing::AnyOf("first.jpg", "second.jpg"))) << what;
    };
    const auto fill = [&] {
        EXPECT_EQ(add(first), MIRVAK_OK);
        EXPECT_EQ(add(second), MIRVAK_OK);
    };
    expectFailure("no pages", pdf, MIRVAK_BAD_ARGUMENT);
    fill();
    expectFailure("no such folder", dir.file("none/a.pdf"), MIRVAK_IO_ERROR);
    fill();
    {
        const DiskFullAt limit(1000);
        expectFailure("a full disk", pdf, MIRVAK_IO_ERROR);
    }
    fill();
    jpegFile("second.jpg", {JCS_RGB, JCS_YCbCr, true});
    expectFailure("a page that has changed", pdf, MIRVAK_IO_ERROR);
    fill();
    std::filesystem::remove(second);
    expectFailure("a page that has gone", pdf, MIRVAK_IO_ERROR);
    EXPECT_EQ(add(first), MIRVAK_OK);
    EXPECT_EQ(camera.MirvakPDF_Save(nullptr), MIRVAK_BAD_ARGUMENT);
    expectFailure("no path", pdf, MIRVAK_BAD_ARGUMENT);
}

TEST_F(PdfFile, AFileOfThatNameIsNeverReplaced)
{
    dir.write("合同 扫描.pdf", "old");
    for (const std::string& taken : {pdf, dir.path()}) {
        ASSERT_EQ(add(jpegFile("a.jpg")), MIRVAK_OK);
        EXPECT_EQ(save(taken), MIRVAK_EXISTS) << taken;
    }
    EXPECT_EQ(TempDir::contentOf(pdf), "old");
    pageOf(jpegFile("b.jpg")); // the page before is not in it
}

TEST_F(PdfFile, StoppedAtAnyPageItLeavesNothingAndCanBeMadeAgain)
{
    const std::string picture = jpegFile("a.jpg");
    std::vector<int> told;
    for (int stopAt = 0; stopAt <= 4; ++stopAt) {
        for (int i = 0; i < 3; ++i)
            ASSERT_EQ(add(picture), MIRVAK_OK);
        told.clear();
        auto watch = [&](int done, int count) {
            EXPECT_EQ(count, 3);
            told.push_back(done);
            return done == stopAt ? 1 : 0;
        };
        const auto call = [](int done, int count, void* context) {
            return (*static_cast<decltype(watch)*>(context))(done, count);
        };
        const int result = camera.MirvakPDF_SaveWatched(pdf.c_str(), call, &watch);
        EXPECT_EQ(result, stopAt > 3 ? MIRVAK_OK : MIRVAK_STOPPED);
        const auto files = std::distance(std::filesystem::directory_iterator(dir.path()), {});
        EXPECT_EQ(files, stopAt > 3 ? 2 : 1) << stopAt;
        EXPECT_EQ(told.back(), std::min(stopAt, 3));
    }
    EXPECT_EQ(told, (std::vector<int>{0, 1, 2, 3}));
    EXPECT_EQ(tools::pageSizes(pdf).size(), 3U) << "none of the stopped ones";
    EXPECT_EQ(tools::complaints(pdf), "");
}
