// Gives every text of a run a unique name.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillow::cli {

/// The names that a text may get, all without ".txt".
struct NameWish {
    std::string folder; ///< below the output folder; "" is that folder itself
    std::string base;   ///< the document's name without its extension: "report"
    std::string full;   ///< the whole name: "report.pdf"
};

/// True if a path below the output folder must not become a text.
using IsBarred = std::function<bool(const std::string& path)>;

/// The texts' paths below the output folder, in the order of the wishes. Texts with the same path, or with a path that
/// is barred or is another text's folder, get their full names. Those that still collide are numbered in order:
/// "report.rtf-2.txt". Names that are too long for a file system lose their end. The result depends only on the wishes,
/// their order and `isBarred`.
[[nodiscard]] std::vector<std::string> nameTexts(std::span<const NameWish> wishes, const IsBarred& isBarred);

/// The first of "stem-2.txt", "stem-3.txt", ... for which `isTaken` is false; `path` is "stem.txt". Other extensions
/// stay too.
[[nodiscard]] std::string numbered(const std::string& path, const IsBarred& isTaken);

} // namespace quillow::cli
