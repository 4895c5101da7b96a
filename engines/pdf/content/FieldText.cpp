#include "engines/pdf/content/FieldText.h"

#include "engines/pdf/content/RunFilter.h"
#include "engines/pdf/syntax/Lexer.h"
#include "engines/pdf/syntax/TextString.h"

#include <algorithm>
#include <cmath>

namespace quillow::pdf {

namespace {

/// Ancestors of a field (12.7.4.1). Real forms nest some five deep.
constexpr int kMaximumFieldDepth = 32;
/// What the budget of operators is charged for a choice that is compared with the options of its field.
constexpr std::size_t kOptionsAnOperator = 4;

constexpr std::int64_t kMultiline = 1 << 12; ///< /Ff of text fields (12.7.5.3)
constexpr std::int64_t kPassword = 1 << 13;

// The look of a field whose font is not known: shares of the font size, but for the margin in points.
constexpr double kUsualSize = 12;
constexpr double kLargestShare = 0.7; ///< of the field's height that a line of automatic size takes
constexpr double kAdvance = 0.5;
constexpr double kAscent = 0.75;
constexpr double kDescent = 0.25;
constexpr double kLinePitch = 1.15;
constexpr double kMargin = 2;

/// The number before the operator Tf of a default appearance (12.7.4.3); 0 if there is none.
double sizeInAppearance(std::string_view appearance) {
    const char* p = appearance.data();
    const char* const end = p + appearance.size();
    double number = 0;
    while ((p = skipWhiteSpace(p, end)) < end) {
        const NumberToken token = readNumber(p, end);
        if (token.end > p) {
            number = token.value;
            p = token.end;
            continue;
        }
        const char* const word = p++;
        while (p < end && isRegular(*p))
            ++p;
        if (std::string_view(word, static_cast<std::size_t>(p - word)) == "Tf") return std::abs(number);
    }
    return 0;
}

/// Adds one line that begins at (x, y) of the page's user space and is at most `room` long.
void addLine(std::u32string_view line, double x, double y, double size, double room, const Matrix& toPage, Page& page) {
    if (line.empty()) return;
    const double scale = std::sqrt(toPage.a * toPage.a + toPage.b * toPage.b);
    const double advance = std::min(kAdvance * size, room / static_cast<double>(line.size())) * scale;
    Run run;
    run.firstGlyph = static_cast<std::uint32_t>(page.glyphs.size());
    run.glyphCount = static_cast<std::uint32_t>(line.size());
    const Vector origin = toPage.apply(x, y);
    run.origin = {static_cast<float>(origin.x), static_cast<float>(origin.y)};
    run.direction = {static_cast<float>(toPage.a / scale), static_cast<float>(toPage.b / scale)};
    run.fontSize = static_cast<float>(size * scale);
    run.ascent = static_cast<float>(size * scale * kAscent);
    run.descent = static_cast<float>(size * scale * kDescent);
    run.font = Run::kNoFont;
    run.flags = kFromAnnotation;
    for (std::size_t i = 0; i < line.size(); ++i)
        page.glyphs.push_back({static_cast<std::uint32_t>(page.text.size() + i),
                               static_cast<float>(static_cast<double>(i) * advance), static_cast<float>(advance)});
    page.text += line;
    dropUnseenGlyphs(page, run, kEverything);
    if (run.glyphCount > 0) page.runs.push_back(run);
}

/// The part of `text` before its first line end, which is removed with it.
std::u32string_view takeLine(std::u32string_view& text) {
    const std::size_t end = text.find_first_of(U"\r\n");
    const std::u32string_view line = text.substr(0, end);
    if (end == std::u32string_view::npos) {
        text = {};
    } else {
        const bool isPair = text[end] == U'\r' && end + 1 < text.size() && text[end + 1] == U'\n';
        text.remove_prefix(end + (isPair ? 2 : 1));
    }
    return line;
}

} // namespace

bool FieldText::replacesAppearances() {
    const Dictionary form = document_.get(document_.catalog(), "AcroForm").dictionary();
    return document_.get(form, "NeedAppearances").booleanOr(false);
}

/// The value of a key that a field without it has from its ancestors.
Object FieldText::inherited(const Dictionary& field, std::string_view key) {
    Dictionary ancestor = field;
    for (int depth = 0; depth < kMaximumFieldDepth; ++depth) {
        const Object value = document_.get(ancestor, key);
        if (!value.isNull()) return value;
        ancestor = document_.get(ancestor, "Parent").dictionary();
        if (ancestor.empty()) break;
    }
    return {};
}

/// A choice is shown by its second name if it has two (12.7.5.4, /Opt).
std::u32string FieldText::shownChoice(const Dictionary& widget, const Object& choice) {
    const Object options = inherited(widget, "Opt");
    if (!interpreter_.spend(1 + options.array().size() / kOptionsAnOperator)) return {};
    for (const Object& entry : options.array()) {
        const Object option = document_.resolve(entry);
        const auto names = option.array();
        if (names.size() == 2 && document_.resolve(names[0]).string() == choice.string())
            return decodeTextString(document_.resolve(names[1]).string());
    }
    return decodeTextString(choice.string());
}

std::u32string FieldText::valueOf(const Dictionary& widget) {
    const Object type = inherited(widget, "FT");
    const Object value = inherited(widget, "V");
    if (type.isName("Tx")) {
        if ((inherited(widget, "Ff").integerOr(0) & kPassword) != 0) return {};
        // A long value may be a stream; what shows it makes an appearance as a rule.
        return decodeTextString(value.string());
    }
    if (!type.isName("Ch")) return {};
    if (value.array().empty()) return shownChoice(widget, value);
    std::u32string lines;
    for (const Object& choice : value.array()) {
        if (!lines.empty()) lines += U'\n';
        lines += shownChoice(widget, document_.resolve(choice));
    }
    return lines;
}

double FieldText::fontSizeOf(const Dictionary& widget) {
    const double size = sizeInAppearance(inherited(widget, "DA").string());
    if (size > 0) return size;
    const Dictionary form = document_.get(document_.catalog(), "AcroForm").dictionary();
    return sizeInAppearance(document_.get(form, "DA").string());
}

void FieldText::write(const Dictionary& widget, const Rectangle& place, const Matrix& toPage, Page& page) {
    const bool isMultiline = (inherited(widget, "Ff").integerOr(0) & kMultiline) != 0;
    writeLines(valueOf(widget), isMultiline, widget, place, toPage, page);
}

void FieldText::writeFreeText(const Dictionary& annotation, const Rectangle& place, const Matrix& toPage, Page& page) {
    const std::u32string contents = decodeTextString(document_.get(annotation, "Contents").string());
    writeLines(contents, true, annotation, place, toPage, page);
}

/// Text of one line is in the middle of its rectangle, other text begins at the top.
void FieldText::writeLines(std::u32string_view text, bool isMultiline, const Dictionary& annotation,
                           const Rectangle& place, const Matrix& toPage, Page& page) {
    if (text.empty()) return;
    if (page.glyphs.size() + text.size() > kMaximumGlyphs) return interpreter_.countSkippedPart();
    const double height = place.top - place.bottom;
    double size = fontSizeOf(annotation);
    if (size <= 0 || size > height) size = std::min(kUsualSize, height * kLargestShare);
    if (!(size > 0)) return;

    const bool hasLines = isMultiline || text.find_first_of(U"\r\n") != std::u32string_view::npos;
    const double room = std::max(place.right - place.left - 2 * kMargin, size);
    double y = hasLines ? place.top - kMargin - kAscent * size
                        : (place.top + place.bottom) / 2 - (kAscent - kDescent) / 2 * size;
    for (; !text.empty(); y -= kLinePitch * size)
        addLine(takeLine(text), place.left + kMargin, y, size, room, toPage, page);
}

} // namespace quillow::pdf
