// The pages of a PDF document, as the engine asks for them; what library reads them is not known here. No exception leaves
// these functions: module and program may have a C++ run time each.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace quillow::pdf {

/// How the text of a page is put in order.
enum class PageOrder {
    contentStream, ///< as the page's content draws it
    reading,       ///< as the library reads the page's geometry, right-to-left runs in logical order
};

class PageSource {
public:
    enum class Opening { opened, locked, damaged };

    PageSource() = default;
    virtual ~PageSource() = default;
    PageSource(const PageSource&) = delete;
    PageSource& operator=(const PageSource&) = delete;

    [[nodiscard]] virtual Opening opening() const noexcept = 0;

    /// As many pages as the document claims to have; 0 unless opened.
    [[nodiscard]] virtual std::size_t count() const noexcept = 0;

    /// The text of a page in UTF-16, or nothing when the page cannot be read.
    [[nodiscard]] virtual std::optional<std::u16string> pageText(std::size_t index, PageOrder order) const noexcept = 0;

    /// Whether memory ended while the document was opened or a page was read; what was answered then means nothing.
    [[nodiscard]] virtual bool hasMemoryEnded() const noexcept = 0;
};

} // namespace quillow::pdf
