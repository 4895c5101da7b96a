#include "worker/Program.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

namespace quillow::worker {

namespace fs = std::filesystem;

std::optional<std::string> findWorkerProgram() {
    std::error_code error;
    const fs::path self = fs::read_symlink("/proc/self/exe", error);
    if (error) return std::nullopt;
    const fs::path folder = self.parent_path();
    for (const fs::path& place : {folder, folder / QUILLOW_LIBEXEC_FROM_BIN}) {
        const fs::path candidate = (place / "quillow-worker").lexically_normal();
        if (::access(candidate.c_str(), X_OK) == 0) return candidate.string();
    }
    return std::nullopt;
}

} // namespace quillow::worker
