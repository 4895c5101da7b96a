#include "engines/pdf/content/PageReader.h"

#include "engines/pdf/content/Annotations.h"
#include "engines/pdf/content/ContentBuffer.h"
#include "engines/pdf/content/Interpreter.h"

#include <string_view>
#include <utility>

namespace quillow::pdf {

namespace {

/// From the page's user space to the displayed page: /Rotate turns clockwise (7.7.3.3), /UserUnit scales (14.11.2).
Matrix displayMatrix(const PageNode& node) {
    const Rectangle& crop = node.cropBox;
    const double u = node.userUnit;
    switch (node.rotation) {
    case 90: return {0, -u, u, 0, -crop.bottom * u, crop.right * u};
    case 180: return {-u, 0, 0, -u, crop.right * u, crop.top * u};
    case 270: return {0, u, -u, 0, crop.top * u, -crop.left * u};
    default: return {u, 0, 0, u, -crop.left * u, -crop.bottom * u};
    }
}

Box displayedBox(const PageNode& node) {
    double width = (node.cropBox.right - node.cropBox.left) * node.userUnit;
    double height = (node.cropBox.top - node.cropBox.bottom) * node.userUnit;
    if (node.rotation % 180 != 0) std::swap(width, height);
    return {0, 0, static_cast<float>(width), static_cast<float>(height)};
}

void clear(Page& page) {
    page.text.clear();
    page.glyphs.clear();
    page.runs.clear();
    page.rules.clear();
    page.cells.clear();
    page.charactersWithoutUnicode = 0;
}

/// Counted in a number of the same size as the characters, for which the compiler uses vectors. A page has fewer.
std::uint32_t replacementsIn(std::u32string_view text) {
    constexpr char32_t kReplacement = 0xFFFD;
    std::uint32_t count = 0;
    for (const char32_t c : text)
        count += c == kReplacement ? 1 : 0;
    return count;
}

} // namespace

struct PageReader::State {
    State(Document& file, FontCache& fonts, const ContentLimits& limits)
        : document(file)
        , interpreter(file, fonts, limits)
        , annotations(file, interpreter) {}

    void readContents(const PageNode& node);
    void interpretCollected();

    Document& document;
    Interpreter interpreter;
    Annotations annotations;
    text::ByteBuffer stream;
    ContentBuffer content;
    std::uint64_t damaged = 0;
};

PageReader::PageReader(Document& document, FontCache& fonts, const ContentLimits& limits)
    : state_(std::make_unique<State>(document, fonts, limits)) {}

PageReader::~PageReader() = default;

/// The streams of a page are one, with white space between them (7.8.2). But what is cut in the middle of a string or
/// an array must not swallow the next stream.
void PageReader::State::readContents(const PageNode& node) {
    content.clear();
    for (const StreamContent* const part : contentsOf(document, node)) {
        const StreamBytes decoded = document.decode(*part, stream);
        interpreter.spendBytes(decoded.bytes.size());
        content.append(decoded.bytes);
        if (decoded.complete) continue;
        ++damaged;
        interpretCollected();
    }
    interpretCollected();
}

void PageReader::State::interpretCollected() {
    if (content.size() > 0) interpreter.interpret(content.guarded());
    content.clear();
}

double PageReader::usedShare() const {
    return state_->interpreter.usedShare();
}

PageLoss PageReader::read(const PageNode& node, Page& page) {
    clear(page);
    page.cropBox = displayedBox(node);
    State& state = *state_;
    state.damaged = 0;
    const Matrix toPage = displayMatrix(node);
    state.interpreter.beginPage(page, toPage, node.resources);
    state.readContents(node);
    state.annotations.show(node, toPage, page);
    state.interpreter.endPage();
    page.charactersWithoutUnicode = replacementsIn(page.text);
    return {state.damaged + state.interpreter.partsSkipped()};
}

} // namespace quillow::pdf
