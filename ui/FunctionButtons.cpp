#include "FunctionButtons.h"

#include <QCoreApplication>

namespace functionButtons {

namespace {

constexpr std::array<const char*, count> captions{
    QT_TRANSLATE_NOOP("FunctionButtons", "Capture"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Document"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Barcode"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Merge images"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Merge card"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Record video"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Continuous shooting"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Recognize text (OCR)"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Read ID card"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Print receipt"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Make PDF"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Multi-page PDF"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Sign"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Fingerprint"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Scan book"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Verify face"),
    QT_TRANSLATE_NOOP("FunctionButtons", "Burn-in test")};

} // namespace

QString caption(int index)
{
    if (index < 0 || index >= count)
        return {};
    return QCoreApplication::translate("FunctionButtons", captions[std::size_t(index)]);
}

} // namespace functionButtons
