// Any bytes as a PDF file: it opens or says why not, and every object, stream and page can be read; by another thread's
// document with the same result.
#include "engines/pdf/Limits.h"
#include "engines/pdf/syntax/PageTree.h"

#include <cstdlib>

namespace {

using namespace quillow;
using namespace quillow::pdf;

void require(bool holds) {
    if (!holds) std::abort();
}

constexpr std::uint32_t kMostObjects = 300;

/// What an object is, as far as the numbers of its parts say.
std::size_t sizeOf(const Object& object) {
    return static_cast<std::size_t>(object.type()) + 16 * (object.array().size() + object.name().size()) +
           64 * (object.dictionary().entries().size() + object.string().size());
}

void checkStream(Document& document, const Object& object, std::string_view file, text::ByteBuffer& buffer) {
    const StreamContent* const stream = object.stream();
    if (stream == nullptr) return;
    require(stream->encoded.empty() || (stream->encoded.data() >= file.data() &&
                                        stream->encoded.data() + stream->encoded.size() <= file.data() + file.size()));
    const StreamBytes decoded = document.decode(*stream, buffer);
    require(!decoded.isImage || decoded.bytes.empty());
}

void checkPages(Document& document, text::ByteBuffer& buffer) {
    const std::vector<PageNode> pages = pagesOf(document);
    require(!pages.empty() && pages.size() <= kMaximumPages);
    constexpr std::size_t kMostPages = 50;
    for (std::size_t i = 0; i < pages.size() && i < kMostPages; ++i) {
        const PageNode& page = pages[i];
        require(page.cropBox.left < page.cropBox.right && page.cropBox.bottom < page.cropBox.top);
        require(page.rotation % 90 == 0 && page.rotation >= 0 && page.rotation < 360 && page.userUnit > 0);
        for (const StreamContent* stream : contentsOf(document, page))
            (void)document.decode(*stream, buffer);
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view file(reinterpret_cast<const char*>(data), size);
    auto result = Document::open(file);
    if (!result) return 0;
    Document& document = *result.value();
    text::ByteBuffer buffer;
    const auto other = document.forThread();
    for (std::uint32_t i = kMostObjects; i > 0; --i)
        (void)other->load({i, 0});
    for (std::uint32_t i = 1; i <= kMostObjects; ++i) {
        const Object object = document.load({i, 0});
        require(sizeOf(object) == sizeOf(other->load({i, 0})));
        checkStream(document, object, file, buffer);
    }
    checkPages(document, buffer);
    return 0;
}
