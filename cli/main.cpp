#include "cli/Passwords.h"
#include "cli/Program.h"

#include <string>
#include <string_view>
#include <vector>

int main(int argc, char** argv) {
    const std::span<char* const> words(argv + (argc > 0 ? 1 : 0), argv + argc);
    const std::vector<std::string> copies(words.begin(), words.end());
    quillow::cli::hidePasswords(words);
    return quillow::cli::runProgram(std::vector<std::string_view>(copies.begin(), copies.end()));
}
