// All objects of a file as a scan finds them, without its cross-reference tables.
#pragma once

#include "engines/pdf/syntax/CrossReferences.h"
#include "engines/pdf/syntax/KeywordScan.h"
#include "engines/pdf/syntax/ObjectParser.h"

#include <memory>
#include <vector>

namespace quillow::pdf {

/// What an object is, as far as a repair needs to know.
enum class ScannedKind : std::uint8_t {
    other,
    catalog,
    pageTree,
    page,
    objectStream,
    crossReferenceStream,
    encryption
};

struct ScannedObject {
    ObjectHeader header;
    ScannedKind kind = ScannedKind::other;
    bool isWhole = false;
};

struct FileScan {
    std::vector<ScannedObject> objects; ///< in the order of the file; those in streams of known length are left out
    CrossReferences latest;             ///< of each number the last object that is whole, or the last one
    std::vector<Dictionary> trailers;   ///< those of tables and of cross-reference streams, the newest first
    Arena arena;                        ///< of the trailers
};

[[nodiscard]] std::unique_ptr<FileScan> scanFile(std::string_view file, const FileKeywords& keywords);

} // namespace quillow::pdf
