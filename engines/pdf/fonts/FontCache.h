// The fonts of a document, each made once.
#pragma once

#include "engines/pdf/fonts/Font.h"
#include "engines/pdf/syntax/Document.h"

#include <cstddef>
#include <memory>

namespace quillow::pdf {

class FontCache {
public:
    /// Fonts of a document; the longest real documents have some thousands. More share one with the standard encoding.
    static constexpr std::size_t kMaximumFonts = 20'000;

    /// The document must outlive the cache.
    explicit FontCache(Document& document);
    ~FontCache();
    FontCache(const FontCache&) = delete;
    FontCache& operator=(const FontCache&) = delete;

    /// The font of an entry of a font resource dictionary: a reference as a rule, or a dictionary. What is not a font
    /// at all gives a font with the standard encoding. Never fails but by std::bad_alloc.
    [[nodiscard]] Font& fontOf(const Object& entry);

    /// The fonts that were made, as a share of kMaximumFonts.
    [[nodiscard]] double usedShare() const;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace quillow::pdf
