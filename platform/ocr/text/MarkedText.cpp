#include "MarkedText.h"

#include <algorithm>

namespace mirvak {

void MarkedText::append(char32_t c, bool marked)
{
    text_ += c;
    marks_.push_back(marked);
}

void MarkedText::append(const MarkedText& other)
{
    text_ += other.text_;
    marks_.insert(marks_.end(), other.marks_.begin(), other.marks_.end());
}

void MarkedText::dropLast()
{
    text_.pop_back();
    marks_.pop_back();
}

void MarkedText::mark(size_t from, size_t to)
{
    for (size_t i = from; i < std::min(to, marks_.size()); ++i)
        marks_[i] = true;
}

std::vector<Span> MarkedText::spans() const
{
    std::vector<Span> spans;
    for (size_t i = 0; i < marks_.size(); ++i) {
        if (!marks_[i])
            continue;
        if (spans.empty() || spans.back().to != i)
            spans.push_back({i, i});
        spans.back().to = i + 1;
    }
    return spans;
}

} // namespace mirvak
