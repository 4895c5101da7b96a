// The messages between a program and its worker, as bytes. Both run on one machine and come from one build, so numbers
// are in the machine's order. The parent's side reads answers as hostile input: a document may have taken over the
// worker.
#pragma once

#include "worker/Isolation.h"
#include "worker/Question.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace quillow::worker {

/// A worker of another build is not talked to. Change it with every change of the messages.
inline constexpr std::uint64_t kWireVersion = 2;

/// Every message begins with the sizes of its two parts: the body, which has the fields, and the bytes after it.
struct Sizes {
    std::uint64_t body = 0;
    std::uint64_t bytes = 0; ///< of the document or its text
};
inline constexpr std::size_t kSizesLength = 16;
using EncodedSizes = std::array<char, kSizesLength>;

/// The longest body that either side takes.
inline constexpr std::size_t kMaximumBody = std::size_t{64} << 10;
/// The longest detail of an answer.
inline constexpr std::size_t kMaximumDetail = 1000;

[[nodiscard]] EncodedSizes encode(const Sizes& sizes);
[[nodiscard]] Sizes decodeSizes(const EncodedSizes& encoded);

// The first message of a worker, when it has locked itself in. It has no bytes after its body.

[[nodiscard]] std::string encodeGreeting(const Isolation& isolation);
/// std::nullopt if it is not the greeting of a worker of this build.
[[nodiscard]] std::optional<Isolation> decodeGreeting(std::string_view body);

// A document for the worker.

/// How the document reaches the worker: its bytes follow the body, or a descriptor comes with the first byte.
enum class Delivery { bytes, descriptor };

/// A number that a worker cannot guess before it has the document: an answer that it prepared earlier does not have it.
using Token = std::uint64_t;

struct Request {
    Token token = 0;
    Delivery delivery = Delivery::bytes;
    std::uint64_t maximumText = 0;
    Question question;
};

/// std::nullopt if the options are too long for a message.
[[nodiscard]] std::optional<std::string> encodeRequest(const Request& request);
[[nodiscard]] std::optional<Request> decodeRequest(std::string_view body);

// The outcome of a document. The text follows the body.

/// Everything but the text. A detail that is too long is cut.
[[nodiscard]] std::string encodeAnswer(Token token, const Extraction& extraction);

/// The extraction of an answer; `text` has the bytes after the body. std::nullopt if the answer breaks the contract
/// that `Extraction` states: a field that no engine gives, a text that is not in the text's form. So does an answer to
/// another request.
[[nodiscard]] std::optional<Extraction> decodeAnswer(std::string_view body, std::string text, Token token,
                                                     const Options& options);

} // namespace quillow::worker
