#pragma once

#include "ConfigSettings.h"

#include <QWidget>

#include <memory>

class Ui_SetImage;

/// The page of pictures: folder, format, second camera, paper, books and watermark. GUI thread only.
class SetImage : public QWidget
{
    Q_OBJECT

public:
    explicit SetImage(QWidget* parent = nullptr);
    ~SetImage() override;

Q_SIGNALS:
    void booklineclicked(bool checked); ///< stored already
    // The options of book flattening hold for this run of the program and are not stored.
    void bookrmfingerclicked(bool checked);
    void bookdoublepageclicked(bool checked);
    void bookdocprocesclicked(bool checked);
    void scansizechanged(const int& row); ///< 0 automatic, 1 A4, 2 A3; stored after the signal
    void compositechanged(bool checked);  ///< stored already
    void currentmergepos(const int& row); ///< row as stored in "Merge_Pos"; stored already

private:
    void load();
    void connectSignals();
    void onBrowse();
    void showPath(const QString& directory);

    ConfigSettings settings_;
    std::unique_ptr<Ui_SetImage> ui_;
};
