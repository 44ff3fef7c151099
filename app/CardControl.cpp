#include "CardControl.h"

#include "ComeForward.h"
#include "IdCardReader.h"
#include "MainDesk.h"
#include "Settings.h"

#include <utility>

void CardControl::onReadIdCard()
{
    if (!desk_.mayStart())
        return;
    if (!reader_)
        makeReader();
    if (reader_->zktinitresult() > 0)
        comeForward(*reader_);
    else
        dropReader();
}

void CardControl::makeReader()
{
    reader_ = new IdCardReader(&window_, nullptr);
    connect(reader_, &IdCardReader::setuiclose, this, &CardControl::dropReader);
    reader_->SetCardPath(settings::savePath(settings_) + QStringLiteral("/cardinfo.cvs"));
}

/// The window may be in the midst of closing.
void CardControl::dropReader()
{
    if (IdCardReader* reader = std::exchange(reader_, nullptr)) {
        reader->hide();
        reader->deleteLater();
    }
}
