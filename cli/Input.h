// Reads the bytes of a document: a file, an RTFD bundle's text, standard input.
#pragma once

#include "cli/MappedFile.h"
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

/// The largest file that is read. All of it is held in memory.
inline constexpr std::size_t kMaximumInput = std::size_t{1} << 30;
/// The most that is read of what does not say its size, such as standard input and pipes: it may never end, and all of it is held
/// before that shows. Scanned books, the largest documents in use, have some 100 MiB.
inline constexpr std::size_t kMaximumStream = std::size_t{256} << 20;
/// Entries of a bundle that are looked through for its text.
inline constexpr std::size_t kMaximumBundleEntries = 100'000;

/// RTF files of this size on are mapped, not read: the RTF engine stays in bounds even if the bytes change under it.
inline constexpr std::size_t kMappedFrom = std::size_t{1} << 20;

/// The bytes of a document, read or mapped.
class Bytes {
public:
    Bytes() = default;
    explicit Bytes(MappedFile file)
        : file_(std::move(file)) {}
    [[nodiscard]] std::span<const std::byte> view() const {
        return file_ ? file_->view() : std::span<const std::byte>(data_.get(), size_);
    }
    /// True when a mapped file is no more what it was: what was read is then not to be trusted.
    [[nodiscard]] bool haveChanged() const { return file_ && file_->hasChanged(); }

    /// Room for at least `capacity` bytes; false when there is no memory for it.
    [[nodiscard]] bool grow(std::size_t capacity);
    [[nodiscard]] std::span<std::byte> room() { return {data_.get() + size_, capacity_ - size_}; }
    void added(std::size_t bytes) { size_ += bytes; }
    /// Frees what was read; a mapped file stays.
    void release() {
        data_.reset();
        size_ = capacity_ = 0;
    }

private:
    std::optional<MappedFile> file_;
    struct Free {
        void operator()(std::byte* bytes) const { std::free(bytes); }
    };
    std::unique_ptr<std::byte, Free> data_; ///< from malloc, which makes large blocks larger without a copy
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
    recognised, ///< only the beginning where that is of no kind that is read
};

/// Reads what stands at the path. A folder whose extension is rtfd, in any letter case, gives the bytes of its text: TXT.rtf,
/// else that name in other letters, else the only RTF file in it; any other folder cannot be read.
[[nodiscard]] InputOutcome readInput(const std::string& path, Reading reading);

[[nodiscard]] InputOutcome readStandardInput(Reading reading);

/// Reads a list of names: a file, or standard input for kStandardStream.
[[nodiscard]] InputOutcome readList(const std::string& path);

/// When the document was last changed: the file, or a bundle's text.
[[nodiscard]] std::optional<timespec> changeTime(const std::string& path);

/// True for a folder that is no bundle.
[[nodiscard]] bool isPlainFolder(const std::string& path);

} // namespace quillow::cli
