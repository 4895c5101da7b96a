// The pages of a PDF document through poppler: the one place that knows that library.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>
#include <span>
#include <string>

namespace quillow::pdf {

/// How the text of a page is put in order.
enum class PageOrder {
    contentStream, ///< as the page's content draws it
    reading,       ///< as the library reads the page's geometry, right-to-left runs in logical order
};

class PopplerPages {
public:
    enum class Opening { opened, locked, damaged };

    /// Opens the document with the empty password. The bytes are not copied and must outlive the object.
    explicit PopplerPages(std::span<const std::byte> bytes);
    ~PopplerPages();
    PopplerPages(const PopplerPages&) = delete;
    PopplerPages& operator=(const PopplerPages&) = delete;

    [[nodiscard]] Opening opening() const;

    /// As many pages as the document claims to have; 0 unless opened.
    [[nodiscard]] std::size_t count() const;

    /// The text of a page in UTF-16, or nothing when the page cannot be read.
    [[nodiscard]] std::optional<std::u16string> pageText(std::size_t index, PageOrder order) const;

private:
    struct Document;
    std::unique_ptr<Document> document_;
    Opening opening_ = Opening::damaged;
};

} // namespace quillow::pdf
