// What all threads that read a document share: the file, where its objects are, and its key.
#pragma once

#include "engines/pdf/crypt/Decryption.h"
#include "engines/pdf/syntax/CrossReferences.h"
#include "engines/pdf/syntax/FileScan.h"
#include "engines/pdf/syntax/KeywordScan.h"

#include <memory>
#include <mutex>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// Does not change once the document is open. What is found by a scan of the file is found when it is first needed, and
/// is the same whoever needs it.
class DocumentFile {
public:
    explicit DocumentFile(std::string_view file)
        : bytes(file)
        , keywords(file) {}

    /// All objects of the file.
    [[nodiscard]] const FileScan& scan() const {
        std::call_once(scanned_, [this] { scan_ = scanFile(bytes, keywords); });
        return *scan_;
    }

    std::string_view bytes;
    FileKeywords keywords;
    Arena arena; ///< of the trailer
    CrossReferences objects;
    bool isRepaired = false; ///< `objects` comes from the scan
    std::unique_ptr<Decryption> decryption;
    Reference encryption; ///< the encryption dictionary, whose strings are plain
    std::vector<Reference> loosePages;

private:
    mutable std::once_flag scanned_;
    mutable std::unique_ptr<FileScan> scan_;
};

} // namespace quillow::pdf
