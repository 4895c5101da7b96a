#include "cli/PasswordPrompt.h"

#include "posix/FileDescriptor.h"

#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

#include <string_view>

namespace quillow::cli {

namespace {

/// A terminal that hides what is typed. There is one in a process, so that an interrupt finds it.
std::mutex hiddenMutex;
int hiddenTerminal = -1;
termios shownSettings = {};

void hideTyping(int terminal) {
    const std::lock_guard lock(hiddenMutex);
    if (::tcgetattr(terminal, &shownSettings) != 0) return;
    termios hidden = shownSettings;
    hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
    if (::tcsetattr(terminal, TCSANOW, &hidden) == 0) hiddenTerminal = terminal;
}

void showTyping() {
    const std::lock_guard lock(hiddenMutex);
    if (hiddenTerminal >= 0) ::tcsetattr(hiddenTerminal, TCSANOW, &shownSettings);
    hiddenTerminal = -1;
}

/// Up to the line end, or the end of what is typed.
std::string readLine(int terminal) {
    std::string line;
    for (;;) {
        char byte = 0;
        const ssize_t count = ::read(terminal, &byte, 1);
        if (count < 0 && errno == EINTR) continue;
        if (count != 1 || byte == '\n') return line;
        line += byte;
    }
}

std::string ask() {
    const FileDescriptor terminal(::open("/dev/tty", O_RDWR | O_CLOEXEC | O_NOCTTY));
    if (!terminal.isOpen()) return {};
    hideTyping(terminal.number());
    static_cast<void>(writeAll(terminal.number(), "Password: "));
    std::string password = readLine(terminal.number());
    showTyping();
    static_cast<void>(writeAll(terminal.number(), "\n")); // the one that was typed does not appear
    return password;
}

} // namespace

const std::string& PasswordPrompt::password() {
    std::call_once(asked_, [this] { password_ = ask(); });
    return password_;
}

void PasswordPrompt::abandon() {
    showTyping();
}

} // namespace quillow::cli
