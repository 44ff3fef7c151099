#pragma once

#include "Answers.h"

#include <memory>

namespace mirvak::helper {

/// One-dimensional codes and QR by ZBar. Bars are read along rows and columns only; a QR code at any turn.
class ZBarDecoder
{
public:
    ZBarDecoder();
    ~ZBarDecoder();
    void read(const Picture& picture, int step, const Answers& answers);

private:
    struct Scanner;
    std::unique_ptr<Scanner> scanner_;
};

} // namespace mirvak::helper
