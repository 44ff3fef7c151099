// Writes small scenes with what the map of each should say, for learn_map.py.
//   map_scenes [--show] FILE [SCENES [SEED [plain|stacks]]]
// plain: desks without patterns only; stacks: sheets that lie partly upon others only; --show: pictures of
// them into the folder FILE, the sheet outlined. One record to a scene, bytes: red, green and blue of the
// picture (160 x 120), then three planes of 80 x 60: how much of a cell the sheet covers, how near its border
// is, and whether the scene is clear there.
#include "JpegCodec.h"
#include "MapScenes.h"

#include <cstdio>
#include <cstring>
#include <string>

namespace {

using sheetmap::MapScene;

const cv::Size lookSize(sheetmap::sceneWidth / 2, sheetmap::sceneHeight / 2),
    mapSize(sheetmap::sceneWidth / 4, sheetmap::sceneHeight / 4);

double distanceToSide(const cv::Point2d& p, const cv::Point2d& from, const cv::Point2d& to)
{
    const cv::Point2d way = to - from;
    const double share = std::clamp((p - from).dot(way) / std::max(1e-9, way.dot(way)), 0.0, 1.0);
    return cv::norm(p - from - share * way);
}

cv::Mat insideOf(const MapScene& scene)
{
    constexpr int finer = 4, bits = 2;
    cv::Mat mask = cv::Mat::zeros(scene.picture.size(), CV_8UC1), inside;
    if (scene.sheet) {
        std::vector<cv::Point> polygon;
        for (const cv::Point2d& corner : *scene.sheet)
            polygon.emplace_back(finer * corner);
        cv::fillConvexPoly(mask, polygon, 255, cv::LINE_AA, bits);
    }
    cv::resize(mask, inside, mapSize, 0, 0, cv::INTER_AREA);
    return inside;
}

cv::Mat borderOf(const MapScene& scene)
{
    constexpr double cell = 4;
    cv::Mat border = cv::Mat::zeros(mapSize, CV_8UC1);
    for (int y = 0; scene.sheet && y < border.rows; ++y) {
        for (int x = 0; x < border.cols; ++x) {
            const cv::Point2d middle(cell * (x + 0.5) - 0.5, cell * (y + 0.5) - 0.5);
            double least = 1e9;
            for (size_t i = 0; i < 4; ++i)
                least =
                    std::min(least, distanceToSide(middle, (*scene.sheet)[i], (*scene.sheet)[(i + 1) % 4]));
            border.at<uchar>(y, x) = cv::saturate_cast<uchar>(255 * (1.5 - least / cell));
        }
    }
    return border;
}

void write(std::FILE* file, const cv::Mat& plane)
{
    for (int y = 0; y < plane.rows; ++y)
        std::fwrite(plane.ptr(y), 1, static_cast<size_t>(plane.cols), file);
}

void write(std::FILE* file, const MapScene& scene)
{
    cv::Mat look, clear;
    cv::resize(scene.picture, look, lookSize, 0, 0, cv::INTER_AREA);
    std::array<cv::Mat, 3> planes;
    cv::split(look, planes.data());
    for (const cv::Mat& plane : planes)
        write(file, plane);
    write(file, insideOf(scene));
    write(file, borderOf(scene));
    cv::resize(255 - scene.unclear, clear, mapSize, 0, 0, cv::INTER_AREA);
    write(file, clear);
}

MapScene sceneOf(unsigned seed, const std::string& kind)
{
    return kind == "stacks" ? sheetmap::makeStackScene(seed) : sheetmap::makeMapScene(seed, kind != "plain");
}

void show(const std::string& folder, unsigned seed, const MapScene& scene)
{
    cv::Mat twice = scene.picture.clone();
    for (size_t i = 0; scene.sheet && i < 4; ++i)
        cv::line(twice, (*scene.sheet)[i], (*scene.sheet)[(i + 1) % 4], {0, 220, 0}, 1, cv::LINE_AA);
    twice.setTo(cv::Scalar(255, 0, 255), scene.unclear);
    mirvak::Image both;
    cv::vconcat(scene.picture, twice, both.pixels);
    mirvak::writeBytes(folder + "/" + std::to_string(seed) + ".jpg", mirvak::encodeJpeg(both, 90));
}

} // namespace

int main(int argc, char** argv)
{
    cv::setNumThreads(1);
    const bool isShown = argc > 2 && std::strcmp(argv[1], "--show") == 0;
    argv += isShown ? 1 : 0;
    argc -= isShown ? 1 : 0;
    if (argc < 2) {
        std::fputs("map_scenes [--show] FILE [SCENES [SEED [plain|stacks]]]\n", stderr);
        return 2;
    }
    const unsigned scenes = argc > 2 ? static_cast<unsigned>(std::atoi(argv[2])) : 100;
    const unsigned seed = argc > 3 ? static_cast<unsigned>(std::atoi(argv[3])) : 1;
    const std::string kind = argc > 4 ? argv[4] : "";
    std::FILE* file = isShown ? nullptr : std::fopen(argv[1], "wb");
    if (!isShown && !file)
        return 1;
    for (unsigned i = seed; i < seed + scenes; ++i) {
        if (isShown)
            show(argv[1], i, sceneOf(i, kind));
        else
            write(file, sceneOf(i, kind));
    }
    return file && std::fclose(file) ? 1 : 0;
}
