#include "LeftOverFiles.h"

#include "LeftOvers.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <functional>
#include <system_error>
#include <thread>
#include <unistd.h>
#include <vector>

namespace fs = std::filesystem;

namespace {

constexpr size_t mostDays = 31; // of years of folders, the older ones were looked at before
constexpr int giveWay = 19;

bool isDay(const fs::path& name)
{
    const std::string& text = name.native();
    return text.size() == 8 && text.find_first_not_of("0123456789") == std::string::npos;
}

/// Names of the folders of days, the youngest first.
std::vector<fs::path> daysIn(const fs::path& folder)
{
    std::vector<fs::path> days;
    std::error_code error;
    for (fs::directory_iterator entry(folder, error), end; !error && entry != end; entry.increment(error)) {
        if (isDay(entry->path().filename()) && entry->is_directory(error) && !entry->is_symlink(error))
            days.push_back(entry->path().filename());
        error.clear();
    }
    std::sort(days.begin(), days.end(), std::greater<>());
    days.resize(std::min(days.size(), mostDays));
    return days;
}

// No part of the toolkit: the thread may still run while the program ends.
void removeFrom(const fs::path& folder)
{
    mirvak::removeLeftOvers(folder.native());
    for (const fs::path& day : daysIn(folder))
        mirvak::removeLeftOvers((folder / day).native());
}

} // namespace

void leftOverFiles::remove(const QString& folder)
{
    removeFrom(folder.toStdString());
}

void leftOverFiles::removeInBackground(const QString& folder)
{
    try {
        std::thread([path = fs::path(folder.toStdString())] {
            [[maybe_unused]] const int niceness = ::nice(giveWay); // of this thread alone
            try {
                removeFrom(path);
            } catch (const std::exception& failure) {
                std::fprintf(stderr, "left-over files: %s\n", failure.what());
            }
        }).detach();
    } catch (const std::system_error& failure) {
        std::fprintf(stderr, "left-over files: no thread (%s)\n", failure.what());
    }
}
