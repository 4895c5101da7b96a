#include "cli/Input.h"

#include "cli/FileDescriptor.h"
#include "cli/Plan.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <new>

namespace quillow::cli {

namespace {

constexpr std::size_t kFirstRead = std::size_t{64} << 10;

InputFailure unreadable(std::string detail) {
    return {Reason::unreadable, std::move(detail)};
}

InputFailure tooLarge() {
    return {Reason::tooLarge, "over " + std::to_string(kMaximumInput >> 20) + " MiB"};
}

/// Reads to the end. `expected` is what the file says it holds; it may hold more or less by the time it is read.
InputOutcome readToEnd(int number, std::size_t expected, InputKind kind) {
    InputDocument document;
    document.kind = kind;
    std::size_t capacity = std::max(expected + 1, kFirstRead);
    for (;;) {
        if (!document.bytes.grow(capacity)) return InputFailure{Reason::outOfMemory, "no memory to read it"};
        const std::span<std::byte> room = document.bytes.room();
        const ssize_t got = ::read(number, room.data(), room.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return unreadable(lastError());
        if (got == 0) return document;
        document.bytes.added(static_cast<std::size_t>(got));
        if (document.bytes.view().size() > kMaximumInput) return tooLarge();
        if (document.bytes.room().empty()) capacity = std::min(capacity * 2, kMaximumInput + 1);
    }
}

bool startsAsRtf(int file) {
    constexpr std::string_view kSignature = "{\\rtf";
    char first[kSignature.size()] = {};
    const ssize_t got = ::pread(file, first, sizeof first, 0);
    return got == static_cast<ssize_t>(sizeof first) && std::string_view(first, sizeof first) == kSignature;
}

bool equalsIgnoringCase(std::string_view text, std::string_view lower) {
    return std::equal(text.begin(), text.end(), lower.begin(), lower.end(), [](char a, char b) {
        return (a >= 'A' && a <= 'Z' ? static_cast<char>(a - 'A' + 'a') : a) == b;
    });
}

/// The path of a bundle's text, or what is wrong with the bundle.
std::variant<std::string, InputFailure> textOfBundle(const std::string& bundle) {
    namespace fs = std::filesystem;
    std::error_code error;
    std::string exact;
    std::string otherCase;
    std::string onlyRtf;
    std::size_t rtfCount = 0;
    std::size_t entries = 0;
    fs::directory_iterator entry(bundle, error);
    if (error) return unreadable(error.message());
    for (const fs::directory_iterator end; entry != end && ++entries <= kMaximumBundleEntries; entry.increment(error)) {
        const std::string path = entry->path().string();
        const std::string name = entry->path().filename().string();
        std::error_code ignored;
        if (extensionOf(name) != "rtf" || !fs::is_regular_file(path, ignored)) continue;
        ++rtfCount;
        onlyRtf = path;
        if (name == "TXT.rtf") exact = path;
        // The first of them by name, so that the choice does not hang on the order of the folder.
        else if (equalsIgnoringCase(name, "txt.rtf") && (otherCase.empty() || path < otherCase))
            otherCase = path;
    }
    if (error) return unreadable(error.message());
    if (!exact.empty()) return exact;
    if (!otherCase.empty()) return otherCase;
    if (rtfCount == 1) return onlyRtf;
    return InputFailure{Reason::damaged, rtfCount == 0 ? "the bundle holds no RTF text"
                                                       : "the bundle holds several RTF files and no TXT.rtf"};
}

InputOutcome readFile(const std::string& path, InputKind kind) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.isOpen()) return unreadable(lastError());
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0) return unreadable(lastError());
    if (S_ISDIR(status.st_mode)) return unreadable("is a folder");
    const auto size = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    if (size > kMaximumInput) return tooLarge();
    if (S_ISREG(status.st_mode) && size >= kMappedFrom && startsAsRtf(file.number()))
        if (auto mapped = MappedFile::map(file, status)) return InputDocument{Bytes(std::move(*mapped)), kind};
    return readToEnd(file.number(), size, kind);
}

bool isFolder(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

} // namespace

bool Bytes::grow(std::size_t capacity) {
    if (capacity <= capacity_) return true;
    std::unique_ptr<std::byte[]> larger(new (std::nothrow) std::byte[capacity]);
    if (!larger) return false;
    if (size_ > 0) std::memcpy(larger.get(), data_.get(), size_);
    data_ = std::move(larger);
    capacity_ = capacity;
    return true;
}

InputOutcome readInput(const std::string& path) {
    if (extensionOf(path) != "rtfd" || !isFolder(path)) return readFile(path, InputKind::file);
    auto text = textOfBundle(path);
    if (auto* const failure = std::get_if<InputFailure>(&text)) return std::move(*failure);
    return readFile(std::get<std::string>(text), InputKind::bundle);
}

InputOutcome readStandardInput() {
    struct stat status = {};
    if (::fstat(STDIN_FILENO, &status) != 0) return unreadable(lastError());
    if (S_ISDIR(status.st_mode)) return unreadable("is a folder");
    return readToEnd(STDIN_FILENO, 0, InputKind::file);
}

} // namespace quillow::cli
