// Whatever comes from a reader: frames are found the same however they are cut.
#include "CardFrame.h"
#include "TextBlock.h"

#include <cstdlib>

using namespace idcard;

static Bytes answers(const std::uint8_t* data, size_t size, size_t step)
{
    Bytes all;
    AnswerParser parser;
    for (size_t at = 0; at < size; at += step) {
        parser.add(data + at, std::min(step, size - at));
        CardAnswer answer;
        for (auto found = parser.next(answer); found != AnswerParser::Found::nothing;
             found = parser.next(answer)) {
            all.push_back(static_cast<std::uint8_t>(found));
            all.insert(all.end(), answer.data.begin(), answer.data.end());
            answer.data.clear();
        }
    }
    return all;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    Bytes block(data, data + size);
    block.resize(textBlockBytes);
    decodeTextBlock(block);
    if (answers(data, size, size + 1) != answers(data, size, 1))
        std::abort();
    return 0;
}
