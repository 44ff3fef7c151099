#pragma once

#include "PictureSheets.h"

#include <QObject>

#include <memory>

class CaptureDesk;
class Job;
class MirvakCamera;
class PdfTexts;
class QWidget;

/// Puts picture files that the user picks into one PDF of the user's choosing, one on each lying A4 page.
/// GUI thread only.
class PdfSynthesis : public QObject
{
    Q_OBJECT

public:
    /// All are borrowed for the life of this object; dialogs stand over `window`.
    PdfSynthesis(
        CaptureDesk& desk, QWidget& window, MirvakCamera& camera, PdfTexts& texts, QObject* parent = nullptr);

    /// Asks for the pictures, then for the file, and offers to open its folder. Does nothing when the folder
    /// for new files neither exists nor can be made.
    void SynthesizePdf();
    /// Asks for the file and writes the pages. A picture that cannot be read ends the work, and is named: the
    /// file then holds the pages before it; without any there is no file. The pages are written on a thread
    /// of its own, and the window goes on meanwhile: events are handled until this returns. When the user
    /// cancels or the program ends, no file is left and one of that name stays as it was.
    /// @return true when the file holds all pages
    bool drawImageToPDF(const QStringList& images);

    const QString& lastPath() const { return lastPath_; } ///< of the last complete file

private:
    QStringList choosePictures(const QString& folder);
    QString chooseTarget();
    bool isWriting();
    pictureSheets::Result write(const QString& path, const QStringList& images);
    pictureSheets::Result writeSheets(const QString& path, const QStringList& images, Job& job) const;
    bool tell(const pictureSheets::Result& result, const QString& path, const QStringList& images);
    void offerFolder();

    CaptureDesk& desk_;
    QWidget& window_;
    MirvakCamera& camera_;
    PdfTexts& texts_;
    QString lastPath_;
    std::shared_ptr<Job> job_; ///< while a file is being written
};
