#include "hidcard.h"

#include "CardReader.h"

#include <algorithm>
#include <cstdio>
#include <exception>
#include <mutex>

namespace {

struct Shared
{
    std::mutex mutex;
    idcard::CardReader reader;
};

/// Never destroyed: calls may come until the very end.
Shared& shared()
{
    static auto& shared = *new Shared;
    return shared;
}

/// Calls the reader; no exception leaves the library.
template <class Call> int serve(int failure, Call call)
{
    const std::lock_guard lock(shared().mutex);
    try {
        return call(shared().reader);
    } catch (const std::exception& wrong) {
        std::fprintf(stderr, "card reader: %s\n", wrong.what());
        return failure;
    }
}

/// A text that is too long ends with a whole character.
void copy(const std::string& text, char* to)
{
    size_t bytes = std::min(text.size(), size_t(HIDCARD_TEXT_BYTES - 1));
    const auto isInside = [&](size_t at) { return at < text.size() && (text[at] & 0xC0) == 0x80; };
    while (bytes > 0 && isInside(bytes))
        --bytes;
    std::copy_n(text.data(), bytes, to);
    to[bytes] = '\0';
}

} // namespace

int h_idcard_openDevice(void)
{
    return serve(HIDCARD_NO_READER, [](auto& reader) { return reader.open(); });
}

int h_idcard_closeDevice(void)
{
    return serve(HIDCARD_OK, [](auto& reader) {
        reader.close();
        return HIDCARD_OK;
    });
}

void h_idcard_setPhotoPath(const char* path)
{
    serve(HIDCARD_OK, [path](auto& reader) {
        reader.setPhotoPath(path);
        return HIDCARD_OK;
    });
}

int h_idcard_readInfo(void)
{
    return serve(HIDCARD_READ_FAILED, [](auto& reader) { return reader.read(); });
}

int h_idcard_readData(int, int index, char* text)
{
    return serve(HIDCARD_NO_SUCH_FIELD, [=](const auto& reader) {
        const std::string* const found = text ? reader.text(index) : nullptr;
        if (!found)
            return HIDCARD_NO_SUCH_FIELD;
        copy(*found, text);
        return HIDCARD_OK;
    });
}

int h_idcard_state(void)
{
    return serve(HIDCARD_STATE_NONE, [](auto& reader) { return static_cast<int>(reader.state()); });
}
