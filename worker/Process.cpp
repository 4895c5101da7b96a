#include "worker/Process.h"

#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <chrono>
#include <thread>

namespace quillow::worker {

namespace {

/// For the kernel, between the end of a process's descriptors and the end of the process.
constexpr std::chrono::milliseconds kMomentToEnd{2000};

/// The settings of posix_spawn(3), freed with their holder.
struct SpawnSettings {
    SpawnSettings() {
        ::posix_spawn_file_actions_init(&files);
        ::posix_spawnattr_init(&attributes);
    }
    SpawnSettings(const SpawnSettings&) = delete;
    SpawnSettings& operator=(const SpawnSettings&) = delete;
    ~SpawnSettings() {
        ::posix_spawn_file_actions_destroy(&files);
        ::posix_spawnattr_destroy(&attributes);
    }
    void isolateSignals() {
        sigset_t none;
        sigset_t all;
        ::sigemptyset(&none);
        ::sigfillset(&all);
        ::posix_spawnattr_setsigmask(&attributes, &none);
        ::posix_spawnattr_setsigdefault(&attributes, &all);
        ::posix_spawnattr_setpgroup(&attributes, 0);
        ::posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK | POSIX_SPAWN_SETSIGDEF | POSIX_SPAWN_SETPGROUP);
    }

    posix_spawn_file_actions_t files = {};
    posix_spawnattr_t attributes = {};
};

std::string messageOf(int error) {
    return std::generic_category().message(error);
}

} // namespace

void Process::end() {
    if (number_ < 0) return;
    ::kill(number_, SIGKILL);
    while (::waitpid(number_, nullptr, 0) < 0 && errno == EINTR) {
    }
    number_ = -1;
}

std::optional<int> Process::status() {
    const auto end = std::chrono::steady_clock::now() + kMomentToEnd;
    for (std::chrono::microseconds pause{50}; number_ >= 0; pause *= 2) {
        int status = 0;
        const pid_t waited = ::waitpid(number_, &status, WNOHANG);
        if (waited == 0 && std::chrono::steady_clock::now() < end) {
            std::this_thread::sleep_for(pause);
            continue;
        }
        if (waited < 0 && errno == EINTR) continue;
        if (waited == 0) break; // closed its channel and goes on
        number_ = -1;
        return waited > 0 ? std::optional(status) : std::nullopt;
    }
    this->end();
    return std::nullopt;
}

std::variant<StartedProcess, std::string> startProcess(const WorkerProgram& program,
                                                       const std::vector<std::string>& words) {
    std::array<FileDescriptor, kChannels> own;
    std::array<FileDescriptor, kChannels> others;
    for (std::size_t i = 0; i < kChannels; ++i) {
        int ends[2] = {-1, -1};
        if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return lastError();
        own[i] = FileDescriptor(ends[0]);
        others[i] = FileDescriptor(ends[1]);
    }

    std::vector<std::string> all{program.path};
    all.insert(all.end(), program.words.begin(), program.words.end());
    all.insert(all.end(), words.begin(), words.end());
    std::vector<char*> pointers;
    for (std::string& word : all)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);
    char* const noEnvironment[] = {nullptr};

    SpawnSettings settings;
    settings.isolateSignals();
    for (std::size_t i = 0; i < kChannels; ++i)
        if (const int error = ::posix_spawn_file_actions_adddup2(&settings.files, others[i].number(),
                                                                 STDIN_FILENO + static_cast<int>(i));
            error != 0)
            return messageOf(error);
    pid_t number = -1;
    if (const int error = ::posix_spawn(&number, program.path.c_str(), &settings.files, &settings.attributes,
                                        pointers.data(), noEnvironment);
        error != 0)
        return messageOf(error);
    return StartedProcess{Process(number), std::move(own)};
}

} // namespace quillow::worker
