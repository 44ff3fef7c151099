#include "Controls.h"

#include <cstdio>

namespace lab {

namespace {

constexpr int camera = 1, processing = 2;

Bytes number(int value, int length)
{
    Bytes bytes;
    for (int i = 0; i < length; ++i)
        bytes.push_back(value >> 8 * i & 0xff);
    return bytes;
}

} // namespace

Controls::Controls()
    : controls_{
          {{camera, 0x02}, {1, 1, 8, 9, 8, 8}},                  // exposure mode: a set of bits
          {{camera, 0x04}, {4, 1, 10000, 1, 156, 156}},          // exposure time
          {{camera, 0x06}, {2, 0, 250, 5, 0, 0}},                // focus
          {{camera, 0x08}, {1, 0, 1, 1, 1, 1}},                  // automatic focus
          {{camera, 0x0b}, {2, 100, 400, 1, 100, 100}},          // zoom
          {{processing, 0x01}, {2, 0, 2, 1, 0, 0}},              // backlight
          {{processing, 0x02}, {2, 0, 255, 1, 128, 128}},        // brightness
          {{processing, 0x03}, {2, 0, 255, 1, 32, 32}},          // contrast
          {{processing, 0x04}, {2, 0, 255, 1, 0, 0}},            // gain
          {{processing, 0x05}, {1, 0, 2, 1, 1, 1}},              // mains frequency
          {{processing, 0x06}, {2, -180, 180, 1, 0, 0}},         // hue
          {{processing, 0x07}, {2, 0, 255, 1, 64, 64}},          // saturation
          {{processing, 0x08}, {2, 0, 10, 1, 2, 2}},             // sharpness
          {{processing, 0x09}, {2, 72, 500, 1, 100, 100}},       // gamma
          {{processing, 0x0a}, {2, 2800, 6500, 10, 4600, 4600}}, // white balance
          {{processing, 0x0b}, {1, 0, 1, 1, 1, 1}},              // automatic white balance
      }
{
}

Answer Controls::powerMode(const Setup& setup)
{
    constexpr std::uint8_t requestErrorCode = 6; // "invalid control", the last thing that went wrong
    if (setup.entity() == 0 && setup.selector() == 2 && setup.request == GET_CUR)
        return Bytes{requestErrorCode};
    return std::nullopt;
}

void Controls::set(const Setup& setup, Control& control, const Bytes& data)
{
    int value = 0;
    for (int i = 0; i < control.length && i < int(data.size()); ++i)
        value |= data[i] << 8 * i;
    control.current = control.length == 2 ? std::int16_t(value) : value;
    std::printf("control %d %d %d\n", setup.entity(), setup.selector(), control.current);
}

Answer Controls::request(const Setup& setup, const Bytes& data)
{
    const auto found = controls_.find({setup.entity(), setup.selector()});
    if (found == controls_.end())
        return powerMode(setup);
    Control& control = found->second;
    switch (setup.request) {
    case SET_CUR:
        set(setup, control, data);
        return Bytes();
    case GET_CUR:
        return number(control.current, control.length);
    case GET_MIN:
        return number(control.minimum, control.length);
    case GET_MAX:
        return number(control.maximum, control.length);
    case GET_RES:
        return number(control.step, control.length);
    case GET_DEF:
        return number(control.standard, control.length);
    case GET_LEN:
        return number(control.length, 2);
    case GET_INFO:
        return Bytes{3}; // can be read and set
    default:
        return std::nullopt;
    }
}

} // namespace lab
