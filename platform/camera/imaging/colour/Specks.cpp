#include "Specks.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace mirvak {

namespace {

struct Run
{
    int row, begin, end; ///< end: behind the last
    int group;           ///< index of another run of the same speck, or of itself
    int area;            ///< of the whole, where the run stands for its group
};

// Rows fall into runs, and runs that touch those of the row above belong together: a page has many pixels and
// few runs (He and others, Fast connected-component labeling, 2009).
class Runs
{
public:
    void add(const unsigned char* row, int y, int width)
    {
        const size_t first = runs_.size();
        for (int x = 0; x < width;) {
            const void* found = std::memchr(row + x, 255, static_cast<size_t>(width - x));
            if (!found)
                break;
            const int begin = static_cast<int>(static_cast<const unsigned char*>(found) - row);
            const void* behind = std::memchr(row + begin, 0, static_cast<size_t>(width - begin));
            const int end =
                behind ? static_cast<int>(static_cast<const unsigned char*>(behind) - row) : width;
            runs_.push_back({y, begin, end, static_cast<int>(runs_.size()), end - begin});
            x = end;
        }
        joinWithAbove(first);
        above_ = first;
    }

    void erase(cv::Mat& black, int largest)
    {
        for (size_t i = 0; i < runs_.size(); ++i) {
            const Run& run = runs_[i];
            if (runs_[headOf(static_cast<int>(i))].area <= largest)
                std::memset(black.ptr(run.row) + run.begin, 0, static_cast<size_t>(run.end - run.begin));
        }
    }

private:
    size_t headOf(int at)
    {
        while (runs_[static_cast<size_t>(at)].group != at) {
            int& group = runs_[static_cast<size_t>(at)].group;
            group = runs_[static_cast<size_t>(group)].group;
            at = group;
        }
        return static_cast<size_t>(at);
    }

    void join(size_t a, size_t b)
    {
        const size_t first = headOf(static_cast<int>(a)), second = headOf(static_cast<int>(b));
        if (first == second)
            return;
        runs_[second].group = static_cast<int>(first);
        runs_[first].area += runs_[second].area;
    }

    // Those from above_ to `first` lie in the row above.
    void joinWithAbove(size_t first)
    {
        size_t upper = above_;
        for (size_t i = first; i < runs_.size(); ++i) {
            while (upper < first && runs_[upper].end < runs_[i].begin)
                ++upper;
            for (size_t u = upper; u < first && runs_[u].begin <= runs_[i].end; ++u)
                join(u, i);
        }
    }

    std::vector<Run> runs_;
    size_t above_ = 0;
};

} // namespace

void removeSpecks(cv::Mat& black, int largest)
{
    Runs runs;
    for (int y = 0; y < black.rows; ++y)
        runs.add(black.ptr(y), y, black.cols);
    runs.erase(black, largest);
}

} // namespace mirvak
