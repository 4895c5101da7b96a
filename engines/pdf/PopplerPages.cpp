// The pages of a PDF document through poppler: the one place that knows that library, and the whole of the module.
#include "engines/pdf/PdfModule.h"

#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>
#include <poppler/cpp/poppler-page.h>

#include <exception>
#include <limits>
#include <memory>
#include <new>

namespace quillow::pdf {

namespace {

void dropMessage(const std::string&, void*) {}

/// The library prints every flaw of a document to standard error unless it is told where to send it.
void silenceMessages() {
    static const bool silenced = [] {
        poppler::set_debug_error_function(dropMessage, nullptr);
        return true;
    }();
    static_cast<void>(silenced);
}

poppler::page::text_layout_enum layoutOf(PageOrder order) {
    return order == PageOrder::contentStream ? poppler::page::raw_order_layout
                                             : poppler::page::non_raw_non_physical_layout;
}

class PopplerPages final : public PdfPages {
public:
    explicit PopplerPages(std::span<const std::byte> bytes);

    [[nodiscard]] Opening opening() const override { return opening_; }
    [[nodiscard]] std::size_t count() const override;
    [[nodiscard]] std::optional<std::u16string> pageText(std::size_t index, PageOrder order) const override;

private:
    std::unique_ptr<poppler::document> document_;
    Opening opening_ = Opening::damaged;
};

// What the library throws is a failure of the document, but for the end of memory, which the door explains.
PopplerPages::PopplerPages(std::span<const std::byte> bytes) {
    silenceMessages();
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return;
    try {
        document_.reset(poppler::document::load_from_raw_data(reinterpret_cast<const char*>(bytes.data()),
                                                              static_cast<int>(bytes.size())));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return;
    }
    if (!document_) return;
    opening_ = document_->is_locked() ? Opening::locked : Opening::opened;
}

std::size_t PopplerPages::count() const {
    if (opening_ != Opening::opened) return 0;
    const int pages = document_->pages();
    return pages > 0 ? static_cast<std::size_t>(pages) : 0;
}

std::optional<std::u16string> PopplerPages::pageText(std::size_t index, PageOrder order) const {
    if (index >= count()) return std::nullopt;
    try {
        const std::unique_ptr<poppler::page> page(document_->create_page(static_cast<int>(index)));
        if (!page) return std::nullopt;
        const poppler::ustring text = page->text(poppler::rectf(), layoutOf(order));
        return std::u16string(text.begin(), text.end());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace

} // namespace quillow::pdf

quillow::pdf::PdfPages* quillowOpenPdf(const std::byte* bytes, std::size_t size) {
    return std::make_unique<quillow::pdf::PopplerPages>(std::span(bytes, size)).release();
}
