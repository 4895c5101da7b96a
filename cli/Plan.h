// Decides which documents a run converts and what names their texts get, before anything is written.
#pragma once

#include "cli/Destination.h"
#include "cli/InputList.h"
#include "cli/Result.h"
#include "cli/options/Arguments.h"
#include "cli/results/ResultsFile.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace quillow::cli {

struct PlannedDocument {
    std::string path;                    ///< kStandardStream for standard input
    std::optional<DocumentKind> kind;    ///< std::nullopt: the name shows no kind, so the content decides
    std::optional<std::string> textName; ///< below the output folder; std::nullopt: standard output
    std::optional<InputFailure> failure; ///< already known: the document is not read
    unsigned threads = 1;                ///< that may read it
    /// In a resumed run, the existing files that `textName` avoids: a run that was killed may have written one of them
    /// as the text of this document.
    std::vector<std::string> existingNames;
};

/// A document that an earlier run has finished.
struct FinishedDocument {
    Reason reason = Reason::ok;
    Acceptance acceptance = Acceptance::accepted;
};

struct Plan {
    std::vector<PlannedDocument> documents; ///< those to convert
    std::vector<FinishedDocument> finished;
    std::vector<std::string> notices; ///< lines for the user, such as about texts with other names than expected
};

/// Identifies a file whatever its path: the device and the inode number.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;

/// What a plan needs to know of the file system.
struct Surroundings {
    std::function<std::optional<FileIdentity>(const std::string& path)> identityOf; ///< std::nullopt: no such file
    std::string currentFolder;
    std::optional<FileIdentity> results; ///< the file of results, which no text may replace
};

/// If the destination is one file, `inputs` has one element. The names of the texts depend neither on what earlier runs
/// have finished nor on the shard.
[[nodiscard]] Plan makePlan(const Arguments& arguments, const Destination& destination, std::vector<NamedInput> inputs,
                            const Surroundings& surroundings, EarlierResults earlier = {});

} // namespace quillow::cli
