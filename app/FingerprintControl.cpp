#include "FingerprintControl.h"

#include "ComeForward.h"
#include "FignerPrint.h"
#include "MainDesk.h"
#include "Thumbnail.h"

FingerprintControl::FingerprintControl(MainDesk& desk, Thumbnail& strip) : desk_(desk), strip_(strip) {}

FingerprintControl::~FingerprintControl() = default;

void FingerprintControl::onFingerPrint()
{
    if (!desk_.mayStart())
        return;
    if (!dialog_) {
        dialog_ = std::make_unique<FignerPrint>(nullptr, nullptr);
        connect(dialog_.get(), &FignerPrint::setImg2Thumb, this, [this](const QString& path) {
            strip_.AddImage(path, -1);
        });
    }
    comeForward(*dialog_);
}
