// Reads the pages of a PDF document with poppler. Only this file uses that library; it is the module's only source.
#include "engines/pdf/Module.h"

#include <poppler/cpp/poppler-document.h>
#include <poppler/cpp/poppler-global.h>
#include <poppler/cpp/poppler-page.h>

#include <algorithm>
#include <limits>
#include <memory>
#include <new>
#include <string>
#include <string_view>

namespace quillow::pdf {

namespace {

void dropMessage(const std::string&, void*) {}

/// The library prints every error of a document to standard error unless it has an error function.
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

class PopplerPages final : public PageSource {
public:
    PopplerPages(std::span<const std::byte> bytes, std::string_view password) noexcept;

    [[nodiscard]] Opening opening() const noexcept override { return opening_; }
    [[nodiscard]] std::size_t count() const noexcept override;
    [[nodiscard]] std::optional<std::u16string> pageText(std::size_t index, PageOrder order) const noexcept override;
    [[nodiscard]] bool hasMemoryEnded() const noexcept override { return hasMemoryEnded_; }

private:
    /// Tries the password as the user's and as the owner's.
    void load(std::span<const std::byte> bytes, const std::string& password);

    /// Calls a function that may throw. An exception means that the document cannot be read; std::bad_alloc means
    /// that memory ran out.
    template <typename Call>
    void guarded(const Call& call) const noexcept {
        try {
            call();
        } catch (const std::bad_alloc&) {
            hasMemoryEnded_ = true;
        } catch (...) { // the caller's result still says "it cannot be read"
        }
    }

    std::unique_ptr<poppler::document> document_;
    Opening opening_ = Opening::damaged;
    mutable bool hasMemoryEnded_ = false;
};

PopplerPages::PopplerPages(std::span<const std::byte> bytes, std::string_view password) noexcept {
    if (bytes.size() > static_cast<std::size_t>(std::numeric_limits<int>::max())) return;
    guarded([&] {
        silenceMessages();
        load(bytes, {});
        if (opening_ == Opening::locked && !password.empty()) load(bytes, std::string(password));
    });
}

void PopplerPages::load(std::span<const std::byte> bytes, const std::string& password) {
    document_.reset(poppler::document::load_from_raw_data(reinterpret_cast<const char*>(bytes.data()),
                                                          static_cast<int>(bytes.size()), password, password));
    if (document_) opening_ = document_->is_locked() ? Opening::locked : Opening::opened;
}

std::size_t PopplerPages::count() const noexcept {
    std::size_t count = 0;
    guarded([&] {
        if (opening_ == Opening::opened) count = static_cast<std::size_t>(std::max(document_->pages(), 0));
    });
    return count;
}

std::optional<std::u16string> PopplerPages::pageText(std::size_t index, PageOrder order) const noexcept {
    std::optional<std::u16string> text;
    guarded([&] {
        if (index >= count()) return;
        const std::unique_ptr<poppler::page> page(document_->create_page(static_cast<int>(index)));
        if (!page) return;
        const poppler::ustring characters = page->text(poppler::rectf(), layoutOf(order));
        text.emplace(characters.begin(), characters.end());
    });
    return text;
}

} // namespace

} // namespace quillow::pdf

quillow::pdf::PageSource* quillowOpenPdf(const std::byte* bytes, std::size_t size, const char* password,
                                         std::size_t passwordSize) noexcept {
    return new (std::nothrow)
        quillow::pdf::PopplerPages(std::span(bytes, size), std::string_view(password, passwordSize));
}
