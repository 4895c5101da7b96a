// Gives every text of a run a name of its own.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace quillow::cli {

/// What a text would be called, all without ".txt".
struct NameWish {
    std::string folder; ///< below the output folder; "" is that folder itself
    std::string base;   ///< the document's name without its extension: "report"
    std::string full;   ///< the whole name: "report.pdf"
};

/// True where a path below the output folder must not become a text.
using IsBarred = std::function<bool(const std::string& path)>;

/// The texts' paths below the output folder, in the order of the wishes. Texts that would meet, or would stand on a barred path or
/// where another text's folder is, get their full names; those that still do are numbered in order: "report.rtf-2.txt". The
/// outcome depends on the wishes and their order only.
[[nodiscard]] std::vector<std::string> nameTexts(std::span<const NameWish> wishes, const IsBarred& isBarred);

/// The first of "stem-2.txt", "stem-3.txt", ... for which `isTaken` is false; `path` is "stem.txt".
[[nodiscard]] std::string numbered(const std::string& path, const IsBarred& isTaken);

} // namespace quillow::cli
