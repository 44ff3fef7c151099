#pragma once

#include "CardSource.h"

#include <memory>
#include <string>

namespace idcard {

/// The reader behind the calls of hidcard.h, which are its operations under other names. Not thread-safe.
class CardReader
{
public:
    int open();
    void close();
    void setPhotoPath(const char* path) { photoPath_ = path ? path : ""; }
    int read();
    /// Of the last card; null when it has none.
    const std::string* text(int index) const;
    ReaderState state() { return source_ ? source_->look() : ReaderState::none; }

private:
    std::string photoPath_;
    std::unique_ptr<CardSource> source_;
    std::optional<Card> card_;
};

} // namespace idcard
