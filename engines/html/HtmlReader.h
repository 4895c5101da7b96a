// HTML: the entry of the HTML engine.
#pragma once

#include "engines/Extract.h"

namespace quillow::html {

[[nodiscard]] Extraction readHtml(std::span<const std::byte> bytes, const Options& options);

} // namespace quillow::html
