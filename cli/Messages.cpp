#include "cli/Messages.h"

#include "posix/FileDescriptor.h"

#include <unistd.h>

namespace quillow::cli {

namespace {

constexpr std::string_view kProgram = "quillow-convert: ";
constexpr std::string_view kHexDigits = "0123456789abcdef";

} // namespace

std::string printable(std::string_view path) {
    std::string shown;
    for (const char c : path) {
        const auto byte = static_cast<unsigned char>(c);
        if (byte >= 0x20 && byte != 0x7F) {
            shown.push_back(c);
        } else if (c == '\n') {
            shown += "\\n";
        } else if (c == '\t') {
            shown += "\\t";
        } else {
            shown += "\\x";
            shown.push_back(kHexDigits[byte >> 4]);
            shown.push_back(kHexDigits[byte & 0xF]);
        }
    }
    return shown;
}

std::string inQuotes(std::string_view text) {
    return "'" + std::string(text) + "'";
}

std::string resultLine(std::string_view path, Reason reason, std::string_view detail) {
    std::string line = std::string(kProgram) + printable(path) + ": " + std::string(reasonName(reason));
    if (!detail.empty()) line += " (" + printable(detail) + ")";
    line += '\n';
    return line;
}

std::string programLine(std::string_view message) {
    return std::string(kProgram) + printable(message) + "\n";
}

void complain(std::string_view line) {
    // If standard error fails, there is no place left to report it.
    static_cast<void>(writeAll(STDERR_FILENO, line));
}

} // namespace quillow::cli
