#include "engines/pdf/PopplerPages.h"

#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>
#include <poppler/cpp/poppler-page.h>

#include <exception>
#include <limits>
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

} // namespace

struct PopplerPages::Document {
    std::unique_ptr<poppler::document> handle;
};

// What the library throws is a failure of the document, but for the end of memory, which the door explains.
PopplerPages::PopplerPages(std::span<const std::byte> bytes)
    : document_(std::make_unique<Document>()) {
    silenceMessages();
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return;
    try {
        document_->handle.reset(poppler::document::load_from_raw_data(reinterpret_cast<const char*>(bytes.data()),
                                                                      static_cast<int>(bytes.size())));
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return;
    }
    if (!document_->handle) return;
    opening_ = document_->handle->is_locked() ? Opening::locked : Opening::opened;
}

PopplerPages::~PopplerPages() = default;

PopplerPages::Opening PopplerPages::opening() const {
    return opening_;
}

std::size_t PopplerPages::count() const {
    if (opening_ != Opening::opened) return 0;
    const int pages = document_->handle->pages();
    return pages > 0 ? static_cast<std::size_t>(pages) : 0;
}

std::optional<std::u16string> PopplerPages::pageText(std::size_t index, PageOrder order) const {
    if (index >= count()) return std::nullopt;
    try {
        const std::unique_ptr<poppler::page> page(document_->handle->create_page(static_cast<int>(index)));
        if (!page) return std::nullopt;
        const poppler::ustring text = page->text(poppler::rectf(), layoutOf(order));
        return std::u16string(text.begin(), text.end());
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

} // namespace quillow::pdf
