#include "cli/Input.h"

#include "cli/Paths.h"
#include "cli/options/Arguments.h"
#include "engines/ContentSniffer.h"
#include "posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace quillow::cli {

namespace {

constexpr std::size_t kFirstRead = std::size_t{64} << 10;

InputFailure unreadable(std::string detail) {
    return {Reason::unreadable, std::move(detail)};
}

InputFailure tooLarge(std::size_t most) {
    return {Reason::tooLarge, "over " + std::to_string(most >> 20) + " MiB" +
                                  (most == kMaximumStream ? ", the most from standard input or a pipe" : "")};
}

struct Source {
    int number;
    std::size_t expected; ///< the file's size by its status; it may change before the file is read
    std::size_t most;
};

Source sourceOf(int number, const struct stat& status) {
    const auto size = status.st_size > 0 ? static_cast<std::size_t>(status.st_size) : 0;
    return S_ISREG(status.st_mode) ? Source{number, size, kMaximumInput} : Source{number, 0, kMaximumStream};
}

InputOutcome readToEnd(const Source& source, InputKind kind, Reading reading) {
    if (source.expected > source.most) return tooLarge(source.most);
    InputDocument document;
    document.kind = kind;
    const std::size_t expected = reading == Reading::recognised ? 0 : source.expected;
    std::size_t capacity = std::max(expected + 1, kFirstRead);
    for (;;) {
        if (!document.bytes.grow(capacity)) return InputFailure{Reason::outOfMemory, "no memory to read it"};
        const std::span<std::byte> room = document.bytes.room();
        const ssize_t got = ::read(source.number, room.data(), room.size());
        if (got < 0 && errno == EINTR) continue;
        if (got < 0) return unreadable(lastError());
        if (got == 0) return document;
        document.bytes.added(static_cast<std::size_t>(got));
        if (document.bytes.view().size() > source.most) return tooLarge(source.most);
        if (!document.bytes.room().empty()) continue;
        if (reading == Reading::recognised && !sniffDocumentKind(document.bytes.view())) return document;
        capacity = std::min(std::max(capacity * 2, source.expected + 1), source.most + 1);
    }
}

bool startsAsRtf(int file) {
    constexpr std::string_view kSignature = "{\\rtf";
    char first[kSignature.size()] = {};
    const ssize_t got = ::pread(file, first, sizeof first, 0);
    return got == static_cast<ssize_t>(sizeof first) && std::string_view(first, sizeof first) == kSignature;
}

/// The path of a bundle's RTF file, or the reason why the bundle cannot be read.
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
        // Take the first by name, so that the choice does not depend on the order of the folder.
        else if (lowered(name) == "txt.rtf" && (otherCase.empty() || path < otherCase))
            otherCase = path;
    }
    if (error) return unreadable(error.message());
    if (!exact.empty()) return exact;
    if (!otherCase.empty()) return otherCase;
    if (rtfCount == 1) return onlyRtf;
    return InputFailure{Reason::damaged, rtfCount == 0 ? "the bundle holds no RTF text"
                                                       : "the bundle holds several RTF files and no TXT.rtf"};
}

InputOutcome readFile(const std::string& path, InputKind kind, Reading reading, ReadIn readIn) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY));
    if (!file.isOpen()) return unreadable(lastError());
    struct stat status = {};
    if (::fstat(file.number(), &status) != 0) return unreadable(lastError());
    if (S_ISDIR(status.st_mode)) return unreadable("is a folder");
    const Source source = sourceOf(file.number(), status);
    const std::size_t mappedFrom = readIn == ReadIn::workers ? kMappedForWorkersFrom : kMappedFrom;
    const bool isMappable = source.expected >= mappedFrom && source.expected <= source.most;
    if (isMappable && (readIn == ReadIn::workers || startsAsRtf(file.number())))
        if (auto mapped = MappedFile::map(file, status)) return InputDocument{Bytes(std::move(*mapped)), kind};
    return readToEnd(source, kind, reading);
}

bool isFolder(const std::string& path) {
    struct stat status = {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isBundle(const std::string& path) {
    return extensionOf(path) == "rtfd" && isFolder(path);
}

} // namespace

bool Bytes::grow(std::size_t capacity) {
    if (capacity <= capacity_) return true;
    void* const larger = std::realloc(data_.get(), capacity); // NOLINT: data_ owns the new block below
    if (larger == nullptr) return false;
    static_cast<void>(data_.release()); // realloc has freed or enlarged the old block
    data_.reset(static_cast<std::byte*>(larger));
    capacity_ = capacity;
    return true;
}

InputOutcome readInput(const std::string& path, Reading reading, ReadIn readIn) {
    if (!isBundle(path)) {
        InputOutcome outcome = readFile(path, InputKind::file, reading, readIn);
        if (std::holds_alternative<InputFailure>(outcome) && isFolder(path))
            return unreadable("is a folder; -r takes the documents in it");
        return outcome;
    }
    auto text = textOfBundle(path);
    if (auto* const failure = std::get_if<InputFailure>(&text)) return std::move(*failure);
    return readFile(std::get<std::string>(text), InputKind::bundle, Reading::whole, readIn);
}

InputOutcome readStandardInput(Reading reading) {
    struct stat status = {};
    if (::fstat(STDIN_FILENO, &status) != 0) return unreadable(lastError());
    if (S_ISDIR(status.st_mode)) return unreadable("is a folder");
    return readToEnd(sourceOf(STDIN_FILENO, status), InputKind::file, reading);
}

InputOutcome readList(const std::string& path) {
    return path == kStandardStream ? readStandardInput(Reading::whole)
                                   : readFile(path, InputKind::file, Reading::whole, ReadIn::thisProcess);
}

std::optional<timespec> changeTime(const std::string& path) {
    std::string file = path;
    if (isBundle(path)) {
        const auto text = textOfBundle(path);
        if (const auto* const inside = std::get_if<std::string>(&text)) file = *inside;
    }
    struct stat status = {};
    if (::stat(file.c_str(), &status) != 0) return std::nullopt;
    return status.st_mtim;
}

bool isPlainFolder(const std::string& path) {
    return extensionOf(path) != "rtfd" && isFolder(path);
}

} // namespace quillow::cli
