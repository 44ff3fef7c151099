// Makes the sound of a camera's shutter: two short knocks, opening and closing, of decaying noise over a low
// tone. 16-bit mono PCM in a WAV file.   shutterclick FILE
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <vector>

namespace {

constexpr int rate = 44100;     // samples a second
constexpr double length = 0.14; // seconds
constexpr double twoPi = 6.283185307179586;

struct Knock
{
    double start;    // seconds
    double loudness; // of full scale
    double decay;    // seconds to 1/e
    double tone;     // Hz
};

constexpr std::array<Knock, 2> knocks{{{0.002, 0.50, 0.006, 900}, {0.062, 0.38, 0.010, 620}}};

/// The same noise at every build: -1 to 1.
double noise()
{
    static std::uint32_t state = 20011;
    state = state * 1664525U + 1013904223U;
    return static_cast<double>(state >> 8) / (1U << 23) - 1.0;
}

double sampleOf(const Knock& knock, double time)
{
    const double since = time - knock.start;
    if (since < 0)
        return 0;
    const double attack = std::min(since / 0.0005, 1.0); // a step would crackle
    const double body = 0.7 * noise() + 0.3 * std::sin(twoPi * knock.tone * since);
    return knock.loudness * attack * std::exp(-since / knock.decay) * body;
}

std::vector<std::int16_t> samples()
{
    std::vector<std::int16_t> result;
    double smooth = 0; // a low pass takes the hiss away
    for (int i = 0; i < static_cast<int>(rate * length); ++i) {
        double sum = 0;
        for (const Knock& knock : knocks)
            sum += sampleOf(knock, static_cast<double>(i) / rate);
        smooth += 0.45 * (sum - smooth);
        result.push_back(static_cast<std::int16_t>(std::lround(std::clamp(smooth, -1.0, 1.0) * 32767)));
    }
    return result;
}

void put(std::ofstream& file, std::uint32_t value, int bytes) // little endian
{
    for (int i = 0; i < bytes; ++i)
        file.put(static_cast<char>(value >> 8 * i & 0xff));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fputs("shutterclick FILE\n", stderr);
        return 2;
    }
    const std::vector<std::int16_t> sound = samples();
    const auto bytes = static_cast<std::uint32_t>(sound.size() * 2);
    std::ofstream file(argv[1], std::ios::binary);
    file << "RIFF";
    put(file, 36 + bytes, 4);
    file << "WAVEfmt ";
    put(file, 16, 4);
    put(file, 1, 2); // PCM
    put(file, 1, 2); // channel
    put(file, rate, 4);
    put(file, rate * 2, 4); // bytes a second
    put(file, 2, 2);        // bytes a frame
    put(file, 16, 2);       // bits
    file << "data";
    put(file, bytes, 4);
    for (const std::int16_t sample : sound)
        put(file, static_cast<std::uint16_t>(sample), 2);
    return file.flush() ? 0 : 1;
}
