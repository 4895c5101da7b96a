#include "cli/Passwords.h"

#include <cstring>
#include <string_view>

namespace quillow::cli {

namespace {

constexpr std::string_view kOption = "--password";
constexpr std::string_view kWithValue = "--password=";

void overwrite(char* text) {
    std::memset(text, '*', std::strlen(text));
}

} // namespace

void hidePasswords(std::span<char* const> words) {
    bool isValue = false;
    for (char* const word : words) {
        const bool isOption = kOption == word;
        if (isValue)
            overwrite(word);
        else if (std::string_view(word).starts_with(kWithValue))
            overwrite(word + kWithValue.size());
        isValue = isOption;
    }
}

} // namespace quillow::cli
