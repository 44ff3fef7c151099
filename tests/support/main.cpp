#include "PixelThreads.h"

#include <gtest/gtest.h>

#include <cstdlib>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    singleThreadedPixels();
    unsetenv("LUMRO_DESK"); // a test that wants virtual devices brings its own
    return RUN_ALL_TESTS();
}
