// Runs the real quillow-convert and returns its exit code and output.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace quillow::test {

struct Outcome {
    int exitCode = -1; ///< -1 if a signal ended it
    int signal = 0;
    std::string output;
    std::string errors;
    long peakMemory = 0; ///< in KiB, of the program without its workers
};

struct RunSetting {
    std::string input;               ///< the content of standard input
    std::string outputPath;          ///< if not empty, standard output goes to this file, not to Outcome::output
    std::string errorsPath;          ///< the same for standard error
    std::string folder;              ///< the working folder
    std::string program;             ///< if not empty, a copy of the program to run
    std::vector<std::string> prefix; ///< a command that runs the program
};

/// A running program. Call wait() once.
class Running {
public:
    Running(const std::vector<std::string>& arguments, const RunSetting& setting = {});
    [[nodiscard]] pid_t process() const { return process_; }
    [[nodiscard]] Outcome wait();

private:
    pid_t process_ = -1;
    int output_ = -1;
    int errors_ = -1;
};

[[nodiscard]] Outcome run(const std::vector<std::string>& arguments, const RunSetting& setting = {});

/// Waits until the condition holds. False if that takes longer than any machine should need.
[[nodiscard]] bool appears(const std::function<bool()>& condition);

} // namespace quillow::test
