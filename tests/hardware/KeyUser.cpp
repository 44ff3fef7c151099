#include "KeyUser.h"

#include "mirvakcamera.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <csignal>
#include <cstdio>
#include <fcntl.h>
#include <grp.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

[[noreturn]] void listenAs(uid_t user, int output)
{
    dup2(output, STDERR_FILENO);
    if (user != 0 && (setgroups(0, nullptr) != 0 || setgid(user) != 0 || setuid(user) != 0))
        _exit(1);
    prctl(PR_SET_PDEATHSIG, SIGKILL); // not beyond the test; a change of the user would undo it
    const auto tell = [](int key, void*) { std::fprintf(stderr, "key %d\n", key); };
    MirvakCamera library;
    if (library.MirvakHid_Init(nullptr, nullptr, tell, nullptr) != MIRVAK_OK)
        _exit(1);
    for (;;)
        pause();
}

std::string wordIn(const std::filesystem::path& file)
{
    std::string word;
    std::getline(std::ifstream(file), word);
    return word;
}

} // namespace

KeyUser::KeyUser(uid_t user)
{
    int output[2];
    if (pipe2(output, O_CLOEXEC) != 0 || (process_ = fork()) < 0)
        throw std::runtime_error("no process");
    if (process_ == 0)
        listenAs(user, output[1]);
    close(output[1]);
    output_ = output[0];
    says_ = Lines(output_);
}

KeyUser::~KeyUser()
{
    kill(process_, SIGKILL);
    waitpid(process_, nullptr, 0);
    close(output_);
}

bool KeyUser::waitsForKeys() const
{
    const std::filesystem::path process = "/proc/" + std::to_string(process_);
    std::error_code gone; // descriptors come and go while the folder is read
    const std::filesystem::directory_iterator open(process / "fd", gone), tasks(process / "task", gone);
    return std::any_of(begin(open),
                       end(open),
                       [&](const auto& descriptor) {
                           const auto target = std::filesystem::read_symlink(descriptor, gone).string();
                           return target.rfind("/dev/input/event", 0) == 0;
                       }) &&
           std::any_of(begin(tasks), end(tasks), [](const auto& task) {
               return wordIn(task.path() / "comm") == "camera keys" &&
                      wordIn(task.path() / "wchan").find("poll") != std::string::npos;
           });
}
