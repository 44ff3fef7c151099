#pragma once

#include <QFontMetrics>
#include <QString>

namespace TextFit {

/// Width in px of the longest part of `text` that has no space to wrap at.
int longestWord(const QString& text, const QFontMetrics& metrics);

} // namespace TextFit
