// Limits the files of this process to a few bytes while it exists, to simulate a full disk.
#pragma once

#include <sys/resource.h>

#include <csignal>

namespace quillow {

class SmallFilesOnly {
public:
    static constexpr rlim_t kMaximumBytes = 1000;

    SmallFilesOnly() {
        ::getrlimit(RLIMIT_FSIZE, &former_);
        struct rlimit small = former_;
        small.rlim_cur = kMaximumBytes;
        ::setrlimit(RLIMIT_FSIZE, &small);
    }
    SmallFilesOnly(const SmallFilesOnly&) = delete;
    SmallFilesOnly& operator=(const SmallFilesOnly&) = delete;
    ~SmallFilesOnly() {
        ::setrlimit(RLIMIT_FSIZE, &former_);
        std::signal(SIGXFSZ, handler_);
    }

private:
    struct rlimit former_ = {};
    void (*handler_)(int) = std::signal(SIGXFSZ, SIG_IGN);
};

} // namespace quillow
