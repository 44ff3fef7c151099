#pragma once

#include "TempDir.h"
#include "hidcard.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

/// A test with a reader of identity cards on the virtual desk; none lies there yet.
class CardDesk : public ::testing::Test
{
protected:
    CardDesk()
    {
        std::filesystem::create_directory(folder.file("cards"));
        setenv("XDG_CONFIG_HOME", folder.path().c_str(), 1);
        setenv("LUMRO_DESK", folder.write("desk.cfg", "idcard = { cards = \"cards\"; };").c_str(), 1);
    }
    ~CardDesk() override
    {
        h_idcard_closeDevice();
        unsetenv("LUMRO_DESK");
    }
    /// Later than all before it.
    void lay(const std::string& name, const std::string& text)
    {
        last_write_time(std::filesystem::path(folder.write("cards/" + name, text)),
                        laid += std::chrono::seconds(1));
    }

    const TempDir folder;
    std::filesystem::file_time_type laid =
        std::filesystem::file_time_type::clock::now() - std::chrono::hours(1);
};
