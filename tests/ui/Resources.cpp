// The pictures are linked in statically; they register themselves only when told so.
#include <gtest/gtest.h>

#include <QtGlobal>

static void registerPictures()
{
    Q_INIT_RESOURCE(images);
}

namespace {

class Resources : public ::testing::Environment
{
    void SetUp() override { registerPictures(); }
};

const auto* const registered = ::testing::AddGlobalTestEnvironment(new Resources);

} // namespace
