// Limits the memory that the process can still get while it exists. Does not work with AddressSanitizer, which
// reserves all addresses.
#pragma once

#include <sys/resource.h>
#include <unistd.h>

#include <fstream>

namespace quillow {

class LittleMemory {
public:
    static constexpr rlim_t kMoreBytes = rlim_t{64} << 20;

    LittleMemory() {
        rlim_t pages = 0;
        std::ifstream("/proc/self/statm") >> pages;
        ::getrlimit(RLIMIT_AS, &former_);
        struct rlimit small = former_;
        small.rlim_cur = pages * static_cast<rlim_t>(::sysconf(_SC_PAGESIZE)) + kMoreBytes;
        ::setrlimit(RLIMIT_AS, &small);
    }
    LittleMemory(const LittleMemory&) = delete;
    LittleMemory& operator=(const LittleMemory&) = delete;
    ~LittleMemory() { ::setrlimit(RLIMIT_AS, &former_); }

private:
    struct rlimit former_ = {};
};

} // namespace quillow
