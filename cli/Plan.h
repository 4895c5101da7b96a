// Which documents a run converts and where their texts go, settled before anything is written.
#pragma once

#include "cli/Arguments.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillow::cli {

struct PlannedDocument {
    std::string path;                    ///< as given, without trailing slashes; kStandardInput for standard input
    std::optional<DocumentKind> kind;    ///< nothing: the name tells none, the content decides
    std::optional<std::string> fileName; ///< of the text in the output folder; nothing: standard output
};

/// Two inputs of one run, or an input and a text, that would meet in one file.
struct Clash {
    std::string path;
    std::string detail;
};

struct Plan {
    std::vector<PlannedDocument> documents;
    std::vector<Clash> clashes; ///< when there is any, nothing may be written
};

/// What tells two files apart whatever their paths look like: the device and the file's number on it.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;
using IdentityOf = std::function<std::optional<FileIdentity>(const std::string& path)>;

/// The file's name without folders and without its last extension: "a/b.c.rtf" gives "b.c", ".rtf" gives ".rtf".
[[nodiscard]] std::string baseName(const std::string& path);
/// The extension in lower case, without the dot; empty where the name has none.
[[nodiscard]] std::string extensionOf(const std::string& path);

[[nodiscard]] Plan makePlan(const Arguments& arguments, const IdentityOf& identityOf);

} // namespace quillow::cli
