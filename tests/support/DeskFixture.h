#pragma once

#include "TempDir.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <string>

/// A test with virtual cameras: a folder with one picture and a desk.cfg over it.
class DeskTest : public ::testing::Test
{
protected:
    void TearDown() override { unsetenv("LUMRO_DESK"); }

    /// `cameras` is the text of the camera list, each an entry in braces; the picture is "page.jpg".
    void useDesk(const std::string& cameras, const QImage& picture = solid(640, 480, Qt::yellow))
    {
        picture.save(QString::fromStdString(folder_.file("page.jpg")), "JPG", 95);
        changeDesk(cameras);
        setenv("LUMRO_DESK", folder_.file("desk.cfg").c_str(), 1);
    }
    /// Plugs and unplugs while the program runs. The file appears whole.
    void changeDesk(const std::string& cameras)
    {
        const std::string text = "real = false;\ncameras = ( " + cameras + " );\n" + otherDevices;
        std::filesystem::rename(folder_.write("desk.new", text), folder_.file("desk.cfg"));
    }
    static std::string camera(const std::string& more = "", int type = 1, const std::string& usb = "1b172000")
    {
        return "{ name = \"Test camera\"; type = " + std::to_string(type) + "; usb = \"" + usb +
               "\"; source = \"page.jpg\"; fps = 30; resolutions = [ \"640x480\", \"320x240\" ]; " + more +
               " }";
    }
    /// One that its name and the colour of its picture tell from others.
    std::string camera(const char* name, Qt::GlobalColor colour, int type, const std::string& more = "")
    {
        const std::string file = std::string(name) + ".png";
        if (!std::filesystem::exists(folder_.file(file))) // a camera may be reading it
            solid(640, 480, colour).save(QString::fromStdString(folder_.file(file)));
        return std::string("{ name = \"") + name + "\"; type = " + std::to_string(type) + "; source = \"" +
               file + "\"; fps = 30; resolutions = [ \"640x480\", \"320x240\" ]; " + more + " }";
    }
    static QImage solid(int width, int height, Qt::GlobalColor colour)
    {
        QImage image(width, height, QImage::Format_RGB888);
        image.fill(colour);
        return image;
    }
    /// Lines of print on a sheet on a dark table.
    static QImage page()
    {
        QImage page = solid(640, 480, Qt::darkGray);
        QPainter painter(&page);
        painter.fillRect(160, 60, 320, 360, qRgb(245, 245, 245));
        for (int y = 72; y < 420; y += 24)
            painter.fillRect(191, y, 259, 8, qRgb(20, 20, 20));
        return page;
    }
    const TempDir& folder() const { return folder_; }

    std::string otherDevices; ///< settings of desk.cfg beside the cameras

private:
    TempDir folder_;
};
