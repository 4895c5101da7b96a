// The interface to the pages of a PDF document, independent of the library that reads them. Its functions throw
// nothing: module and program may each have a C++ runtime of their own.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillow::pdf {

/// The order of a page's text.
enum class PageOrder {
    contentStream, ///< as the page's content stream draws it
    reading,       ///< as the library derives it from geometry, with right-to-left runs in logical order
};

class PageSource {
public:
    enum class Opening { opened, locked, damaged };

    PageSource() = default;
    virtual ~PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    [[nodiscard]] virtual Opening opening() const noexcept = 0;

    /// The number of pages that the document claims to have; 0 unless opened.
    [[nodiscard]] virtual std::size_t count() const noexcept = 0;

    /// The text of a page in UTF-16; std::nullopt if the page cannot be read.
    [[nodiscard]] virtual std::optional<std::u16string> pageText(std::size_t index, PageOrder order) const noexcept = 0;

    /// Whether memory ran out while the document was opened or a page was read. The result of that call means nothing.
    [[nodiscard]] virtual bool hasMemoryEnded() const noexcept = 0;
};

} // namespace quillow::pdf
