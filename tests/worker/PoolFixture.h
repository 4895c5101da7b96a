// What the tests of the pool share: a pool of workers whose documents may attack.
#pragma once

#include "worker/Pool.h"

#include <gtest/gtest.h>
#include <signal.h>
#include <sys/wait.h>

#include <chrono>
#include <filesystem>
#include <span>
#include <string>
#include <string_view>

namespace quillow::worker::test {

inline const std::string kAttackWorker = QUILLOW_BINARY_DIR "/bin/attack_worker";
inline const std::string kWorker = QUILLOW_BINARY_DIR "/bin/quillow-worker";

/// Limits that attacks reach soon. A loaded machine must not reach the time with a harmless document.
inline Limits tightLimits() {
    Limits limits;
    limits.time = std::chrono::seconds(3);
    limits.memory = std::size_t{256} << 20;
    limits.text = std::size_t{1} << 20;
    return limits;
}

inline Document inMemory(std::string_view bytes) {
    return {std::as_bytes(std::span(bytes))};
}

inline std::size_t openDescriptors() {
    const std::filesystem::directory_iterator entries("/proc/self/fd");
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

/// True if this process has children, ended ones that nobody has waited for included.
inline bool hasChildren() {
    siginfo_t child{};
    return ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) == 0;
}

inline std::string read(Pool& pool, std::string_view bytes) {
    const Extraction extraction = pool.read(inMemory(bytes), DocumentKind::rtf);
    return extraction.text.value_or(std::string(reasonName(extraction.reason)) + ": " + extraction.detail);
}

} // namespace quillow::worker::test
