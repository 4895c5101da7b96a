// Reads the bytes of a document from a file, an RTFD bundle or standard input.
#pragma once

#include "cli/MappedFile.h"
#include "cli/options/Arguments.h"
#include "engines/Extract.h"

#include <cstddef>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <variant>

namespace quillow::cli {

/// The largest file that the program reads. The whole file is held in memory.
inline constexpr std::size_t kMaximumInput = std::size_t{1} << 30;
/// The most that the program reads from an input of unknown size, such as a pipe. Such an input may never end, and
/// its bytes stay in memory until it does. Scanned books, the largest documents in use, have some 100 MiB.
inline constexpr std::size_t kMaximumStream = std::size_t{256} << 20;
/// The most entries of a bundle that are searched for its RTF file.
inline constexpr std::size_t kMaximumBundleEntries = 100'000;

/// RTF files of at least this size are mapped, not read. The RTF engine stays in bounds even if the bytes change
/// meanwhile.
inline constexpr std::size_t kMappedFrom = std::size_t{1} << 20;
/// Files of any kind are mapped from this size on if a worker reads them: it gets the descriptor, and this process does
/// not touch the bytes. Smaller files are sent to the worker.
inline constexpr std::size_t kMappedForWorkersFrom = std::size_t{64} << 10;

/// The bytes of a document, read or mapped.
class Bytes {
public:
    Bytes() = default;
    explicit Bytes(MappedFile file)
        : file_(std::move(file)) {}
    [[nodiscard]] std::span<const std::byte> view() const {
        return file_ ? file_->view() : std::span<const std::byte>(data_.get(), size_);
    }
    /// The descriptor of a mapped file; -1 if the bytes are not mapped.
    [[nodiscard]] int descriptor() const { return file_ ? file_->descriptor() : -1; }
    /// True if a mapped file has changed since it was mapped; what was read from it is then unreliable.
    [[nodiscard]] bool haveChanged() const { return file_ && file_->hasChanged(); }

    /// Makes the buffer at least `capacity` bytes large. Returns false if there is not enough memory.
    [[nodiscard]] bool grow(std::size_t capacity);
    [[nodiscard]] std::span<std::byte> room() { return {data_.get() + size_, capacity_ - size_}; }
    void added(std::size_t bytes) { size_ += bytes; }
    /// Frees the bytes that were read. A mapped file stays mapped.
    void release() {
        data_.reset();
        size_ = capacity_ = 0;
    }

private:
    std::optional<MappedFile> file_;
    struct Free {
        void operator()(std::byte* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<std::byte, Free> data_; ///< from malloc, because realloc can enlarge large blocks without a copy
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

struct InputFailure {
    Reason reason;
    std::string detail;
};

enum class InputKind { file, bundle };

struct InputDocument {
    Bytes bytes;
    InputKind kind = InputKind::file;
};

using InputOutcome = std::variant<InputDocument, InputFailure>;

enum class Reading {
    whole,
    recognised, ///< only the beginning, if it shows no kind of document that the program reads
};

/// Reads the file at the path. From a folder with the extension rtfd (in any letter case) it reads the RTF file:
/// TXT.rtf, else that name in another letter case, else the only RTF file in the folder. Any other folder is a
/// failure.
[[nodiscard]] InputOutcome readInput(const std::string& path, Reading reading, ReadIn readIn = ReadIn::thisProcess);

[[nodiscard]] InputOutcome readStandardInput(Reading reading);

/// Reads a list of names: a file, or standard input for kStandardStream.
[[nodiscard]] InputOutcome readList(const std::string& path);

/// When the file, or the RTF file of a bundle, was last changed; std::nullopt if there is no such file.
[[nodiscard]] std::optional<timespec> changeTime(const std::string& path);

/// True for a folder that is not an RTFD bundle.
[[nodiscard]] bool isPlainFolder(const std::string& path);

} // namespace quillow::cli
