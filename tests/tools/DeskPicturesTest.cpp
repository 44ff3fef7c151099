// The tool that makes the virtual desk's pictures, run as the build runs it. Other tests trust what it writes
// down.
#include "TempDir.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <vector>

namespace {

struct Outcome
{
    int exitCode = -1;
    QByteArray messages;
};

/// @param arguments apart by blanks
Outcome runTool(const QString& arguments)
{
    QProcess tool;
    tool.start(QStringLiteral(DESKPICTURES), arguments.split(QLatin1Char(' ')));
    if (!tool.waitForFinished(240000))
        return {};
    return {tool.exitStatus() == QProcess::NormalExit ? tool.exitCode() : -1, tool.readAllStandardError()};
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// How far outside the line from a to b (clockwise) the paper ends, in pixels: the middle of many steepest
// steps.
double edgeOffset(const QImage& image, QPointF a, QPointF b)
{
    const QPointF along = b - a;
    const double length = std::hypot(along.x(), along.y());
    const QPointF outwards(along.y() / length, -along.x() / length);
    const auto brightness = [&](QPointF at) { return qGray(image.pixel(qRound(at.x()), qRound(at.y()))); };
    std::vector<double> offsets;
    for (double part = 0.15; part < 0.85; part += 0.01) {
        const QPointF point = a + part * along;
        int steepest = 0;
        double where = 99;
        for (double off = -5; off <= 5; off += 0.25) {
            const int step =
                brightness(point + (off - 1) * outwards) - brightness(point + (off + 1) * outwards);
            if (step > steepest) {
                steepest = step;
                where = off;
            }
        }
        offsets.push_back(where);
    }
    std::sort(offsets.begin(), offsets.end());
    return offsets[offsets.size() / 2];
}

TEST(DeskPictures, PagesLieWhereTheTruthSays)
{
    const TempDir folder;
    const QString path = QString::fromStdString(folder.path());
    ASSERT_EQ(runTool(QStringLiteral("--only codes,russian-text %1 800x600 1600x1200").arg(path)).exitCode,
              0);
    const QList<QByteArray> lines = contentOf(path + QStringLiteral("/truth.csv")).split('\n').mid(1);
    ASSERT_EQ(lines.size(), 5); // two pages in two sizes, and the end of the last line
    for (const QByteArray& line : lines.mid(0, 4)) {
        const QList<QByteArray> fields = line.split(',');
        ASSERT_EQ(fields.size(), 12) << line.toStdString();
        const QImage image(QStringLiteral("%1/pictures/%2/%3.jpg")
                               .arg(path, QString::fromUtf8(fields[1]), QString::fromUtf8(fields[0])));
        ASSERT_EQ(QByteArray::number(image.width()) + 'x' + QByteArray::number(image.height()), fields[1]);
        std::array<QPointF, 4> corners;
        for (int i = 0; i < 4; ++i)
            corners[i] = {fields[2 + 2 * i].toDouble(), fields[3 + 2 * i].toDouble()};
        // One pixel: half for the nearest-pixel samples, half for the sRGB curve, which widens bright things.
        for (int i = 0; i < 4; ++i)
            EXPECT_NEAR(edgeOffset(image, corners[i], corners[(i + 1) % 4]), 0, 1)
                << line.toStdString() << ", edge " << i;
    }
}

TEST(DeskPictures, WrongOrdersAreRefusedInOneLine)
{
    const TempDir folder;
    const QString path = QString::fromStdString(folder.path());
    for (const char* size : {"1600x1201", "1600", "0x0", "1600x-1200", "1000000x750000", "wide"}) {
        const Outcome outcome = runTool(path + QLatin1Char(' ') + QLatin1String(size));
        EXPECT_EQ(outcome.exitCode, 2) << size;
        EXPECT_EQ(outcome.messages.count('\n'), 1) << outcome.messages.toStdString();
        EXPECT_TRUE(outcome.messages.contains(size)) << outcome.messages.toStdString();
    }
    EXPECT_TRUE(QDir(path).isEmpty());

    // A file stands where the folder should be made.
    const QString blocked = QString::fromStdString(folder.write("file", "x"));
    const Outcome outcome = runTool(QStringLiteral("--only card-back %1 800x600").arg(blocked));
    EXPECT_EQ(outcome.exitCode, 1);
    EXPECT_TRUE(outcome.messages.contains(blocked.toUtf8())) << outcome.messages.toStdString();
    EXPECT_EQ(contentOf(blocked), QByteArray("x"));
}

} // namespace
