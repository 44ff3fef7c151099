#include "TurnFilm.h"

#include "Output.h"
#include "pages/Pages.h"

#include <opencv2/imgproc.hpp>

#include <cmath>

namespace deskpictures {
namespace {

const cv::Size frameSize(1600, 1200);
const cv::Size2d pageMm(210, 297);
constexpr int filmQuality = 86;        // cameras compress a moving picture more
constexpr double shutterFrames = 0.25; // for which part of a frame's time the shutter is open

Scene filmScene()
{
    Scene scene;
    scene.desk = Material::Oak;
    scene.pose.tiltDegrees = 5;
    scene.pose.fill = 0.93;
    scene.pose.shift = {-0.06, 0};
    scene.light.fromDegrees = 235;
    scene.light.falloff = 0.12;
    scene.light.exposure = 0.9;
    scene.light.cast = {1.01, 1, 0.97};
    scene.seed = 301;
    return scene;
}

// Each pass lays the picture over itself, half as far away as before: sixteen copies in four passes.
cv::Mat smear(cv::Mat picture, cv::Point2d way)
{
    for (cv::Point2d shift = way / 2; cv::norm(shift) >= 0.75; shift /= 2) {
        const cv::Matx23d move(1, 0, std::round(shift.x), 0, 1, std::round(shift.y));
        cv::Mat moved;
        cv::warpAffine(picture, moved, move, picture.size(), cv::INTER_NEAREST, cv::BORDER_REPLICATE);
        cv::addWeighted(picture, 0.5, moved, 0.5, 0, picture);
    }
    return picture;
}

// The lamp flickers with the mains, and the camera's exposure follows the hand a little.
double flicker(int frame, bool hand)
{
    return 1 + 0.004 * std::sin(frame * 2.1) + 0.003 * std::sin(frame * 0.73 + 1) - (hand ? 0.015 : 0);
}

} // namespace

TurnFilm::TurnFilm() : m_scene(filmScene()), m_view(m_scene.pose, pageMm, frameSize), m_hand(drawHand())
{
    for (const FlatPage& page : {drawForm(), drawEnglishText(), drawBlueSeal()})
        m_pages.emplace_back(page.image, pageMm, m_view.pxPerMm());
}

cv::Mat TurnFilm::seePage(int page, const Place& place) const
{
    return m_pages.at(page).warp(m_view.deskToPicture() * motion(place), frameSize);
}

cv::Mat TurnFilm::seeHand(const Place& place) const
{
    // The back of the hand is nearer to the camera than the paper.
    const double nearer = 1.06;
    const double mm = nearer / m_hand.pxPerMm;
    const cv::Matx33d toTips(mm, 0, -mm * m_hand.fingertipPx.x, 0, mm, -mm * m_hand.fingertipPx.y, 0, 0, 1);
    cv::Mat result;
    cv::warpPerspective(m_hand.colours,
                        result,
                        m_view.deskToPicture() * motion(place) * toTips,
                        frameSize,
                        cv::INTER_LINEAR,
                        cv::BORDER_CONSTANT,
                        cv::Scalar::all(0));
    return result;
}

Stage TurnFilm::lyingPages(const std::vector<int>& pages) const
{
    Stage stage = emptyDesk(m_scene, m_view);
    for (const int page : pages)
        stage.lay(seePage(page, TurnScript::restOf(page)),
                  sheetShadows(m_scene.thicknessMm, m_view.pxPerMm()));
    return stage;
}

cv::Point2d TurnFilm::way(const Place& from, const Place& to) const
{
    return m_view.project({to.atMm.x, to.atMm.y, 0}) - m_view.project({from.atMm.x, from.atMm.y, 0});
}

void TurnFilm::addHandAndPage(int frame, Stage& stage) const
{
    const TurnScript::Moment now = m_script.at(frame);
    const TurnScript::Moment then = m_script.at(frame + shutterFrames);
    const double mm = m_view.pxPerMm();
    if (now.moving)
        stage.lay(smear(seePage(*now.moving, now.movingPlace),
                        then.moving ? way(now.movingPlace, then.movingPlace) : cv::Point2d()),
                  sheetShadows(2.5, mm));
    if (now.hand)
        stage.lay(smear(seeHand(*now.hand), then.hand ? way(*now.hand, *then.hand) : cv::Point2d()),
                  {{5 * mm, 3 * mm, 0.3}, {26 * mm, 12 * mm, 0.3}});
}

cv::Mat TurnFilm::energy(int frame, const Stage& ground) const
{
    const bool hand = m_script.at(frame).hand.has_value();
    const cv::Vec3d gains = m_scene.light.cast * m_scene.light.exposure * flicker(frame, hand);
    if (!hand)
        return Sensor::expose(ground.colours(), ground.light(), gains, lensBlurPx(frameSize));
    Stage stage = ground.copy();
    addHandAndPage(frame, stage);
    return Sensor::expose(stage.colours(), stage.light(), gains, lensBlurPx(frameSize));
}

void TurnFilm::shoot(const QString& directory)
{
    Sensor sensor(m_scene.seed);
    std::vector<int> lying;
    std::unique_ptr<Stage> ground;
    for (int frame = 0; frame < m_script.frameCount(); ++frame) {
        const TurnScript::Moment moment = m_script.at(frame);
        if (!ground || moment.lying != lying) {
            lying = moment.lying;
            ground = std::make_unique<Stage>(lyingPages(lying));
        }
        writeJpeg(QStringLiteral("%1/%2.jpg").arg(directory).arg(frame, 4, 10, QLatin1Char('0')),
                  sensor.develop(energy(frame, *ground)),
                  filmQuality);
    }
}

QByteArray TurnFilm::truth() const
{
    QByteArray lines = "page,first_frame,last_frame,tl_x,tl_y,tr_x,tr_y,br_x,br_y,bl_x,bl_y\n";
    for (const TurnScript::Still& still : m_script.stills()) {
        lines += QByteArray::number(still.page + 1) + ',' + QByteArray::number(still.firstFrame) + ',' +
                 QByteArray::number(still.lastFrame);
        const cv::Matx33d toPicture = m_view.deskToPicture() * motion(TurnScript::restOf(still.page));
        for (const auto& [x, y] : {std::pair(-1, -1), std::pair(1, -1), std::pair(1, 1), std::pair(-1, 1)}) {
            const cv::Vec3d p = toPicture * cv::Vec3d(x * pageMm.width / 2, y * pageMm.height / 2, 1);
            lines +=
                ',' + QByteArray::number(p[0] / p[2], 'f', 2) + ',' + QByteArray::number(p[1] / p[2], 'f', 2);
        }
        lines += '\n';
    }
    return lines;
}

} // namespace deskpictures
