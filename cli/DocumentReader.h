// Reads the documents of a run: in workers, or in this process if the user wants it.
#pragma once

#include "cli/Input.h"
#include "cli/options/Arguments.h"
#include "worker/Pool.h"

#include <optional>
#include <string>

namespace quillow::cli {

class DocumentReader {
public:
    /// Begins the start of the first worker.
    explicit DocumentReader(const Arguments& arguments);

    /// Why no document can be read; std::nullopt if all is well. There is no way back to this process: the user decides
    /// about isolation.
    [[nodiscard]] std::optional<std::string> obstacle() const;

    /// The document's text or the reason why there is none. Frees the bytes if they are no longer needed and the
    /// document is not locked. May be called from several threads at once.
    [[nodiscard]] Extraction read(Bytes& bytes, DocumentKind kind, const Options& options);
    /// The same with a picture of how a page is read in place of the text.
    [[nodiscard]] Extraction explain(Bytes& bytes, DocumentKind kind, std::size_t page, const Options& options);

private:
    const ReadIn readIn_;
    std::optional<worker::Pool> pool_;
};

/// What protects the system from documents, in one line.
[[nodiscard]] std::string isolationLine();

} // namespace quillow::cli
