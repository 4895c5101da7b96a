// What the fonts of a document share: CMap streams and embedded font programs, each read once and only when it is
// needed.
#pragma once

#include "engines/pdf/fonts/CMap.h"
#include "engines/pdf/fonts/fontfiles/EmbeddedFont.h"
#include "engines/pdf/syntax/Document.h"
#include "text/ByteBuffer.h"

#include <memory>
#include <unordered_map>

namespace quillow::pdf {

class FontResources {
public:
    /// The document must outlive the resources.
    explicit FontResources(Document& document)
        : document_(document) {}

    [[nodiscard]] Document& document() { return document_; }

    /// The CMap of a stream; null if the object, resolved, is no stream.
    [[nodiscard]] const CMap* cmapOf(const Object& object);
    /// The font program of a stream; null if the object, resolved, is none.
    [[nodiscard]] EmbeddedFont* programOf(const Object& object);

private:
    struct Program {
        text::ByteBuffer bytes;
        std::unique_ptr<EmbeddedFont> font;
    };

    Document& document_;
    text::ByteBuffer buffer_;
    std::unordered_map<const StreamContent*, CMap> cmaps_;
    std::unordered_map<const StreamContent*, Program> programs_;
};

} // namespace quillow::pdf
