// Passwords end to end: where they come from, and that nobody sees them.
#include "cli/Program.h"
#include "tests/cli/RunConvert.h"
#include "tests/cli/TemporaryFolder.h"

#include <gtest/gtest.h>
#include <pty.h>
#include <signal.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <termios.h>
#include <unistd.h>

#include <chrono>
#include <thread>

namespace quillow::cli {
namespace {

using namespace std::chrono_literals;
using test::Outcome;
using test::readFile;
using test::run;
using test::TemporaryFolder;
using Names = std::vector<std::string>;

std::string dataPath(const std::string& name) {
    return QUILLOW_SOURCE_DIR "/tests/data/pdf/" + name;
}

/// A PDF that "secret" opens for its user and "owner" for its owner.
std::string lockedPdf() {
    return dataPath("needsPassword.in");
}

std::string text() {
    return readFile(dataPath("plain.txt"));
}

TEST(Password, opensAsUserAndAsOwner) {
    EXPECT_EQ(run({"--password", "secret", lockedPdf()}).output, text());
    EXPECT_EQ(run({"--password=owner", lockedPdf()}).output, text());
}

TEST(Password, missingOrWrongOneIsLockedAndNotShown) {
    const std::string path = lockedPdf();
    EXPECT_EQ(run({path}).errors, "quillow-convert: " + path + ": locked (a password is needed)\n");

    const Outcome wrong = run({"-v", "--password", "guess", path});

    EXPECT_EQ(wrong.exitCode, kSomeFailed);
    EXPECT_EQ(wrong.output, "");
    EXPECT_EQ(wrong.errors, "quillow-convert: " + path + ": locked (the password is wrong)\n");
}

TEST(Password, withoutTheLibraryThatDecryptsADocumentIsUnreadableNotLocked) {
    const TemporaryFolder folder;
    const std::string library =
        folder.put("libnettle.so.8", "not a library"); // the loader finds it first and refuses it
    test::RunSetting setting;
    setting.prefix = {"env", "LD_LIBRARY_PATH=" + library.substr(0, library.rfind('/'))};
    const std::string encrypted = dataPath("emptyPassword.in");

    // A worker would not take the path of libraries from its environment.
    const Outcome done = run({"--in-process", encrypted, dataPath("plain.in")}, setting);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.output, text());
    EXPECT_EQ(done.errors,
              "quillow-convert: " + encrypted + ": unreadable (libnettle 8, which decrypts PDFs, is not installed)\n");
}

TEST(Password, changesNothingForOtherDocuments) {
    EXPECT_EQ(run({"--password", "secret", dataPath("plain.in"), dataPath("emptyPassword.in"), lockedPdf()}).output,
              text() + text() + text());
}

TEST(Password, isTheFirstLineOfAFile) {
    const TemporaryFolder folder;
    for (const std::string_view content : {"secret", "secret\n", "secret\r\nmore\n"})
        EXPECT_EQ(run({"--password-file", folder.put("password", content), lockedPdf()}).output, text()) << content;
    EXPECT_EQ(run({"--password-file", folder.put("password", "\nsecret\n"), lockedPdf()}).exitCode, kSomeFailed);
    test::RunSetting setting;
    setting.input = "secret\n";
    EXPECT_EQ(run({"--password-file", "-", lockedPdf()}, setting).output, text());
}

TEST(Password, fileThatCannotBeReadEndsTheRun) {
    const Outcome done = run({"--password-file", "/nowhere/password", lockedPdf()});

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.errors, "quillow-convert: /nowhere/password: unreadable (No such file or directory)\n");
}

/// What /proc shows of a process's command line.
std::string commandLine(pid_t process) {
    return readFile("/proc/" + std::to_string(process) + "/cmdline");
}

TEST(Password, listOfProcessesDoesNotShowIt) {
    const TemporaryFolder folder;
    const std::string pipe = folder.at("pipe.pdf"); // nobody writes to it, so the program waits
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const Names& words : {Names{"--password", "topsecret"}, Names{"--password=topsecret"}}) {
        Names all = words;
        all.push_back(pipe);
        test::Running running(all, {});
        std::string shown;
        do {
            std::this_thread::sleep_for(1ms);
            shown = commandLine(running.process());
        } while (shown.find("*********") == std::string::npos && !shown.empty());
        EXPECT_EQ(shown.find("topsecret"), std::string::npos);
        EXPECT_NE(shown.find("pipe.pdf"), std::string::npos);
        ::kill(running.process(), SIGKILL); // it may not have its signal handlers yet
        static_cast<void>(running.wait());
    }
}

/// The program with a terminal of its own.
class OnTerminal {
public:
    explicit OnTerminal(Names words) {
        words.insert(words.begin(), QUILLOW_BINARY_DIR "/bin/quillow-convert");
        std::vector<char*> pointers;
        for (std::string& word : words)
            pointers.push_back(word.data());
        pointers.push_back(nullptr);
        process_ = ::forkpty(&terminal_, nullptr, nullptr, nullptr);
        if (process_ != 0) return;
        ::execv(pointers[0], pointers.data());
        ::_exit(127);
    }
    OnTerminal(const OnTerminal&) = delete;
    OnTerminal& operator=(const OnTerminal&) = delete;
    ~OnTerminal() { ::close(terminal_); }

    /// Collects what the program shows until it has shown the words, or ends.
    void waitFor(std::string_view words) {
        while (shown_.find(words) == std::string::npos && readMore()) {
        }
    }
    void type(std::string_view keys) const { EXPECT_EQ(::write(terminal_, keys.data(), keys.size()), keys.size()); }
    [[nodiscard]] bool showsTyping() const {
        termios settings = {};
        return ::tcgetattr(terminal_, &settings) == 0 && (settings.c_lflag & ECHO) != 0;
    }
    /// Everything that the program showed, when it has ended.
    std::string end() {
        while (readMore()) {
        }
        ::waitpid(process_, &status_, 0);
        return shown_;
    }
    [[nodiscard]] int exitCode() const { return WIFEXITED(status_) ? WEXITSTATUS(status_) : -1; }

private:
    bool readMore() {
        char bytes[1024];
        const ssize_t count = ::read(terminal_, bytes, sizeof bytes);
        if (count > 0) shown_.append(bytes, static_cast<std::size_t>(count));
        return count > 0;
    }

    pid_t process_ = -1;
    int terminal_ = -1;
    int status_ = 0;
    std::string shown_;
};

/// As a terminal shows it.
std::string onScreen(std::string_view plain) {
    std::string shown;
    for (const char c : plain)
        shown += c == '\n' ? std::string("\r\n") : std::string(1, c);
    return shown;
}

TEST(Password, isAskedForOnceWithoutShowingIt) {
    OnTerminal program({"--password-prompt", "-j2", lockedPdf(), lockedPdf()});
    program.waitFor("Password: ");
    EXPECT_FALSE(program.showsTyping());
    program.type("secret\n");

    EXPECT_EQ(program.end(), onScreen("Password: \n" + text() + text()));
    EXPECT_EQ(program.exitCode(), kAllConverted);
}

TEST(Password, isNotAskedForWhereNoDocumentNeedsIt) {
    OnTerminal program({"--password-prompt", dataPath("plain.in"), dataPath("emptyPassword.in")});

    EXPECT_EQ(program.end(), onScreen(text() + text()));
}

TEST(Password, interruptedQuestionLeavesTheTerminalAsItWas) {
    OnTerminal program({"--password-prompt", lockedPdf()});
    program.waitFor("Password: ");
    program.type("\x03"); // Ctrl+C
    program.end();

    EXPECT_EQ(program.exitCode(), kInterrupted);
    EXPECT_TRUE(program.showsTyping());
}

TEST(Password, withoutATerminalNobodyIsAsked) {
    test::RunSetting setting;
    setting.prefix = {"setsid", "--wait"};
    const Outcome done = run({"--password-prompt", lockedPdf()}, setting);

    EXPECT_EQ(done.exitCode, kSomeFailed);
    EXPECT_EQ(done.errors, "quillow-convert: " + lockedPdf() + ": locked (a password is needed)\n");
}

} // namespace
} // namespace quillow::cli
