// Which legacy encoding undeclared bytes are in, judged by the bytes alone.
#pragma once

#include "text/Encoding.h"

namespace quillow::text {

/// The most plausible encoding of a document that declares none. UTF-8 is answered when the bytes are well-formed UTF-8,
/// windows-1252 when nothing speaks for anything else. ASCII-only input answers windows-1252. Work is bounded: only the
/// first `kDetectorWindow` bytes of non-ASCII text are looked at. HTML tags in the input do not disturb it.
[[nodiscard]] Encoding detectEncoding(std::string_view bytes);

inline constexpr std::size_t kDetectorWindow = std::size_t{256} * 1024;

} // namespace quillow::text
