#pragma once

#include <QImage>
#include <QPixmap>
#include <QWidget>

#include "MergeLayout.h"
#include "UnsavedWork.h"

#include <memory>

class Ui_ImageMerge;

/// Joins two pictures side by side or one above the other, shows the result and saves it as a JPEG. Modal to
/// its parent's window. The contents are made on first use, so that the start of the program does not wait
/// for them. GUI thread only.
///
/// While the user tries out layouts and gaps only the places are computed and the preview is painted from
/// reduced pictures, so that it follows the slider; the result itself is put together, from the full
/// pictures, when it is saved. Closing drops the pictures.
class ImageMerge : public QWidget, public UnsavedWork
{
    Q_OBJECT

public:
    explicit ImageMerge(QWidget* parent = nullptr);
    ~ImageMerge() override;

    /// Takes the pair; with a null picture or an empty path there is nothing to save.
    void setMergeImage(const QPixmap& first, const QPixmap& second, const QString& savePath);
    /// The same from two files.
    void setMergeImage(const QString& firstPath, const QString& secondPath, const QString& savePath);

    /// Makes the result anew as the controls say.
    void MergePix();
    /// The largest place in the middle of `area` for a picture of width x height px, its shape kept; null
    /// when a size is empty.
    void CalcDispRect(const QRect& area, int width, int height, QRect& place) const;

    QString questionBeforeClosing() const override;
    void setVisible(bool visible) override;

Q_SIGNALS:
    /// The result lies in this file.
    void postSynthesisPath(const QString& path);

protected:
    void showEvent(QShowEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void build();
    bool havePictures();
    void forget();
    void showResult(const MergeLayout& result);
    void paintResult(QPainter& painter, const QRect& area);
    void onSave();

    std::unique_ptr<Ui_ImageMerge> ui_; ///< null until first used
    QString firstPath_;
    QString secondPath_;
    QString savePath_;
    QPixmap first_;
    QPixmap second_;
    QImage firstShown_; ///< reduced for the preview
    QImage secondShown_;
    MergeLayout result_; ///< empty: there is none
};
