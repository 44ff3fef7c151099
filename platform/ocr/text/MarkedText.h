#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace mirvak {

/// Characters from `from` to before `to`.
struct Span
{
    size_t from = 0, to = 0;
};

/// Running text of which each character is marked or not. Reentrant.
class MarkedText
{
public:
    MarkedText() = default;
    MarkedText(std::u32string text, bool marked) : text_(std::move(text)), marks_(text_.size(), marked) {}

    const std::u32string& text() const { return text_; }
    bool empty() const { return text_.empty(); }
    size_t size() const { return text_.size(); }
    bool isMarked(size_t i) const { return marks_[i]; }

    void append(char32_t c, bool marked);
    void append(const MarkedText& other);
    /// Another character in the place of one; its mark stays.
    void replace(size_t i, char32_t c) { text_[i] = c; }
    void dropLast();
    void mark(size_t from, size_t to);

    /// What is marked, from the begin, no two of them touching.
    std::vector<Span> spans() const;

private:
    std::u32string text_;
    std::vector<bool> marks_;
};

} // namespace mirvak
