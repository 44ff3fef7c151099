// Pages as books really have them: curled ones alone, tinted areas, pictures across, hands from all sides.
#include "BookFlat.h"

#include "MadeBooks.h"
#include "MadePages.h"
#include "PageRemap.h"

#include <gtest/gtest.h>
#include <opencv2/imgproc.hpp>

#include <cmath>

namespace {

using made::pageHeight;
using made::pageWidth;

mirvak::Image imageOf(const cv::Mat& photo)
{
    mirvak::Image image;
    image.pixels = photo;
    image.dpi = 300;
    image.taken = std::chrono::steady_clock::time_point(std::chrono::seconds(5));
    return image;
}

std::optional<mirvak::BookPages> flat(const cv::Mat& photo, bool parted, bool takeFingers = false)
{
    return mirvak::flattenBook(imageOf(photo), takeFingers, parted);
}

/// Straight lines, even distances, and the shape of the sheet: nothing of it is missing.
void expectFlat(const cv::Mat& page, double aspect = 1.0 * pageWidth / pageHeight)
{
    const made::Shape shape = made::shapeOf(page);
    EXPECT_GT(shape.looks, 120);
    EXPECT_LT(shape.bend, 8); // the photographs bend them by 20 pixels and more
    EXPECT_LT(shape.uneven, 0.08);
    EXPECT_NEAR(static_cast<double>(page.cols) / page.rows, aspect, 0.04);
}

/// Soft colours, as photographs have them, and none that could be paper in a shadow.
cv::Mat photo(const cv::Size& size, unsigned seed)
{
    cv::RNG random(seed);
    cv::Mat coarse(5, 5, CV_8UC3), fine;
    random.fill(coarse, cv::RNG::UNIFORM, 60, 200);
    for (int i = 0; i < 25; ++i)
        coarse.at<cv::Vec3b>(i / 5, i % 5)[i % 3] = 25;
    cv::resize(coarse, fine, size, 0, 0, cv::INTER_CUBIC);
    return fine;
}

/// As large as the page, and the same colours in that part of it.
void expectLike(const cv::Mat& flat, const cv::Mat& page, const cv::Rect& part)
{
    EXPECT_NEAR(static_cast<double>(flat.cols) / flat.rows, 1.0 * page.cols / page.rows, 0.04);
    cv::Mat same, difference;
    cv::resize(flat, same, page.size(), 0, 0, cv::INTER_AREA);
    cv::absdiff(same(part), page(part), difference);
    const cv::Scalar off = cv::mean(difference);
    EXPECT_LT((off[0] + off[1] + off[2]) / 3, 35); // the gutter is darker
}

cv::Scalar colourOf(const cv::Mat& page, double x, double y)
{
    const int side = page.cols / 40;
    return cv::mean(page(cv::Rect(cvRound(x * page.cols), cvRound(y * page.rows), side, side)));
}

} // namespace

TEST(BookScenes, ACurledSheetAloneIsFlattened)
{
    const cv::Mat text = made::ruledText(11);
    const auto rising = [](double x) { return 110 * std::pow(x / pageWidth, 2); };
    const auto falling = [](double x) { return 130 * std::pow(1 - std::min(1.0, x / pageWidth), 2); };
    for (const auto& [height, degrees] :
         {std::pair<double (*)(double), double>(rising, 3.0), {falling, -4.0}}) {
        SCOPED_TRACE(degrees);
        for (const double from : {-520.0, -120.0}) {
            const cv::Mat photo = made::photograph({{text, height, true, from}}, 0, degrees);
            const auto pages = flat(photo, true);
            ASSERT_TRUE(pages);
            EXPECT_FALSE(pages->right) << "one page";
            expectFlat(pages->left.pixels);
        }
    }
}

TEST(BookScenes, TintedAreasAndPicturesAcrossAPageBelongToIt)
{
    cv::Mat left = made::textPage({pageWidth, pageHeight}, 30, 12);
    cv::Mat right = made::textPage({pageWidth, pageHeight}, 30, 13);
    left.rowRange(560, 790) = left.rowRange(560, 790).mul(cv::Scalar(0.75, 0.87, 1), 1);
    cv::Mat picture = right(cv::Rect(0, 300, pageWidth, 260));
    for (int y = 0; y < picture.rows; ++y) // a sky over the sea, to both ends of the page
        picture.row(y).setTo(cv::Scalar(60 + y / 3, 90 + y / 4, 170 - y / 4));
    const auto skyline = [](const cv::Mat& page, int x) {
        int y = 0;
        while (y < page.rows && page.at<cv::Vec3b>(y, x)[2] < page.at<cv::Vec3b>(y, x)[0] + 40)
            ++y;
        return y;
    };
    for (const double degrees : {0.0, 5.0}) {
        SCOPED_TRACE(degrees);
        const auto pages = flat(made::spread(made::ruled(left.clone()), right, 90, degrees), true);
        ASSERT_TRUE(pages && pages->right);
        expectFlat(pages->left.pixels);
        const cv::Mat& page = pages->right->pixels;
        EXPECT_NEAR(static_cast<double>(page.cols) / page.rows, 1.0 * pageWidth / pageHeight, 0.04);
        std::vector<int> line;
        for (const int percent : {4, 20, 40, 60, 80, 96})
            line.push_back(skyline(page, page.cols * percent / 100));
        const auto [highest, lowest] = std::minmax_element(line.begin(), line.end());
        EXPECT_LT(*lowest - *highest, 6) << "level";
        EXPECT_NEAR(*highest, page.rows * 300 / pageHeight, 12);
        const cv::Scalar tint = colourOf(pages->left.pixels, 0.45, 0.9);
        EXPECT_LT(tint[0], tint[2] - 25) << "it keeps its colour";
        const cv::Scalar sky = colourOf(page, 0.6, 0.4);
        EXPECT_LT(sky[0], sky[2] - 50);
        const auto one = flat(made::spread(left, right, 90, degrees), false);
        ASSERT_TRUE(one);
        EXPECT_FALSE(one->right);
        EXPECT_NEAR(one->left.pixels.cols, pages->left.pixels.cols + pages->right->pixels.cols, 80);
    }
}

TEST(BookScenes, WhatIsPrintedToThePagesEndsIsNotCutOff)
{
    const cv::Rect below(0, 600, pageWidth, pageHeight - 600), above(0, 0, pageWidth, 200),
        right(400, 0, pageWidth - 400, pageHeight), left(0, 0, 200, pageHeight);
    const struct
    {
        made::Desk desk;
        cv::Rect onLeft, onRight;
    } spreads[] = {{made::Desk::light, below, below},
                   {made::Desk::dark, left, right},
                   {made::Desk::dark, above, above},
                   {made::Desk::wood, above, below}};
    double degrees = -3;
    for (const auto& [desk, onLeft, onRight] : spreads) {
        SCOPED_TRACE(degrees);
        cv::Mat pages[] = {made::textPage({pageWidth, pageHeight}, 30, 31),
                           made::textPage({pageWidth, pageHeight}, 30, 32)};
        photo(onLeft.size(), 33).copyTo(pages[0](onLeft));
        photo(onRight.size(), 34).copyTo(pages[1](onRight));
        const auto book = flat(made::spread(pages[0], pages[1], 90, degrees += 2, {}, desk), true);
        ASSERT_TRUE(book && book->right);
        expectLike(book->left.pixels, pages[0], onLeft);
        expectLike(book->right->pixels, pages[1], onRight);
    }
}

TEST(BookScenes, APageThatIsAllPictureIsAPageInItsOwnColours)
{
    for (const bool isRight : {false, true}) {
        SCOPED_TRACE(isRight);
        cv::Mat pages[] = {made::textPage({pageWidth, pageHeight}, 30, 35),
                           made::textPage({pageWidth, pageHeight}, 30, 36)};
        pages[isRight] = photo({pageWidth, pageHeight}, 37);
        const auto book = flat(made::spread(pages[0], pages[1], 90, 3), true);
        ASSERT_TRUE(book && book->right);
        expectLike(book->left.pixels, pages[0], {40, 40, pageWidth - 80, pageHeight - 80});
        expectLike(book->right->pixels, pages[1], {40, 40, pageWidth - 80, pageHeight - 80});
    }
    const auto alone = made::textPage({pageWidth, pageHeight}, 30, 38);
    const auto rising = [](double x) { return 90 * std::exp(-x / 60); };
    const auto book = flat(made::photograph({{alone, rising}}, 0.45), true);
    ASSERT_TRUE(book);
    EXPECT_FALSE(book->right) << "a desk beside a page is none";
}

TEST(BookScenes, PrintThatRunsDownIsNotTakenForLinesAcross)
{
    cv::Mat pages[2];
    cv::RNG random(17);
    for (cv::Mat& page : pages) {
        page = made::blankPage({pageWidth, pageHeight});
        for (int x = 70; x < pageWidth - 80; x += 44)
            for (int y = 80 + random.uniform(0, 20); y < pageHeight - 90; y += 23) // no rows across
                cv::putText(page,
                            std::string(1, static_cast<char>('A' + random.uniform(0, 26))),
                            {x, y},
                            cv::FONT_HERSHEY_COMPLEX,
                            0.6,
                            {30, 30, 30},
                            1);
    }
    const auto book = flat(made::spread(pages[0], pages[1], 90, 4), true);
    ASSERT_TRUE(book && book->right);
    for (const cv::Mat& page : {book->left.pixels, book->right->pixels})
        EXPECT_NEAR(static_cast<double>(page.cols) / page.rows, 1.0 * pageWidth / pageHeight, 0.04);
}

TEST(BookScenes, WavesThatNoBendExplainsAreTakenOutOfEitherPage)
{
    const cv::Mat photo = made::spread(made::ruledText(18), made::ruledText(19), 90);
    cv::Mat map(photo.size(), CV_32FC2);
    for (int y = 0; y < map.rows; ++y)
        for (int x = 0; x < map.cols; ++x) {
            // Of every line alike: a bend would spread or press the lines.
            map.at<cv::Point2f>(y, x) = cv::Point2f(
                static_cast<float>(x), static_cast<float>(y + 2.5 * std::sin(4 + std::abs(x - 800) / 200.0)));
        }
    cv::Mat wavy;
    cv::remap(photo, wavy, map, {}, cv::INTER_LINEAR, cv::BORDER_REPLICATE);
    const auto book = flat(wavy, true);
    ASSERT_TRUE(book && book->right);
    for (const cv::Mat& page : {book->left.pixels, book->right->pixels}) {
        const made::Shape shape = made::shapeOf(page);
        EXPECT_GT(shape.looks, 120);
        EXPECT_LT(shape.bend, 8); // of more than 20 in the photograph
    }
}

TEST(BookScenes, LeavesBelowAPageAndADeskOfItsColourAreNotPartOfIt)
{
    for (const made::Desk desk : {made::Desk::dark, made::Desk::light, made::Desk::wood}) {
        SCOPED_TRACE(static_cast<int>(desk));
        cv::Mat pages[2];
        for (unsigned side = 0; side < 2; ++side) {
            cv::Mat leaves(pageHeight, 16, CV_8UC3, cv::Scalar(212, 210, 203));
            for (int x = 1; x < leaves.cols; x += 5) // their ends, one below the other
                leaves.colRange(x, x + 2).setTo(cv::Scalar(150, 148, 142));
            const cv::Mat text = made::textPage({pageWidth, pageHeight}, 30, 20 + side);
            cv::hconcat(side ? text : leaves, side ? leaves : text, pages[side]);
        }
        const auto book = flat(made::spread(pages[0], pages[1], 90, 3, {}, desk), true);
        ASSERT_TRUE(book && book->right);
        for (const cv::Mat& page : {book->left.pixels, book->right->pixels}) {
            EXPECT_NEAR(static_cast<double>(page.cols) / page.rows, 1.0 * pageWidth / pageHeight, 0.04);
            const bool isLeft = page.data == book->left.pixels.data;
            const int strip = page.cols / 60;
            const cv::Mat end =
                isLeft ? page.colRange(0, strip) : page.colRange(page.cols - strip, page.cols);
            EXPECT_GT(cv::mean(end.rowRange(page.rows / 8, page.rows * 7 / 8))[1], 225);
        }
    }
}

TEST(BookScenes, TheGrainOfADeskIsNoSideThatRunsOn)
{
    const cv::Mat page = made::textPage({pageWidth, pageHeight}, 30, 39);
    cv::Mat photo = made::spread(page, page, 90);
    for (const int y : {146, 1034}) // in line with the upper and the lower end of the pages
        for (const cv::Scalar& grain : {cv::Scalar(20, 20, 20), cv::Scalar(90, 90, 90)}) {
            const int at = y + (grain[0] > 50 ? 3 : 0);
            cv::line(photo, {0, at}, {200, at}, grain, 3);
            cv::line(photo, {1400, at}, {1600, at}, grain, 3);
        }
    const auto book = flat(photo, true);
    ASSERT_TRUE(book && book->right);
    for (const cv::Mat& found : {book->left.pixels, book->right->pixels})
        EXPECT_NEAR(static_cast<double>(found.cols) / found.rows, 1.0 * pageWidth / pageHeight, 0.04);
}

TEST(BookScenes, AStrokeAndAShadowAtTheSideAreNoSpine)
{
    cv::Mat stroke = made::textPage({900, 700}, 30, 22), shaded = stroke.clone();
    cv::line(stroke, {450, 200}, {450, 520}, {40, 40, 40}, 9); // of a drawing
    cv::Mat beside = made::blankPage({900, 700});              // print on one side of it only
    made::textPage({400, 700}, 30, 25).copyTo(beside.colRange(0, 400));
    cv::line(beside, {450, 200}, {450, 520}, {40, 40, 40}, 9);
    for (int x = 0; x < shaded.cols; ++x)
        shaded.col(x) *= 1 - 0.3 * std::exp(-std::abs(x - 60) / 12.0);
    for (const cv::Mat& sheet : {stroke, beside, shaded}) {
        cv::Mat photo = made::desk(made::bookFrame, made::Desk::dark);
        made::lay(photo, sheet, made::placed({800, 590}, {900, 700}, 1));
        made::shine(photo, {});
        const auto page = flat(photo, true);
        ASSERT_TRUE(page);
        EXPECT_FALSE(page->right);
        EXPECT_NEAR(static_cast<double>(page->left.pixels.cols) / page->left.pixels.rows, 900.0 / 700, 0.1);
    }
}

TEST(BookScenes, HandsAtEveryOpenEndGoAndWhatIsPrintedAtTheSpineStays)
{
    cv::Mat left = made::ruledText(14), right = made::ruledText(15);
    for (int i = 0; i < 90; ++i) { // a face in the gutter, uneven as skin is
        const double light = 0.8 + 0.2 * i / 90;
        cv::circle(left, {pageWidth, 420}, 90 - i, cv::Scalar(215, 160, 125) * light, 2);
        cv::circle(right, {0, 420}, 90 - i, cv::Scalar(215, 160, 125) * light, 2);
    }
    cv::Mat photo = made::spread(left, right, 80);
    const int middle = made::bookFrame.width / 2;
    const std::pair<cv::Point, cv::Point> hands[] = {{{middle - 555, 620}, {middle - 860, 640}},
                                                     {{middle + 555, 560}, {middle + 860, 540}},
                                                     {{middle + 330, 990}, {middle + 340, 1300}},
                                                     {{middle - 300, 190}, {middle - 310, -120}}};
    for (const auto& [tip, hand] : hands)
        made::finger(photo, tip, hand);
    const auto skinAt = [](const cv::Mat& page, const cv::Rect2d& share) {
        int count = 0;
        const cv::Rect part(cvRound(share.x * page.cols),
                            cvRound(share.y * page.rows),
                            cvRound(share.width * page.cols),
                            cvRound(share.height * page.rows));
        for (int y = part.y; y < part.br().y; ++y)
            for (int x = part.x; x < part.br().x; ++x) {
                const cv::Vec3b& c = page.at<cv::Vec3b>(y, x);
                count += c[0] > c[2] + 30 && c[1] > 90 && c[1] < c[0] - 20 && c[1] > c[2] + 8;
            }
        return count;
    };
    const cv::Rect2d leftEnd(0, 0.5, 0.11, 0.2), rightEnd(0.89, 0.42, 0.11, 0.2), below(0.4, 0.9, 0.3, 0.1),
        above(0.35, 0, 0.3, 0.07), leftGutter(0.86, 0.4, 0.14, 0.2), rightGutter(0, 0.4, 0.14, 0.2);
    const auto with = flat(photo, true), without = flat(photo, true, true);
    ASSERT_TRUE(with && with->right && without && without->right);
    const cv::Mat kept[] = {with->left.pixels, with->right->pixels};
    const cv::Mat gone[] = {without->left.pixels, without->right->pixels};
    for (const auto& [side, place] : {std::pair(0, leftEnd), {0, above}, {1, rightEnd}, {1, below}}) {
        EXPECT_GT(skinAt(kept[side], place), 700) << place;
        EXPECT_LT(skinAt(gone[side], place), skinAt(kept[side], place) / 6) << place;
    }
    for (const auto& [side, place] : {std::pair(0, leftGutter), {1, rightGutter}}) {
        EXPECT_GT(skinAt(kept[side], place), 700) << place;
        EXPECT_GT(skinAt(gone[side], place), skinAt(kept[side], place) * 95 / 100) << "no end of the paper";
    }
}

TEST(BookScenes, TheResultIsAPictureOfItsOwnAsTheCameraTookIt)
{
    cv::Mat text = made::ruledText(16);
    text = text.mul(cv::Scalar(1, 0.93, 0.78), 1);                 // yellowed paper
    cv::Mat sheet = made::desk(made::bookFrame, made::Desk::dark); // flat
    made::lay(sheet, text, made::placed({800, 590}, {pageWidth, pageHeight}, 0));
    cv::Mat whole = made::textPage(made::bookFrame, 40, 24); // flat, straight, and larger than the frame
    whole = whole.mul(cv::Scalar(1, 0.93, 0.78), 1);
    const cv::Mat photos[] = {made::spread(text, text, 90), sheet, whole};
    for (const cv::Mat& photo : photos) {
        SCOPED_TRACE(&photo - photos);
        const mirvak::Image image = imageOf(photo);
        const cv::Mat before = photo.clone();
        const auto pages = mirvak::flattenBook(image, true, false);
        ASSERT_TRUE(pages);
        EXPECT_EQ(cv::norm(photo, before, cv::NORM_INF), 0) << "only read";
        EXPECT_EQ(pages->left.dpi, 300);
        EXPECT_EQ(pages->left.taken, image.taken);
        const cv::Scalar paper = colourOf(pages->left.pixels, 0.04, 0.57);
        EXPECT_GT(paper[0], 230) << "bright";
        const cv::Vec3b& own = text.at<cv::Vec3b>(5, 5);
        EXPECT_NEAR(paper[1] / paper[0], 1.0 * own[1] / own[0], 0.03) << "and of its own tint";
        EXPECT_NEAR(paper[2] / paper[0], 1.0 * own[2] / own[0], 0.04);
    }
}

TEST(BookScenes, ABlankSheetIsAPageAndASmallOrDarkPictureIsNone)
{
    cv::Mat photo = made::desk(made::bookFrame, made::Desk::dark);
    made::lay(photo, made::blankPage({620, 860}), made::placed({800, 590}, {620, 860}, 4));
    made::shine(photo, {});
    const auto page = flat(photo, true);
    ASSERT_TRUE(page);
    EXPECT_FALSE(page->right);
    const cv::Mat& left = page->left.pixels;
    EXPECT_NEAR(static_cast<double>(left.cols) / left.rows, 620.0 / 860, 0.05);
    cv::Mat night;
    photo.convertTo(night, CV_8U, 0.08);
    EXPECT_FALSE(flat(night, true) && flat(night, true)->right);
    EXPECT_FALSE(flat(photo(cv::Rect(600, 300, 63, 400)).clone(), true)) << "nobody could read it";
}

TEST(BookScenes, AFitThatWentWrongMakesNoGiantPage)
{
    const mirvak::BookLook look(cv::Mat(600, 800, CV_8UC3, cv::Scalar::all(200)));
    mirvak::CylinderModel model;
    model.prepare();
    for (const cv::Rect2d& area : {cv::Rect2d(-0.2, -0.2, 0.4, 0.4), {-4, -1, 8, 2}, {0, -30, 2, 60}}) {
        const cv::Size size = mirvak::pieceOf(look, model, area).size;
        EXPECT_LE(size.area(), 2.05 * look.fullSize().area()) << area;
        EXPECT_GE(size.area(), 300 * 300) << area;
        EXPECT_NEAR(
            1.0 * size.width / size.height, area.width / area.height, 0.05 * area.width / area.height);
    }
}
