#pragma once

#include <QObject>

class CaptureDesk;
class QIODevice;
class QImage;
class QPainter;
class QRect;
class QWidget;

/// Puts picture files that the user picks into one PDF of the user's choosing, one on each lying A4 page.
/// GUI thread only.
class PdfSynthesis : public QObject
{
    Q_OBJECT

public:
    /// Both are borrowed for the life of this object; dialogs stand over `window`.
    PdfSynthesis(CaptureDesk& desk, QWidget& window, QObject* parent = nullptr);

    /// Asks for the pictures, then for the file, and offers to open its folder. Does nothing when the folder
    /// for new files neither exists nor can be made.
    void SynthesizePdf();
    /// Asks for the file and writes the pages. A picture that cannot be read ends the work, and is named: the
    /// file then holds the pages before it; without any there is no file.
    /// @return true when the file holds all pages
    bool drawImageToPDF(const QStringList& images);

    const QString& lastPath() const { return lastPath_; } ///< of the last complete file

private:
    QStringList choosePictures(const QString& folder);
    QString chooseTarget();
    /// @return how many; the next one could not be read
    int drawPages(QIODevice& file, const QStringList& images);
    static void drawPage(QPainter& painter, const QRect& area, const QImage& image);
    void offerFolder();

    CaptureDesk& desk_;
    QWidget& window_;
    QString lastPath_;
};
