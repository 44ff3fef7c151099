#include "TempDir.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

std::uint32_t at(const std::string& bytes, size_t offset)
{
    std::uint32_t number{};
    std::memcpy(&number, bytes.data() + offset, sizeof number); // little endian, as these machines are
    return number;
}

/// Mean square of full scale, over a part of the sound in ms.
double power(const std::vector<std::int16_t>& sound, int fromMs, int toMs)
{
    double sum = 0;
    for (int i = fromMs * 441 / 10; i < toMs * 441 / 10; ++i)
        sum += std::pow(sound.at(static_cast<size_t>(i)) / 32768.0, 2);
    return sum / ((toMs - fromMs) * 44.1);
}

} // namespace

TEST(ShutterClick, IsAShortSoundWithTwoKnocks)
{
    const TempDir folder;
    const std::string path = folder.file("click.wav");
    ASSERT_EQ(std::system((SHUTTERCLICK " " + path).c_str()), 0);
    const std::string bytes = folder.content("click.wav");
    ASSERT_GT(bytes.size(), 44U);
    EXPECT_EQ(bytes.substr(0, 4) + bytes.substr(8, 8) + bytes.substr(36, 4), "RIFFWAVEfmt data");
    EXPECT_EQ(at(bytes, 4), bytes.size() - 8);
    EXPECT_EQ(at(bytes, 40), bytes.size() - 44);
    // PCM, mono, 44100 samples of 2 bytes a second, 16 bits each.
    EXPECT_EQ(bytes.substr(20, 16), std::string("\1\0\1\0\x44\xac\0\0\x88\x58\1\0\2\0\x10\0", 16));

    std::vector<std::int16_t> sound((bytes.size() - 44) / 2);
    std::memcpy(sound.data(), bytes.data() + 44, sound.size() * 2);
    ASSERT_GT(sound.size(), 441U * 13) << "130 ms";
    EXPECT_LT(sound.size(), 441U * 30) << "it must not be in the way of the next one";
    EXPECT_GT(power(sound, 2, 10), 50 * power(sound, 45, 60));
    EXPECT_GT(power(sound, 62, 72), 50 * power(sound, 45, 60));
    EXPECT_EQ(sound.front(), 0) << "no crackle where it begins";
    EXPECT_LT(std::abs(sound.back()), 100) << "nor where it ends";
    for (const std::int16_t sample : sound)
        ASSERT_LT(std::abs(sample), 32000) << "clipped";
}

TEST(ShutterClick, SaysWhenItCannotWrite)
{
    EXPECT_NE(std::system(SHUTTERCLICK " /nonexistent/click.wav"), 0);
    EXPECT_NE(std::system(SHUTTERCLICK " 2> /dev/null"), 0);
}
