// Writes the colour profile of sRGB as the numbers of a C++ array.
#include <lcms2.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <vector>

namespace {

constexpr size_t dateAt = 24, dateBytes = 12; // of the profile's header (ISO 15076-1, 7.2)

/// The bytes of the library's own profile, which may be used freely. Nothing when it cannot be made.
std::vector<unsigned char> srgb()
{
    std::vector<unsigned char> bytes;
    cmsHPROFILE profile = cmsCreate_sRGBProfile();
    if (!profile)
        return bytes;
    cmsSetProfileVersion(profile, 4.2); // what a PDF may contain
    cmsUInt32Number size = 0;
    if (cmsSaveProfileToMem(profile, nullptr, &size)) {
        bytes.resize(size);
        if (!cmsSaveProfileToMem(profile, bytes.data(), &size))
            bytes.clear();
    }
    cmsCloseProfile(profile);
    return bytes;
}

/// The same bytes in every build.
void setDate(std::vector<unsigned char>& bytes)
{
    constexpr unsigned char date[dateBytes] = {0x07, 0xe8, 0, 1, 0, 1}; // 1 January 2024
    std::copy(date, date + dateBytes, bytes.begin() + dateAt);
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<unsigned char> bytes = srgb();
    if (argc != 2 || bytes.size() < dateAt + dateBytes) {
        std::fprintf(stderr, "srgbprofile: no file name or no profile\n");
        return 1;
    }
    setDate(bytes);
    std::ofstream out(argv[1]);
    constexpr int numbersOfLine = 20;
    for (size_t i = 0; i < bytes.size(); ++i)
        out << int(bytes[i]) << (i % numbersOfLine == numbersOfLine - 1 ? ",\n" : ",");
    out.close();
    return out ? 0 : 1;
}
