// Feeds a fuzz target with random changes of an answer, the same ones in each run: TARGET INPUTS
#include <cstdint>
#include <cstdlib>
#include <exception>
#include <random>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size);

int main(int, char** argv)
try {
    const std::string frame("\xAA\xAA\xAA\x96\x69\0\x08\0\0\x9F\x01\x02\x03\x04\x93\xD8\x3D\xDE", 18);
    std::mt19937 random(1);
    std::string input;
    for (long left = std::atol(argv[1]); left > 0; --left) {
        const size_t at = random() % (input.size() + 1);
        if (random() % 3 == 0)
            input.insert(at, frame, 0, random() % frame.size() + 1);
        else if (at < input.size() && random() % 2 == 0)
            input[at] = static_cast<char>(random());
        else
            input.erase(at, random() % (input.size() > 3000 ? 3000 : 8));
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(input.data()), input.size());
    }
} catch (const std::exception&) {
    return 1;
}
