#pragma once

#include <QByteArray>
#include <QImage>
#include <QString>

#include <opencv2/core.hpp>

#include <stdexcept>

namespace deskpictures {

/// A file could not be written; what() names it and the reason.
struct OutputError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// Three writers: they make the folder, write to a temporary file and rename it. Thread-safe. They throw
/// OutputError.
void writeJpeg(const QString& path, const cv::Mat& rgb, int quality = 92);
void writePng(const QString& path, const QImage& image);
void writeText(const QString& path, const QByteArray& text);

} // namespace deskpictures
