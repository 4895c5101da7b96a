// Guesses the encoding of a document that declares none, from its bytes alone.
#pragma once

#include "text/Encoding.h"

namespace quillow::text {

/// The most plausible encoding of a document that declares none:
/// - the one of its byte-order mark;
/// - UTF-16 or UTF-8 if the bytes show it, apart from a little damage;
/// - for ASCII-only input ISO-2022-JP, if it has that encoding's escape sequences, else windows-1252;
/// - else the one in which the text is most probable; windows-1252 if nothing suggests another one.
/// Work is bounded: only the first `kDetectorWindow` bytes of the words with non-ASCII bytes are compared with the
/// language models. HTML tags in the input do not disturb it.
[[nodiscard]] Encoding detectEncoding(std::string_view bytes);

inline constexpr std::size_t kDetectorWindow = std::size_t{256} * 1024;

} // namespace quillow::text
