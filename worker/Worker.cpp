#include "worker/Worker.h"

#include <signal.h>
#include <sys/random.h>
#include <sys/wait.h>

#include <algorithm>

namespace quillow::worker {

namespace {

using Fate = Worker::Fate;
using Outcome = Worker::Outcome;

std::string seconds(std::chrono::milliseconds time) {
    const auto tenths = time.count() / 100;
    std::string text = std::to_string(tenths / 10);
    if (tenths % 10 != 0) text += "." + std::to_string(tenths % 10);
    return text + (tenths == 10 ? " second" : " seconds");
}

Outcome ended(Reason reason, std::string detail) {
    return {Fate::ended, failed(reason, std::move(detail))};
}

/// An answer that came in time is taken even if the parent comes for it late, because it did something else meanwhile.
constexpr std::chrono::milliseconds kTimeToFetchAnswer{1000};

Token newToken() {
    Token token = 0;
    // The system has random numbers from its first second on; only then would the call wait or fail.
    static_cast<void>(::getrandom(&token, sizeof token, 0));
    return token;
}

Outcome late(const Limits& limits) {
    return ended(Reason::timeout, "it took longer than " + seconds(limits.time));
}

/// What became of a document whose worker was ended by a signal.
Outcome endedBy(int signal, const Limits& limits, bool hasFile) {
    switch (signal) {
    case SIGXCPU: return late(limits);
    case SIGSYS: return ended(Reason::crashed, "its reader made a system call that it may not make");
    case SIGSEGV: return ended(Reason::crashed, "its reader used memory that it does not have");
    case SIGABRT: return ended(Reason::crashed, "its reader found itself in a state that must not be");
    case SIGKILL:
        return ended(Reason::crashed, "its reader was killed, by a user or because the system ran out of memory");
    case SIGBUS:
        if (hasFile) return ended(Reason::unreadable, "it was changed while it was read, or its disk failed");
        break;
    default: break;
    }
    return ended(Reason::crashed, "its reader was ended by signal " + std::to_string(signal));
}

} // namespace

unsigned processorTime(const Limits& limits) {
    // Twice the time of a document: a worker that has used it once is worn out and gets no other document.
    const auto twice = std::chrono::ceil<std::chrono::seconds>(limits.time).count() * 2;
    return static_cast<unsigned>(std::min<decltype(twice)>(twice, 1U << 30));
}

bool Worker::isFull() const {
    return sentInAll_ >= kDocumentsPerWorker;
}

bool Worker::isWornOut(const Limits& limits) const {
    return limits.time.count() > 0 && used_ >= limits.time;
}

bool Worker::isReady() const {
    return std::all_of(channels_.begin(), channels_.end(),
                       [](const Channel& channel) { return channel.state() == Channel::State::quiet; });
}

Channel::Result Worker::receiveGreeting(const Deadline& deadline) {
    if (isolation_) return Channel::Result::done;
    EncodedSizes encoded{};
    if (const auto result = channels_[0].receive(std::span<char>(encoded), deadline); result != Channel::Result::done)
        return result;
    const Sizes sizes = decodeSizes(encoded);
    if (sizes.body > kMaximumBody || sizes.bytes != 0) return Channel::Result::closed;
    std::string body;
    if (const auto result = channels_[0].receive(body, sizes.body, deadline); result != Channel::Result::done)
        return result;
    isolation_ = decodeGreeting(body);
    return isolation_ ? Channel::Result::done : Channel::Result::closed;
}

std::optional<Isolation> Worker::isolation(const Deadline& deadline) {
    static_cast<void>(receiveGreeting(deadline));
    return isolation_;
}

void Worker::send(const Document& document, const Question& question, const Limits& limits) {
    const bool hasFile = document.descriptor >= 0;
    Sent& sent = sent_.emplace_back();
    sent.request = {newToken(), hasFile ? Delivery::descriptor : Delivery::bytes, limits.text, question};
    sent.body = encodeRequest(sent.request);
    if (!sent.body) return;
    sent.sizes = encode({sent.body->size(), hasFile ? document.size : document.bytes.size()});
    sent.message.parts = {
        {{sent.sizes.data(), sent.sizes.size()},
         *sent.body,
         {reinterpret_cast<const char*>(document.bytes.data()), hasFile ? 0 : document.bytes.size()}}};
    sent.message.descriptor = document.descriptor;
    sent.channel = sentInAll_++ % kChannels;
    sent.begun = std::chrono::steady_clock::now();
    // The worker takes the rest of a document that waits when it has answered the one before it.
    sent.result =
        channels_[sent.channel].send(sent.message, sent_.size() > 1 ? Deadline(sent.begun) : Deadline(limits.time));
}

Outcome Worker::receive(const Limits& limits) {
    Outcome outcome = receiveFirst(limits);
    sent_.pop_front();
    if (!sent_.empty()) sent_.front().begun = std::chrono::steady_clock::now();
    return outcome;
}

Outcome Worker::receiveFirst(const Limits& limits) {
    Sent& sent = sent_.front();
    if (!sent.body) return {Fate::usable, failed(Reason::unreadable, "its options are too long")};
    const auto now = std::chrono::steady_clock::now();
    const Deadline deadline =
        limits.time.count() > 0
            ? Deadline(std::max(sent.begun + limits.time, now + std::min(limits.time, kTimeToFetchAnswer)))
            : Deadline(limits.time);
    if (sent.result == Channel::Result::late) sent.result = channels_[sent.channel].send(sent.message, deadline);
    if (sent.result == Channel::Result::late) return late(limits);
    // If the worker has closed its end, it may still have said why.
    if (const auto greeted = receiveGreeting(deadline); greeted == Channel::Result::late)
        return late(limits);
    else if (greeted != Channel::Result::done)
        return {Fate::unbegun, {}};
    Outcome outcome = receiveAnswer(sent, limits, deadline);
    // The engine begins with the whole document, so it has not begun.
    if (sent.result != Channel::Result::done && outcome.extraction.reason == Reason::crashed)
        return {Fate::unbegun, {}};
    ++documents_;
    used_ += std::chrono::steady_clock::now() - sent.begun;
    return outcome;
}

Outcome Worker::invalidAnswer() const {
    // What an earlier document left in the worker is not held against this one.
    if (documents_ > 0) return {Fate::unbegun, {}};
    return ended(Reason::crashed, "its reader gave an answer that is not valid");
}

Outcome Worker::receiveAnswer(const Sent& sent, const Limits& limits, const Deadline& deadline) {
    const Request& request = sent.request;
    Channel& channel = channels_[sent.channel];
    const bool hasFile = request.delivery == Delivery::descriptor;
    EncodedSizes encoded{};
    if (const auto result = channel.receive(std::span<char>(encoded), deadline); result != Channel::Result::done)
        return brokenOff(result, limits, hasFile);
    const Sizes sizes = decodeSizes(encoded);
    if (sizes.body > kMaximumBody || sizes.bytes > limits.text) return invalidAnswer();
    std::string body;
    if (const auto result = channel.receive(body, sizes.body, deadline); result != Channel::Result::done)
        return brokenOff(result, limits, hasFile);
    std::string text;
    if (const auto result = channel.receive(text, sizes.bytes, deadline); result != Channel::Result::done)
        return brokenOff(result, limits, hasFile);
    auto extraction = decodeAnswer(body, std::move(text), request.token, request.question.options);
    if (!extraction) return invalidAnswer();
    const bool isUsable = extraction->reason != Reason::outOfMemory;
    return {isUsable ? Fate::usable : Fate::ended, std::move(*extraction)};
}

Outcome Worker::brokenOff(Channel::Result result, const Limits& limits, bool hasFile) {
    if (result == Channel::Result::late) return late(limits);
    if (result == Channel::Result::unstarted) return {Fate::unbegun, {}};
    const auto status = process_.status();
    // Whoever killed it may have done so before it began. A document that uses up the system's memory does it again.
    if (status && WIFSIGNALED(*status) && WTERMSIG(*status) == SIGKILL && documents_ > 0) return {Fate::unbegun, {}};
    if (status && WIFSIGNALED(*status)) return endedBy(WTERMSIG(*status), limits, hasFile);
    return ended(Reason::crashed, "its reader ended without an answer");
}

} // namespace quillow::worker
