// Reads the bytes of a document: a file, an RTFD bundle's text, standard input.
#pragma once

#include "engines/Extract.h"

#include <cstddef>
#include <memory>
#include <span>
#include <string>
#include <variant>

namespace quillow::cli {

/// The largest document that is read. Everything read is held in memory.
inline constexpr std::size_t kMaximumInput = std::size_t{1} << 30;
/// Entries of a bundle that are looked through for its text.
inline constexpr std::size_t kMaximumBundleEntries = 100'000;

/// Bytes that were read. (Read, not mapped: a file that is cut short while it is mapped ends the program.)
class Bytes {
public:
    Bytes() = default;
    [[nodiscard]] std::span<const std::byte> view() const { return {data_.get(), size_}; }

    /// Room for at least `capacity` bytes; false when there is no memory for it.
    [[nodiscard]] bool grow(std::size_t capacity);
    [[nodiscard]] std::span<std::byte> room() { return {data_.get() + size_, capacity_ - size_}; }
    void added(std::size_t bytes) { size_ += bytes; }

private:
    std::unique_ptr<std::byte[]> data_;
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

/// Reads what stands at the path. A folder whose extension is rtfd, in any letter case, gives the bytes of its text: TXT.rtf,
/// else that name in other letters, else the only RTF file in it; any other folder cannot be read.
[[nodiscard]] InputOutcome readInput(const std::string& path);

[[nodiscard]] InputOutcome readStandardInput();

} // namespace quillow::cli
