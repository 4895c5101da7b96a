#include "worker/SystemCallFilter.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/futex.h>
#include <linux/seccomp.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <vector>

namespace quillow::worker {

namespace {

#if defined(__x86_64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kArchitecture = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t kArchitecture = 0; ///< the numbers below are not known to be right for it
#endif

/// The calls that are allowed with any arguments, the most frequent first.
constexpr std::uint32_t kAllowed[] = {
    // Talking to the parent and taking the document.
    __NR_recvmsg,
    __NR_read,
    __NR_writev,
    __NR_close,
    // The C library's allocator. mmap and mprotect are allowed below, without execution.
    __NR_munmap,
    __NR_mremap,
    __NR_madvise,
    __NR_brk,
    __NR_getrandom,
    // The end: exit, abort().
    __NR_exit_group,
    __NR_exit,
    __NR_rt_sigprocmask,
    __NR_getpid,
    __NR_gettid,
    // The C++ library, before a thread waits by futex, which is allowed below.
    __NR_sched_yield,
    // A stopped process that goes on; a clock that is not readable from user space.
    __NR_restart_syscall,
    __NR_clock_gettime,
#if defined(__SANITIZE_ADDRESS__)
    // The runtime of the sanitizers.
    __NR_pipe2, // how the undefined-behaviour sanitizer sees whether memory is readable
    __NR_write,
    __NR_sigaltstack,
    __NR_rt_sigaction,
    __NR_rt_sigreturn,
#endif
};

/// Assembles a filter program of the classic Berkeley packet filter, as seccomp(2) takes it.
class Program {
public:
    void load(std::size_t offset) { add(BPF_LD | BPF_W | BPF_ABS, static_cast<std::uint32_t>(offset)); }
    /// Loads the lower half of an argument. The flags and numbers that are tested fit in it.
    void loadArgument(std::size_t number) {
        load(offsetof(seccomp_data, args) + number * sizeof(std::uint64_t) + (kIsLittleEndian ? 0 : 4));
    }
    /// Keeps the given bits of the loaded value.
    void keep(std::uint32_t bits) { add(BPF_ALU | BPF_AND | BPF_K, bits); }
    void allow() { add(BPF_RET | BPF_K, SECCOMP_RET_ALLOW); }
    void kill() { add(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS); }
    /// Skips the next instructions if the loaded value is the given one.
    void skipIf(std::uint32_t value, std::uint8_t instructions) {
        add(BPF_JMP | BPF_JEQ | BPF_K, value, instructions, 0);
    }
    /// Skips the next instructions unless the loaded value is the given one.
    void skipUnless(std::uint32_t value, std::uint8_t instructions) {
        add(BPF_JMP | BPF_JEQ | BPF_K, value, 0, instructions);
    }
    /// Skips the next instructions if the loaded value has one of the bits.
    void skipIfAny(std::uint32_t bits, std::uint8_t instructions) {
        add(BPF_JMP | BPF_JSET | BPF_K, bits, instructions, 0);
    }
    /// For all threads of this process.
    [[nodiscard]] bool install() {
        const sock_fprog program{static_cast<unsigned short>(code_.size()), code_.data()};
        return ::syscall(__NR_seccomp, SECCOMP_SET_MODE_FILTER, SECCOMP_FILTER_FLAG_TSYNC, &program) == 0;
    }

private:
    static constexpr bool kIsLittleEndian = __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__;

    void add(unsigned code, std::uint32_t value, std::uint8_t ifTrue = 0, std::uint8_t ifFalse = 0) {
        code_.push_back({static_cast<std::uint16_t>(code), ifTrue, ifFalse, value});
    }

    std::vector<sock_filter> code_;
};

void allowWithoutExecution(Program& program, std::uint32_t call) {
    program.skipUnless(call, 4);
    program.loadArgument(2);
    program.skipIfAny(PROT_EXEC, 1);
    program.allow();
    program.kill();
}

/// How the C and the C++ library let threads wait for one another.
void allowWaitingForThreads(Program& program) {
    program.skipUnless(__NR_futex, 9);
    program.loadArgument(1);
    program.keep(~static_cast<std::uint32_t>(FUTEX_PRIVATE_FLAG | FUTEX_CLOCK_REALTIME));
    for (const int operation : {FUTEX_WAIT, FUTEX_WAKE, FUTEX_WAIT_BITSET}) {
        program.skipUnless(static_cast<std::uint32_t>(operation), 1);
        program.allow();
    }
    program.kill();
}

/// What abort() does.
void allowSignalsToItself(Program& program) {
    program.skipUnless(__NR_tgkill, 4);
    program.loadArgument(0);
    program.skipUnless(static_cast<std::uint32_t>(::getpid()), 1);
    program.allow();
    program.kill();
}

} // namespace

bool filterSystemCalls() {
    if (kArchitecture == 0) return false;
    Program program;
    program.load(offsetof(seccomp_data, arch));
    program.skipIf(kArchitecture, 1);
    program.kill();
    program.load(offsetof(seccomp_data, nr));
    for (const std::uint32_t call : kAllowed) {
        program.skipUnless(call, 1);
        program.allow();
    }
    allowWithoutExecution(program, __NR_mmap);
    allowWithoutExecution(program, __NR_mprotect);
    allowWaitingForThreads(program);
    allowSignalsToItself(program);
    program.kill();
    return program.install();
}

} // namespace quillow::worker
