#include "worker/Child.h"

#include "posix/FileDescriptor.h"
#include "worker/Helpers.h"
#include "worker/Limits.h"
#include "worker/Process.h"
#include "worker/Wire.h"

#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/uio.h>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <memory>
#include <new>
#include <optional>
#include <string_view>

namespace quillow::worker {

namespace {

constexpr int kUsage = 2;
constexpr int kChannelBroken = 3;
constexpr std::string_view kWithoutLandlock = "without-landlock";

template <class Number>
bool parse(std::string_view word, Number& number) {
    const char* const end = word.data() + word.size();
    return std::from_chars(word.data(), end, number).ptr == end && !word.empty();
}

std::optional<LockSettings> settingsOf(std::span<const char* const> words) {
    LockSettings settings;
    if (words.size() < 3 || words.size() > 4) return std::nullopt;
    if (!parse(words[0], settings.memory) || !parse(words[1], settings.processorTime)) return std::nullopt;
    if (!parse(words[2], settings.threads) || settings.threads > kMaximumThreads) return std::nullopt;
    if (words.size() == 4 && words[3] != kWithoutLandlock) return std::nullopt;
    if (words.size() == 4) settings.landlock = LandlockUse::off;
    return settings;
}

/// A document's memory: read from the channel, or mapped from a file.
class Document {
public:
    Document() = default;
    Document(const Document&) = delete;
    Document& operator=(const Document&) = delete;
    ~Document() { release(); }

    [[nodiscard]] std::span<std::byte> allocate(std::size_t size) {
        read_ = std::make_unique_for_overwrite<std::byte[]>(size);
        size_ = size;
        return {read_.get(), size};
    }
    /// False if the system does not map it, for lack of addresses as a rule.
    [[nodiscard]] bool map(int file, std::size_t size) {
        void* const begin = ::mmap(nullptr, size, PROT_READ, MAP_PRIVATE, file, 0);
        if (begin == MAP_FAILED) return false;
        static_cast<void>(::madvise(begin, size, MADV_SEQUENTIAL)); // a hint
        mapped_ = static_cast<std::byte*>(begin);
        size_ = size;
        return true;
    }
    [[nodiscard]] std::span<const std::byte> view() const {
        return {mapped_ != nullptr ? mapped_ : read_.get(), size_};
    }
    void release() {
        if (mapped_ != nullptr) ::munmap(mapped_, size_);
        mapped_ = nullptr;
        read_.reset();
        size_ = 0;
    }

private:
    std::unique_ptr<std::byte[]> read_;
    std::byte* mapped_ = nullptr;
    std::size_t size_ = 0;
};

/// The worker's end of a channel. It waits as long as it takes: the parent watches the time.
class ChildChannel {
public:
    explicit ChildChannel(int number)
        : number_(number) {}

    /// False at the channel's end.
    [[nodiscard]] bool receive(std::span<char> view) {
        while (!view.empty()) {
            if (begin_ == end_ && !fill()) return false;
            const std::size_t taken = std::min(view.size(), end_ - begin_);
            std::memcpy(view.data(), buffer_.data() + begin_, taken);
            begin_ += taken;
            view = view.subspan(taken);
            if (view.size() < buffer_.size()) continue;
            const ssize_t got = ::read(number_, view.data(), view.size());
            if (got <= 0) return false;
            view = view.subspan(static_cast<std::size_t>(got));
        }
        return true;
    }
    [[nodiscard]] std::optional<std::string> receive(std::uint64_t size) {
        if (size > kMaximumBody) return std::nullopt;
        std::string body(size, '\0');
        return receive(std::span<char>(body)) ? std::optional(std::move(body)) : std::nullopt;
    }
    [[nodiscard]] bool send(std::string_view body, std::string_view bytes) {
        EncodedSizes sizes = encode({body.size(), bytes.size()});
        std::array<iovec, 3> parts{{{sizes.data(), sizes.size()},
                                    {const_cast<char*>(body.data()), body.size()},     // NOLINT: only read
                                    {const_cast<char*>(bytes.data()), bytes.size()}}}; // NOLINT: only read
        for (std::size_t first = 0; first < parts.size();) {
            const ssize_t sent = ::writev(number_, &parts[first], static_cast<int>(parts.size() - first));
            if (sent < 0) return false;
            auto left = static_cast<std::size_t>(sent);
            for (; first < parts.size() && left >= parts[first].iov_len; ++first)
                left -= parts[first].iov_len;
            if (first == parts.size()) break;
            parts[first].iov_base = static_cast<char*>(parts[first].iov_base) + left;
            parts[first].iov_len -= left;
        }
        return true;
    }
    /// The descriptor that came with the latest request.
    [[nodiscard]] FileDescriptor takeDescriptor() { return std::move(descriptor_); }

private:
    [[nodiscard]] bool fill() {
        iovec vector{buffer_.data(), buffer_.size()};
        alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
        msghdr message{};
        message.msg_iov = &vector;
        message.msg_iovlen = 1;
        message.msg_control = control;
        message.msg_controllen = sizeof control;
        const ssize_t got = ::recvmsg(number_, &message, MSG_CMSG_CLOEXEC);
        if (got <= 0) return false;
        if (const cmsghdr* const header = CMSG_FIRSTHDR(&message);
            header != nullptr && header->cmsg_level == SOL_SOCKET && header->cmsg_type == SCM_RIGHTS) {
            int number = -1;
            std::memcpy(&number, CMSG_DATA(header), sizeof number);
            descriptor_ = FileDescriptor(number);
        }
        begin_ = 0;
        end_ = static_cast<std::size_t>(got);
        return true;
    }

    const int number_;
    std::array<char, 32768> buffer_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    FileDescriptor descriptor_;
};

Extraction withoutMemory() {
    return failed(Reason::outOfMemory, "the document needs more memory than it may use");
}

class Server {
public:
    Server(const Engine& engine, RunTogether runTogether)
        : engine_(engine)
        , runTogether_(std::move(runTogether)) {}

    [[nodiscard]] bool greet(const Isolation& isolation) {
        return channels_.front().send(encodeGreeting(isolation), {});
    }

    /// Serves one document, each of another channel than the one before. False when the channel has ended.
    [[nodiscard]] bool serve() {
        ChildChannel& channel = channels_[served_++ % kChannels];
        EncodedSizes encoded{};
        if (!channel.receive(std::span<char>(encoded))) return false;
        const Sizes sizes = decodeSizes(encoded);
        const auto body = channel.receive(sizes.body);
        auto request = body ? decodeRequest(*body) : std::nullopt;
        if (!request) return false;
        bool hasEnded = false;
        const Extraction extraction = answer(channel, *request, static_cast<std::size_t>(sizes.bytes), hasEnded);
        return channel.send(encodeAnswer(request->token, extraction),
                            extraction.text ? *extraction.text : std::string()) &&
               !hasEnded;
    }

private:
    /// Reads the document. After a lack of memory the rest of it may still be in the channel, and the worker ends.
    [[nodiscard]] Extraction answer(ChildChannel& channel, Request& request, std::size_t size, bool& hasEnded) {
        try {
            Document document;
            if (request.delivery == Delivery::descriptor) {
                const FileDescriptor file = channel.takeDescriptor();
                if (!document.map(file.number(), size)) return withoutMemory();
            } else if (const auto room = document.allocate(size);
                       !channel.receive({reinterpret_cast<char*>(room.data()), room.size()})) {
                hasEnded = true;
                return {};
            }
            Extraction extraction = ask(request.question, document);
            if (extraction.text && extraction.text->size() > request.maximumText)
                return failed(Reason::tooLarge,
                              "the text is longer than " + std::to_string(request.maximumText >> 20) + " MiB");
            return extraction;
        } catch (const std::bad_alloc&) {
            hasEnded = true;
            return withoutMemory();
        }
    }

    [[nodiscard]] Extraction ask(Question& question, Document& document) {
        question.options.runTogether = runTogether_;
        if (question.explainedPage > 0)
            return engine_.explain(document.view(), question.kind, static_cast<std::size_t>(question.explainedPage),
                                   question.options);
        return engine_.extract(document.view(), question.kind, question.options, [&document] { document.release(); });
    }

    const Engine& engine_;
    const RunTogether runTogether_;
    std::array<ChildChannel, kChannels> channels_{ChildChannel(STDIN_FILENO), ChildChannel(STDOUT_FILENO)};
    std::size_t served_ = 0;
};

bool isSocket(int number) {
    struct stat status = {};
    return ::fstat(number, &status) == 0 && S_ISSOCK(status.st_mode);
}

} // namespace

std::vector<std::string> wordsOf(const LockSettings& settings) {
    std::vector<std::string> words{std::to_string(settings.memory), std::to_string(settings.processorTime),
                                   std::to_string(settings.threads)};
    if (settings.landlock == LandlockUse::off) words.emplace_back(kWithoutLandlock);
    return words;
}

int serveDocuments(std::span<const char* const> words, const std::function<void()>& prepare, const Engine& engine) {
    const auto settings = settingsOf(words);
    if (!settings || !isSocket(STDIN_FILENO) || !isSocket(STDOUT_FILENO)) {
        std::fputs("quillow-worker: Quillow starts this program itself to read documents\n", stderr);
        return kUsage;
    }
    prepare();
    std::optional<Helpers> helpers;
    const auto makeHelpers = [&] { helpers.emplace(std::max(settings->threads, 1U) - 1); };
    Server server(engine, [&](unsigned threads, const auto& work) { helpers->run(threads, work); });
    if (!server.greet(lockDown(*settings, makeHelpers))) ::_exit(kChannelBroken);
    while (server.serve()) {
    }
    ::_exit(0); // nothing is to be saved, and destructors of libraries might need a refused system call
}

} // namespace quillow::worker
