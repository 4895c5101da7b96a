// Asks for a password on the terminal.
#pragma once

#include <mutex>
#include <optional>
#include <string>

namespace quillow::cli {

class PasswordPrompt {
public:
    /// What the user types on the terminal of the program; empty without a terminal. What is typed does not appear.
    /// Asks once: every further call gives the same. May be called from several threads at once.
    [[nodiscard]] const std::string& password();

    /// Makes the terminal show again what is typed. Call it before the process ends in the middle of a question.
    static void abandon();

private:
    std::once_flag asked_;
    std::string password_;
};

} // namespace quillow::cli
