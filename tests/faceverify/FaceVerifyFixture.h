#pragma once

#include "FaceVerify.h"

#include "../ui/AnsweredDialogs.h"
#include "DeskFixture.h"
#include "FaceLibraries.h"
#include "FaceVideo.h"
#include "Part.h"
#include "Settings.h"

#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include <cstdlib>
#include <filesystem>

/// The face window over cameras of the virtual desk, with card and face calls that answer as each test wants.
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
        EXPECT_FALSE(libraries_.isReaderOpen) << "and the opened reader";
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
