// Any bytes as a PDF file: what opens gives whole pages, and the same ones when it is opened again.
#include "engines/pdf/content/PageReader.h"
#include "fuzz/PdfPageCheck.h"

#include <algorithm>
#include <cstdint>
#include <string>

namespace {

using namespace quillow::pdf;

/// Small, so that nested calls end soon.
constexpr ContentLimits kLimits{100'000, 1'000'000};
constexpr std::size_t kPages = 8;

std::string dumpOfFile(std::string_view bytes) {
    auto opened = Document::open(bytes);
    if (!opened) return "";
    Document& document = *opened.value();
    FontCache fonts(document);
    PageReader reader(document, fonts, kLimits);
    Page page;
    std::string dumps;
    const std::vector<PageNode> nodes = pagesOf(document);
    for (std::size_t i = 0; i < std::min(nodes.size(), kPages); ++i) {
        dumps += std::to_string(reader.read(nodes[i], page).partsSkipped) + '\n';
        checkPage(page);
        dumps += dumpOf(page);
    }
    return dumps;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    require(dumpOfFile(bytes) == dumpOfFile(bytes));
    return 0;
}
