#include "cli/MappedFile.h"

#include <signal.h>
#include <sys/mman.h>
#include <unistd.h>

#include <array>
#include <atomic>
#include <cerrno>
#include <cstdint>
#include <utility>

namespace quillow::cli {

namespace {

/// A mapping as the signal handler sees it. A slot of size 0 is free, or is just being filled or emptied.
struct Slot {
    std::atomic<bool> taken = false;
    std::atomic<std::uintptr_t> begin = 0;
    std::atomic<std::size_t> size = 0;
    std::atomic<bool> lacksBytes = false;
};
static_assert(std::atomic<std::uintptr_t>::is_always_lock_free && std::atomic<bool>::is_always_lock_free);

std::array<Slot, MappedFile::kMostMappings> slots;

std::uintptr_t pageSize() {
    static const auto size = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    return size;
}

/// Maps zeros over the page of the address and all later pages of the mapping. The processor then repeats the read.
bool fillWithZeros(Slot& slot, std::uintptr_t address) {
    const std::uintptr_t begin = slot.begin;
    const std::size_t size = slot.size;
    if (address < begin || address - begin >= size) return false;
    const std::uintptr_t page = address & ~(pageSize() - 1);
    // The address is in one of our live mappings, so no other memory is replaced.
    void* const zeros = ::mmap(reinterpret_cast<void*>(page), begin + size - page, PROT_READ, // NOLINT: from the system
                               MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1, 0);
    if (zeros == MAP_FAILED) return false;
    slot.lacksBytes = true;
    return true;
}

/// Handles SIGBUS. Calls only functions that are allowed in a signal handler.
void onBusError(int number, siginfo_t* information, void*) {
    const int savedError = errno;
    const auto address = reinterpret_cast<std::uintptr_t>(information->si_addr);
    bool isFilled = false;
    if (information->si_code > 0) // from the kernel, not sent by a program: the address is valid
        for (Slot& slot : slots)
            isFilled = isFilled || fillWithZeros(slot, address);
    if (!isFilled) {
        ::signal(number, SIG_DFL);
        ::raise(number); // ends the program when the handler returns
    }
    errno = savedError;
}

bool handleBusErrors() {
    (void)pageSize(); // computes the value before the handler needs it
    struct sigaction action = {};
    action.sa_sigaction = onBusError;
    action.sa_flags = SA_SIGINFO;
    ::sigemptyset(&action.sa_mask);
    return ::sigaction(SIGBUS, &action, nullptr) == 0;
}

std::optional<std::size_t> takeSlot() {
    for (std::size_t i = 0; i < slots.size(); ++i)
        if (!slots[i].taken.exchange(true)) return i;
    return std::nullopt;
}

} // namespace

std::optional<MappedFile> MappedFile::map(FileDescriptor& file, const struct stat& status) {
    static const bool isHandled = handleBusErrors();
    if (!isHandled) return std::nullopt;
    const std::optional<std::size_t> number = takeSlot();
    if (!number) return std::nullopt;
    Slot& slot = slots[*number];
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const begin = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file.number(), 0);
    if (begin == MAP_FAILED) {
        slot.taken = false;
        return std::nullopt;
    }
    static_cast<void>(::madvise(begin, size, MADV_SEQUENTIAL)); // a hint
    slot.lacksBytes = false;
    slot.begin = reinterpret_cast<std::uintptr_t>(begin);
    slot.size = size;
    return MappedFile(std::move(file), status, static_cast<std::byte*>(begin), *number);
}

MappedFile::MappedFile(FileDescriptor file, const struct stat& status, std::byte* begin, std::size_t slot)
    : file_(std::move(file))
    , modified_(status.st_mtim)
    , begin_(begin)
    , size_(static_cast<std::size_t>(status.st_size))
    , slot_(slot) {}

MappedFile::MappedFile(MappedFile&& other) noexcept
    : file_(std::move(other.file_))
    , modified_(other.modified_)
    , begin_(std::exchange(other.begin_, nullptr))
    , size_(std::exchange(other.size_, 0))
    , slot_(other.slot_) {}

MappedFile& MappedFile::operator=(MappedFile&& other) noexcept {
    std::swap(file_, other.file_);
    std::swap(modified_, other.modified_);
    std::swap(begin_, other.begin_);
    std::swap(size_, other.size_);
    std::swap(slot_, other.slot_);
    return *this;
}

MappedFile::~MappedFile() {
    if (begin_ == nullptr) return;
    slots[slot_].size = 0;
    ::munmap(begin_, size_);
    slots[slot_].taken = false;
}

bool MappedFile::hasChanged() const {
    if (slots[slot_].lacksBytes) return true;
    struct stat now = {};
    return ::fstat(file_.number(), &now) != 0 || static_cast<std::size_t>(now.st_size) != size_ ||
           now.st_mtim.tv_sec != modified_.tv_sec || now.st_mtim.tv_nsec != modified_.tv_nsec;
}

} // namespace quillow::cli
