// The program's own definitions of these functions come before those of the libraries.
#include "Trouble.h"

#include <algorithm>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

std::function<void()> Trouble::onSync;
std::function<bool()> Trouble::onEncode;

void Trouble::awaitEndOf(const std::string& thread)
{
    const auto runs = [&](const auto& task) {
        std::string name;
        std::getline(std::ifstream(task.path() / "comm"), name);
        return name == thread;
    };
    const auto isThere = [&] {
        const std::filesystem::directory_iterator tasks("/proc/self/task");
        return std::any_of(begin(tasks), end(tasks), runs);
    };
    while (isThere())
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
}

extern "C" {

struct AVCodecContext;
struct AVFrame;

__attribute__((visibility("default"))) int fsync(int fd)
{
    if (Trouble::onSync)
        Trouble::onSync();
    return static_cast<int>(syscall(SYS_fsync, fd));
}

__attribute__((visibility("default"))) int avcodec_send_frame(AVCodecContext* encoder, const AVFrame* frame)
{
    static const auto real = reinterpret_cast<decltype(&avcodec_send_frame)>(
        dlsym(dlopen("libavcodec.so.59", RTLD_LAZY | RTLD_NOLOAD), "avcodec_send_frame"));
    return Trouble::onEncode && !Trouble::onEncode() ? -1 : real(encoder, frame);
}
}
