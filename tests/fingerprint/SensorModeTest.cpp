#include "SensorMode.h"

#include "TempDir.h"

#include <gtest/gtest.h>

namespace {

struct File
{
    const char* text; ///< null: there is none
    int mode;
    const char* said;    ///< on standard output
    const char* trouble; ///< within standard error
    int toggled;         ///< 0: the file stays as it is
};

class SensorModeTest : public ::testing::TestWithParam<File>
{
};

TEST_P(SensorModeTest, IsReadAndToggledAndNeverHarmsTheFile)
{
    const TempDir folder;
    const File& file = GetParam();
    if (file.text)
        folder.write("plugin.cfg", file.text);
    const SensorMode mode(QString::fromStdString(folder.file("plugin.cfg")));
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    EXPECT_EQ(mode.read(), file.mode);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), file.said);
    const std::string trouble = testing::internal::GetCapturedStderr();
    if (*file.trouble)
        EXPECT_NE(trouble.find(file.trouble), std::string::npos) << trouble;
    else
        EXPECT_EQ(trouble, "");
    EXPECT_EQ(mode.toggle(), file.toggled != 0);
    if (file.toggled != 0) {
        EXPECT_EQ(mode.read(), file.toggled);
        EXPECT_NE(folder.content("plugin.cfg").find("other"), std::string::npos) << "the rest of the file";
    } else {
        EXPECT_EQ(folder.content("plugin.cfg"), file.text ? file.text : "");
    }
    EXPECT_EQ(folder.names().size(), file.text ? 1U : 0U);
}

INSTANTIATE_TEST_SUITE_P(
    Files,
    SensorModeTest,
    ::testing::Values(
        File{"fpmode = 1; other = \"x\";", 1, "success fptype:1\n", "", 2},
        File{"other = 5;\nfpmode = 2;\n", 2, "success fptype:2\n", "", 1},
        File{"fpmode = 3;", 3, "success fptype:3\n", "", 0},
        File{"fpmode = 0;", 1, "success fptype:0\n", "", 0},
        File{"fpmode = 7;", 1, "success fptype:7\n", "", 0},
        File{"fpmode = \"2\";", 1, "success fptype:-1\n", "No 'fpmode' setting in configuration file.\n", 0},
        File{"", 1, "success fptype:-1\n", "No 'fpmode' setting in configuration file.\n", 0},
        File{"\n= garbage", 1, "success fptype:-1\n", "plugin.cfg:2 - syntax error\nNo 'fpmode'", 0},
        File{nullptr, 1, "success fptype:-1\n", "I/O error while reading file.\nNo 'fpmode'", 0}));

} // namespace
