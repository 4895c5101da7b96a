// A worker whose engine does what its document says: attacks on the lock and on the parent. Any other document is read
// by the real engines.
#include "engines/Explain.h"
#include "engines/Extract.h"
#include "worker/Child.h"
#include "worker/Wire.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <linux/sched.h>
#include <signal.h>
#include <sys/mman.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/uio.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <latch>
#include <map>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

namespace {

using namespace quillow;

Extraction text(const std::string& text) {
    Extraction extraction;
    extraction.reason = Reason::ok;
    extraction.text = text + "\n";
    return extraction;
}

/// What a system call that returned came to. The filter ends the process before that.
Extraction returned(long result) {
    return text(result < 0 ? std::string("refused: ") + std::strerror(errno) : "done");
}

void say(std::string_view bytes) {
    while (!bytes.empty()) {
        const iovec vector{const_cast<char*>(bytes.data()), bytes.size()};
        const ssize_t said = ::writev(STDIN_FILENO, &vector, 1);
        if (said < 0) ::_exit(9);
        bytes.remove_prefix(static_cast<std::size_t>(said));
    }
}

std::string sizes(std::uint64_t body, std::uint64_t bytes) {
    std::string encoded(16, '\0');
    std::memcpy(encoded.data(), &body, sizeof body);
    std::memcpy(encoded.data() + 8, &bytes, sizeof bytes);
    return encoded;
}

[[noreturn]] void spin() {
    for (;;)
        asm volatile("");
}

__attribute__((noinline)) int recurse(int depth) { // NOLINT: the stack is meant to overflow
    volatile char frame[4096];
    frame[depth & 4095] = static_cast<char>(depth);
    return depth < 0 ? 0 : recurse(depth + 1) + frame[0];
}

Extraction exhaustMemory() {
    std::vector<std::string> blocks;
    for (;;)
        blocks.emplace_back(std::size_t{16} << 20, 'x');
}

Extraction sendsDocumentBack(std::span<const std::byte> bytes) {
    // The first descriptor after the channels is that of the document.
    static const char kBytes[] = "changed";
    const iovec vector{const_cast<char*>(kBytes), sizeof kBytes};
    const bool isRefused = ::writev(STDOUT_FILENO + 1, &vector, 1) < 0;
    return text(isRefused && !bytes.empty() ? "refused" : "written");
}

/// Does something in a helping thread while the first thread waits for it.
Extraction inHelper(const RunTogether& runTogether, const std::function<void()>& attack) {
    const pid_t first = ::gettid();
    std::latch done(1);
    runTogether(2, [&] {
        if (::gettid() == first) return done.wait();
        attack();
        done.count_down();
    });
    return text("done");
}

/// The number of threads that run together.
Extraction countThreads(const RunTogether& runTogether, unsigned threads) {
    std::latch all(threads);
    std::atomic<unsigned> count = 0;
    runTogether(threads, [&] {
        ++count;
        all.arrive_and_wait();
    });
    return text(std::to_string(count));
}

constexpr int kFlagsOfAThread = CLONE_VM | CLONE_FS | CLONE_FILES | CLONE_SIGHAND | CLONE_THREAD | CLONE_SYSVSEM;

using Attack = std::function<Extraction(std::span<const std::byte> bytes)>;

const std::map<std::string_view, Attack>& attacks() {
    static const std::map<std::string_view, Attack> kAttacks = {
        {"loop", [](auto) -> Extraction { spin(); }},
        {"sleep",
         [](auto) -> Extraction {
             char byte = 0;
             for (;;)
                 static_cast<void>(::read(STDIN_FILENO, &byte, 1)); // waits for the parent, which waits for it
         }},
        {"allocate", [](auto) { return exhaustMemory(); }},
        {"abort", [](auto) -> Extraction { std::abort(); }},
        {"exit", [](auto) -> Extraction { ::_exit(0); }},
        {"overflow", [](auto) { return text(std::to_string(recurse(0))); }},
        {"crash",
         [](auto) -> Extraction {
             static volatile std::uintptr_t nowhere = 8;
             *reinterpret_cast<volatile int*>(nowhere) = 1; // NOLINT: a crash is wanted
             return {};
         }},
        {"work-two-seconds",
         [](auto) {
             const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(2);
             while (std::chrono::steady_clock::now() < end)
                 asm volatile("");
             return text("done");
         }},
        {"open", [](auto) { return returned(::open("/etc/passwd", O_RDONLY)); }},
        {"create", [](auto) { return returned(::open("/tmp/quillow-attack", O_WRONLY | O_CREAT, 0600)); }},
        {"socket", [](auto) { return returned(::socket(AF_INET, SOCK_STREAM, 0)); }},
        {"fork",
         [](auto) {
             const pid_t child = ::fork();
             if (child == 0) ::_exit(0);
             return returned(child);
         }},
        {"thread",
         [](auto) {
             std::thread([] {}).join();
             return text("done");
         }},
        {"clone-thread",
         [](auto) { return returned(::syscall(SYS_clone, kFlagsOfAThread, nullptr, nullptr, nullptr, nullptr)); }},
        {"exec", [](auto) { return returned(::execl("/bin/true", "true", nullptr)); }},
        {"executable-memory",
         [](auto) {
             return returned(::mmap(nullptr, 4096, PROT_READ | PROT_WRITE | PROT_EXEC, MAP_PRIVATE | MAP_ANONYMOUS, -1,
                                    0) == MAP_FAILED
                                 ? -1
                                 : 0);
         }},
        {"make-executable",
         [](auto) {
             void* const page = ::mmap(nullptr, 4096, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
             return returned(::mprotect(page, 4096, PROT_READ | PROT_EXEC));
         }},
        {"ptrace", [](auto) { return returned(::ptrace(PTRACE_ATTACH, ::getppid(), nullptr, nullptr)); }},
        {"signal-parent", [](auto) { return returned(::syscall(SYS_kill, ::syscall(SYS_getppid), SIGTERM)); }},
        {"read-parent",
         [](auto) { return returned(::syscall(SYS_process_vm_readv, 1, nullptr, 0UL, nullptr, 0UL, 0UL)); }},
        {"raise-limit",
         [](auto) {
             const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
             return returned(::setrlimit(RLIMIT_AS, &unlimited));
         }},
        {"change-mode", [](auto) { return returned(::fchmod(STDOUT_FILENO + 1, 0777)); }},
        {"write-document", sendsDocumentBack},
        {"garbage",
         [](auto) -> Extraction {
             say(std::string(4096, '\xFF'));
             spin();
         }},
        {"half",
         [](auto) -> Extraction {
             say(sizes(100, 10) + "ten bytes");
             ::_exit(0);
         }},
        {"promise",
         [](auto) -> Extraction {
             say(sizes(64, std::uint64_t{1} << 62));
             spin();
         }},
        {"promise-much",
         [](auto) -> Extraction {
             // As much as the parent takes from this worker, of which a few bytes arrive.
             say(sizes(0, std::uint64_t{1} << 20) + "a few bytes");
             spin();
         }},
        {"flood",
         [](auto) -> Extraction {
             for (const std::string piece(1 << 16, 'x');;)
                 say(piece);
         }},
        {"drip",
         [](auto) -> Extraction {
             say(sizes(0, 1000));
             for (unsigned turns = 0;; ++turns) {
                 asm volatile("");
                 if (turns % (1U << 28) == 0) say("x");
             }
         }},
        {"forged",
         [](auto) -> Extraction {
             // An answer that is right in all but the token, which the engine does not know.
             const Extraction extraction = text("forged");
             const std::string body = worker::encodeAnswer(0, extraction);
             say(sizes(body.size(), extraction.text->size()) + body + *extraction.text);
             spin();
         }},
        {"no-text-form", [](auto) { return text("a bell \a"); }},
        {"not-utf-8", [](auto) { return text("\xC3("); }},
        {"forbidden-reason", [](auto) { return failed(Reason::skipped, "the parent decides that"); }},
        {"long-text", [](auto) { return text(std::string(std::size_t{2} << 20, 'x')); }},
    };
    return kAttacks;
}

Extraction readOrAttack(std::span<const std::byte> bytes, DocumentKind kind, const Options& options,
                        const BytesDone& done) {
    const std::string_view document(reinterpret_cast<const char*>(bytes.data()), bytes.size());
    constexpr std::string_view kMark = "attack:";
    if (!document.starts_with(kMark)) return extract(bytes, kind, options, done);
    const std::string_view rest = document.substr(kMark.size());
    if (rest.starts_with("threads")) return countThreads(options.runTogether, options.threads);
    if (rest.starts_with("helper-open"))
        return inHelper(options.runTogether, [] { static_cast<void>(::open("/etc/passwd", O_RDONLY)); });
    if (rest.starts_with("helper-overflow"))
        return inHelper(options.runTogether, [] { static_cast<void>(recurse(0)); });
    if (rest.starts_with("helper-abort")) return inHelper(options.runTogether, [] { std::abort(); });
    if (rest.starts_with("helper-loop")) return inHelper(options.runTogether, [] { spin(); });
    const auto found = attacks().find(rest.substr(0, rest.find(' ')));
    if (found == attacks().end()) return failed(Reason::damaged, "no such attack");
    return found->second(bytes);
}

} // namespace

int main(int argc, char** argv) {
    std::vector<const char*> words(argv + 1, argv + argc);
    return worker::serveDocuments(words, loadLibraries, {readOrAttack, explain});
}
