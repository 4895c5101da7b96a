#include "worker/Landlock.h"

#include "posix/FileDescriptor.h"

#include <sys/syscall.h>
#include <unistd.h>

#include <cstddef>

namespace quillow::worker {

namespace {

// Numbers and layout of the kernel's interface (Documentation/userspace-api/landlock.rst). The system's header may be
// older than the kernel, so they are written down here. The system calls have one number on all architectures.
constexpr long kCreateRuleset = 444;
constexpr long kRestrictSelf = 446;
constexpr unsigned kAskForVersion = 1;

struct RulesetAttributes {
    std::uint64_t fileRights = 0;
    std::uint64_t networkRights = 0; ///< since ABI 4
    std::uint64_t scopes = 0;        ///< since ABI 6
};

constexpr std::uint64_t lowestBits(unsigned count) {
    return (std::uint64_t{1} << count) - 1;
}

/// The rights that this ABI can deny; the kernel refuses a bit that it does not know.
RulesetAttributes allRights(std::uint32_t abi) {
    RulesetAttributes rights;
    unsigned fileRights = 13;      // ABI 1: execute, read, write, list, remove and create each kind of file
    if (abi >= 2) fileRights = 14; // link or rename to another folder
    if (abi >= 3) fileRights = 15; // truncate
    if (abi >= 5) fileRights = 16; // ioctl on devices
    rights.fileRights = lowestBits(fileRights);
    if (abi >= 4) rights.networkRights = lowestBits(2); // bind and connect TCP
    if (abi >= 6) rights.scopes = lowestBits(2);        // abstract sockets and signals to the outside
    return rights;
}

/// An older kernel refuses a larger structure than its own.
std::size_t sizeFor(std::uint32_t abi) {
    if (abi >= 6) return sizeof(RulesetAttributes);
    return abi >= 4 ? offsetof(RulesetAttributes, scopes) : offsetof(RulesetAttributes, networkRights);
}

} // namespace

std::uint32_t denyFilesAndNetwork() {
    const long version = ::syscall(kCreateRuleset, nullptr, std::size_t{0}, kAskForVersion);
    if (version < 1) return 0;
    const auto abi = static_cast<std::uint32_t>(version);
    const RulesetAttributes rights = allRights(abi);
    // A rule set without rules: everything that it handles is denied.
    const FileDescriptor ruleset(static_cast<int>(::syscall(kCreateRuleset, &rights, sizeFor(abi), 0U)));
    if (!ruleset.isOpen()) return 0;
    return ::syscall(kRestrictSelf, ruleset.number(), 0U) == 0 ? abi : 0;
}

} // namespace quillow::worker
