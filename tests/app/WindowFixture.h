#pragma once

#include "LumroScanner.h"

#include "DeskFixture.h"
#include "Dialogs.h"
#include "MsgBox.h"
#include "Settings.h"
#include "Thumbnail.h"
#include "VideoView.h"
#include "ViewNotice.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QTest>

void initResources();

/// The main window over a virtual desk, with a folder of its own for the pictures; messages answer
/// themselves.
class LumroScannerTest : public DeskTest
{
protected:
    LumroScannerTest()
    {
        initResources();
        store_.GetSettings()->clear();
        settings::cameraResolution.write(store_, 0);
        settings::setSavePath(store_, pictures());
        Dialogs::instance().runMessage = [this](MsgBox& box) {
            for (const QLabel* label : box.findChildren<QLabel*>())
                messages_ << label->text();
            return 1;
        };
    }
    ~LumroScannerTest() override
    {
        Dialogs::instance() = Dialogs::real();
        store_.GetSettings()->clear();
    }

    void show()
    {
        window_ = std::make_unique<LumroScanner>();
        window_->resize(1000, 700);
        window_->show();
    }
    /// The window over that desk, as soon as it shows the camera's picture.
    bool shows(const std::string& cameras, const QImage& page = solid(640, 480, Qt::yellow))
    {
        useDesk(cameras, page);
        show();
        return waitForPicture();
    }
    bool hasPicture() { return !view().GetImageCurrentSize().isEmpty(); }
    bool waitForPicture()
    {
        return QTest::qWaitFor([this] { return hasPicture(); }, 10000);
    }
    VideoView& view() const { return *window_->findChild<VideoView*>(); }
    Thumbnail& strip() const { return *window_->findChild<Thumbnail*>(); }
    void click(const char* name) const
    {
        QTest::mouseClick(window_->findChild<QPushButton*>(QLatin1String(name)), Qt::LeftButton);
    }
    QString notice() const { return view().findChild<ViewNotice*>()->text(); }
    QString pictures() const { return QString::fromStdString(folder().file("out")); }
    QStringList files() const { return QDir(pictures()).entryList(QDir::Files, QDir::Name); }

    ConfigSettings store_;
    QStringList messages_;
    std::unique_ptr<LumroScanner> window_;
};
