#pragma once

#include <sys/resource.h>

#include <csignal>

/// Files larger than the limit cannot be written while it lives, as on a full disk.
class DiskFullAt
{
public:
    explicit DiskFullAt(rlim_t bytes) : handler_(std::signal(SIGXFSZ, SIG_IGN))
    {
        getrlimit(RLIMIT_FSIZE, &before_);
        rlimit limit = before_;
        limit.rlim_cur = bytes;
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~DiskFullAt()
    {
        setrlimit(RLIMIT_FSIZE, &before_);
        std::signal(SIGXFSZ, handler_);
    }
    DiskFullAt(const DiskFullAt&) = delete;
    DiskFullAt& operator=(const DiskFullAt&) = delete;

private:
    rlimit before_{};
    void (*handler_)(int);
};
