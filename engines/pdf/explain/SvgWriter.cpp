#include "engines/pdf/explain/SvgWriter.h"

#include "text/Utf8.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace quillow::pdf {

namespace {

constexpr float kFarthest = 1e6F;

/// What XML 1.0 allows (section 2.2, Char), without the C1 controls that it discourages.
bool isAllowed(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return !(c >= 0x7F && c <= 0x9F) && !(c >= 0xD800 && c <= 0xDFFF) && c != 0xFFFE && c != 0xFFFF && c <= 0x10FFFF;
}

} // namespace

std::string SvgWriter::number(float value) {
    if (std::isnan(value)) return "0";
    std::array<char, 32> digits{};
    const auto [end, error] = std::to_chars(digits.data(), digits.data() + digits.size(),
                                            std::clamp(value, -kFarthest, kFarthest), std::chars_format::fixed, 2);
    std::string shown(digits.data(), end);
    while (shown.ends_with('0'))
        shown.pop_back();
    if (shown.ends_with('.')) shown.pop_back();
    return shown == "-0" ? "0" : shown;
}

void SvgWriter::beginLayer(std::string_view name, SvgAttributes attributes) {
    std::string id(name);
    std::replace(id.begin(), id.end(), ' ', '-');
    out_ += "<g inkscape:groupmode=\"layer\"";
    append({{"id", id}, {"inkscape:label", name}});
    append(attributes);
    out_ += ">\n";
}

void SvgWriter::polygon(std::span<const SvgPoint> corners, std::string_view title, SvgAttributes attributes) {
    const std::size_t begin = out_.size();
    out_ += "<path d=\"";
    appendShape("path", corners, title, attributes);
    keep(begin);
}

void SvgWriter::polyline(std::span<const SvgPoint> corners, SvgAttributes attributes) {
    const std::size_t begin = out_.size();
    out_ += "<path fill=\"none\" d=\"M";
    for (const SvgPoint corner : corners) {
        if (out_.back() != 'M') out_ += ' ';
        appendPoint(corner);
    }
    out_ += '"';
    appendEnd("path", {}, attributes);
    keep(begin);
}

void SvgWriter::line(SvgPoint from, SvgPoint to, std::string_view title, SvgAttributes attributes) {
    const std::size_t begin = out_.size();
    out_ += "<path d=\"M";
    appendPoint(from);
    out_ += ' ';
    appendPoint(to);
    out_ += '"';
    appendEnd("path", title, attributes);
    keep(begin);
}

void SvgWriter::circle(SvgPoint centre, float radius, std::string_view title, SvgAttributes attributes) {
    const std::size_t begin = out_.size();
    out_ += "<circle";
    append({{"cx", number(centre.x)}, {"cy", number(centre.y)}, {"r", number(radius)}});
    appendEnd("circle", title, attributes);
    keep(begin);
}

void SvgWriter::text(SvgPoint at, std::string_view text, SvgAttributes attributes, float width) {
    const std::size_t begin = out_.size();
    out_ += "<text";
    append({{"x", number(at.x)}, {"y", number(at.y)}});
    appendText(text, attributes, width);
    keep(begin);
}

void SvgWriter::turnedText(SvgPoint at, SvgPoint direction, std::string_view text, SvgAttributes attributes,
                           float width) {
    const std::size_t begin = out_.size();
    out_ += "<text transform=\"matrix(";
    for (const float value : {direction.x, direction.y, -direction.y, direction.x}) {
        out_ += number(value);
        out_ += ' ';
    }
    appendPoint(at);
    out_ += ")\"";
    appendText(text, attributes, width);
    keep(begin);
}

void SvgWriter::appendText(std::string_view text, SvgAttributes attributes, float width) {
    if (width > 0) append({{"textLength", number(width)}, {"lengthAdjust", "spacingAndGlyphs"}});
    append(attributes);
    out_ += '>';
    appendEscaped(text);
    out_ += "</text>\n";
}

void SvgWriter::appendShape(std::string_view name, std::span<const SvgPoint> corners, std::string_view title,
                            SvgAttributes attributes) {
    for (std::size_t i = 0; i < corners.size(); ++i) {
        out_ += i == 0 ? 'M' : ' ';
        appendPoint(corners[i]);
    }
    out_ += "z\"";
    appendEnd(name, title, attributes);
}

void SvgWriter::appendEnd(std::string_view name, std::string_view title, SvgAttributes attributes) {
    append(attributes);
    if (title.empty()) {
        out_ += "/>\n";
        return;
    }
    out_ += "><title>";
    appendEscaped(title);
    out_ += "</title></";
    out_ += name;
    out_ += ">\n";
}

void SvgWriter::append(SvgAttributes attributes) {
    for (const SvgAttribute& attribute : attributes) {
        out_ += ' ';
        out_ += attribute.name;
        out_ += "=\"";
        appendEscaped(attribute.value);
        out_ += '"';
    }
}

void SvgWriter::appendEscaped(std::string_view text) {
    while (!text.empty()) {
        const text::DecodedCodePoint next = text::decodeUtf8(text);
        text.remove_prefix(next.length);
        switch (next.codePoint) {
        case '&': out_ += "&amp;"; break;
        case '<': out_ += "&lt;"; break;
        case '>': out_ += "&gt;"; break;
        case '"': out_ += "&quot;"; break;
        case '\'': out_ += "&#39;"; break;
        default: text::appendUtf8(out_, isAllowed(next.codePoint) ? next.codePoint : text::kReplacementCharacter);
        }
    }
}

void SvgWriter::appendPoint(SvgPoint point) {
    out_ += number(point.x);
    out_ += ' ';
    out_ += number(point.y);
}

void SvgWriter::makeRoom(std::size_t bytes) {
    mostBytes_ = std::max(mostBytes_, out_.size()) + bytes;
}

void SvgWriter::keep(std::size_t begin) {
    if (out_.size() <= mostBytes_) return;
    out_.resize(begin);
    ++leftOut_;
}

std::string SvgWriter::finish(float width, float height) && {
    std::string file = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                       "<svg xmlns=\"http://www.w3.org/2000/svg\" "
                       "xmlns:inkscape=\"http://www.inkscape.org/namespaces/inkscape\" ";
    const std::string w = number(width);
    const std::string h = number(height);
    file += "width=\"" + w + "pt\" height=\"" + h + "pt\" viewBox=\"0 0 " + w + ' ' + h + "\">\n";
    file += "<rect width=\"100%\" height=\"100%\" fill=\"#f4f4f4\"/>\n";
    file += out_;
    file += "</svg>\n";
    return file;
}

} // namespace quillow::pdf
