#pragma once

namespace mirvak {

/// Within its scope the calling thread's Leptonica packs a picture in memory, where PNG is asked for, as bare
/// pixels: an eighth of the time of a reading goes into packing each line and unpacking it in the next step.
/// They are recognised where they are unpacked. Elsewhere a PNG file is one.
class BarePixels
{
public:
    BarePixels();
    ~BarePixels();
    BarePixels(const BarePixels&) = delete;
    BarePixels& operator=(const BarePixels&) = delete;

private:
    bool before_;
};

} // namespace mirvak
