#include "tests/cli/RunConvert.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>
#include <thread>
#include <utility>

namespace quillow::test {

namespace {

int memoryFile(const std::string& content = {}) {
    const int file = ::memfd_create("quillow-test", MFD_CLOEXEC);
    if (file < 0 || ::pwrite(file, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
        throw std::runtime_error("no memory file");
    return file;
}

std::string contentOf(int file) {
    std::string content(static_cast<std::size_t>(::lseek(file, 0, SEEK_END)), '\0');
    if (::pread(file, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size()))
        throw std::runtime_error("memory file unreadable");
    ::close(file);
    return content;
}

} // namespace

Running::Running(const std::vector<std::string>& arguments, const RunSetting& setting) {
    std::vector<std::string> words = setting.prefix;
    words.push_back(setting.program.empty() ? QUILLOW_BINARY_DIR "/bin/quillow-convert" : setting.program);
    words.insert(words.end(), arguments.begin(), arguments.end());
    std::vector<char*> pointers;
    for (std::string& word : words)
        pointers.push_back(word.data());
    pointers.push_back(nullptr);

    const int input = memoryFile(setting.input);
    output_ = setting.outputPath.empty() ? memoryFile() : ::open(setting.outputPath.c_str(), O_WRONLY | O_CLOEXEC);
    errors_ =
        setting.errorsPath.empty() ? memoryFile() : ::open(setting.errorsPath.c_str(), O_WRONLY | O_CLOEXEC | O_NOCTTY);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_adddup2(&actions, input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, output_, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&actions, errors_, STDERR_FILENO);
    if (!setting.folder.empty()) ::posix_spawn_file_actions_addchdir_np(&actions, setting.folder.c_str());
    if (::posix_spawnp(&process_, pointers[0], &actions, nullptr, pointers.data(), environ) != 0)
        throw std::runtime_error("cannot run " + words[0]);
    ::posix_spawn_file_actions_destroy(&actions);
    ::close(input);
    if (!setting.outputPath.empty()) ::close(std::exchange(output_, -1));
    if (!setting.errorsPath.empty()) ::close(std::exchange(errors_, -1));
}

Outcome Running::wait() {
    int status = 0;
    rusage usage = {};
    ::wait4(process_, &status, 0, &usage);
    Outcome outcome;
    outcome.peakMemory = usage.ru_maxrss;
    outcome.exitCode = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    outcome.signal = WIFSIGNALED(status) ? WTERMSIG(status) : 0;
    if (output_ >= 0) outcome.output = contentOf(output_);
    if (errors_ >= 0) outcome.errors = contentOf(errors_);
    return outcome;
}

Outcome run(const std::vector<std::string>& arguments, const RunSetting& setting) {
    return Running(arguments, setting).wait();
}

bool appears(const std::function<bool()>& condition) {
    for (int i = 0; i < 2000; ++i) {
        if (condition()) return true;
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    }
    return false;
}

} // namespace quillow::test
