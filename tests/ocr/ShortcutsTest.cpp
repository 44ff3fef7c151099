#include "Shortcuts.h"

#include <gtest/gtest.h>
#include <leptonica/allheaders.h>

#include <memory>
#include <string>

namespace {

std::string packed(Pix* picture)
{
    l_uint8* bytes = nullptr;
    size_t size = 0;
    EXPECT_EQ(pixWriteMem(&bytes, &size, picture, IFF_PNG), 0);
    const std::unique_ptr<l_uint8, void (*)(void*)> held(bytes, lept_free);
    return {reinterpret_cast<const char*>(bytes), size};
}

TEST(BarePixels, AreWrittenWithinTheirScopeAndReadLikeThePngFileOutsideOfIt)
{
    const auto drop = [](Pix* pix) { pixDestroy(&pix); };
    const std::unique_ptr<Pix, decltype(drop)> picture(pixCreate(40, 30, 8), drop);
    pixSetPixel(picture.get(), 7, 5, 200);
    const auto isPng = [](const std::string& bytes) { return bytes.substr(1, 3) == "PNG"; };
    EXPECT_TRUE(isPng(packed(picture.get())));
    std::string bare;
    {
        const mirvak::BarePixels outer;
        {
            const mirvak::BarePixels inner;
        }
        bare = packed(picture.get());
    }
    EXPECT_FALSE(isPng(bare)) << "without which a page takes half as long again";
    EXPECT_TRUE(isPng(packed(picture.get())));
    const std::unique_ptr<Pix, decltype(drop)> read(
        pixReadMem(reinterpret_cast<const l_uint8*>(bare.data()), bare.size()), drop);
    l_int32 same = 0;
    EXPECT_TRUE(read && pixEqual(picture.get(), read.get(), &same) == 0 && same == 1);
}

} // namespace
