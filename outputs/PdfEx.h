#pragma once

#include "PageMark.h"
#include "PdfFile.h"
#include "UnsavedWork.h"

#include <QStringList>
#include <QTimer>
#include <QWidget>

#include <atomic>
#include <memory>

class JobBar;
class MirvakCamera;
class PdfView;
class PdfWriting;
class Ui_PdfEx;

/// Collects pages for one PDF: scans of what its own preview shows and picture files. The pages can be put
/// into another order and taken out; their files stay on the disk. The contents are made on first use.
///
/// GUI thread only, except SetPdfDataframe(), SetPageMark() and takesFrames().
class PdfEx : public QWidget, public UnsavedWork
{
    Q_OBJECT

public:
    /// `camera` is borrowed until finish() or the end of this object.
    PdfEx(QWidget* parent, MirvakCamera& camera);
    ~PdfEx() override;

    /// Opens the dialog for the open camera `device`. Nominal size of a recording in px, quarter turns
    /// clockwise, row of the chosen resolution.
    void ShowPdf(void* device, int width, int height, int rotation, int resolutionIndex);
    /// Whether the live frames belong here: while the dialog shows. Thread-safe.
    bool takesFrames() const { return takesFrames_; }
    /// Hands over the newest frame; as VideoView::SetImageData(). Ignored while the dialog is hidden.
    /// Thread-safe; the calling thread must have stopped before the dialog is destroyed.
    void SetPdfDataframe(const QImage& frame);
    /// What is known of the page in the next frame. Thread-safe, as above.
    void SetPageMark(const PageMark& mark);
    /// Appends a page; a file without a readable picture is left out, and the user is told.
    void SetScannerImage(const QString& path);
    /// A line for the user beside the buttons, until the next one.
    void ShowNote(const QString& text);
    QStringList pages() const; ///< paths, in order

    /// Saves a picture under the next free name, cut by 15 px a side where automatic cropping is chosen. Only
    /// kinds 0, 1 and 3 write. @return its path, also when nothing had to be written; empty on failure
    QString imageSave(const QImage& image, int kind);
    QString getImagePath() const;  ///< as FileNaming
    QString getNameFormat() const; ///< as FileNaming
    qint64 getNameIndex(const QString& directory, const QString& prefix, const QString& extension) const;

    /// Cancels a PDF that is being written. Call it before the camera library's object goes.
    void finish();
    QString questionBeforeClosing() const override;
    void setVisible(bool visible) override;

Q_SIGNALS:
    void pdfexscannered();   ///< the user wants a scan of the present picture as the next page
    void setpdfquitsignal(); ///< the dialog has closed
    void setpdfexthumbnail(QPixmap& icon, const QString& path); ///< a PDF was made
    /// The same, after it is listed: of which pictures, in which form.
    void pdfMade(const QString& path, const QStringList& pictures, const pdfFile::Form& form);

public Q_SLOTS:
    void onGetFramedata(const QImage& frame); ///< as SetPdfDataframe()
    void onScannerImg();
    void onAddImages();
    /// Writes the PDF and closes the dialog when all that is listed is in it. What is not is named, and the
    /// list stays; with a picture that cannot be read no PDF is written. It can be cancelled, which leaves
    /// no file and the list as it is.
    void onPdfEx();
    void onOpenPath();
    void onClosePdf();

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void build();
    void dressButtons();
    void connectChoices();
    void showChoices();
    void listWaiting(int milliseconds);
    void setBusy(bool isBusy);
    void forgetPages();
    void onWritten(const pdfFile::Result& result);
    static QString leftOutText(const QStringList& files);

    std::unique_ptr<Ui_PdfEx> ui_; ///< null until first used
    PdfWriting* writing_;
    JobBar* jobBar_ = nullptr; ///< with the contents
    void* device_ = nullptr;
    int width_ = 0;
    int height_ = 0;
    int rotation_ = 0;
    int resolutionIndex_ = 0;
    QStringList waiting_;  ///< chosen files on their way into the list
    QStringList leftOut_;  ///< listed files that are not in the PDF that is being written
    QStringList pictures_; ///< that become the pages of the PDF that is being written
    pdfFile::Form form_;   ///< of that PDF
    QTimer listTimer_;
    std::atomic<bool> takesFrames_{false};
};
