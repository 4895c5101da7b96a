// Writes an SVG file of limited size. All text is escaped, all numbers are finite.
#pragma once

#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>
#include <string_view>

namespace quillow::pdf {

/// A place in the picture: in points, y downwards.
struct SvgPoint {
    float x = 0;
    float y = 0;
};

/// An attribute of an element. Names are ours; values are escaped.
struct SvgAttribute {
    std::string_view name;
    std::string_view value;
};
using SvgAttributes = std::initializer_list<SvgAttribute>;

class SvgWriter {
public:
    /// Bytes of the picture; a page of small print has half a million. Elements beyond it are left out.
    static constexpr std::size_t kMostBytes = std::size_t{16} << 20;

    explicit SvgWriter(std::size_t mostBytes = kMostBytes)
        : mostBytes_(mostBytes) {}

    /// Begins a group that Inkscape shows as a layer. Groups are not left out: there are few.
    void beginLayer(std::string_view name, SvgAttributes attributes = {});
    void endLayer() { out_ += "</g>\n"; }

    /// An element with those corners. `title` is what a browser shows where the mouse is; none if it is empty.
    void polygon(std::span<const SvgPoint> corners, std::string_view title = {}, SvgAttributes attributes = {});
    void polyline(std::span<const SvgPoint> corners, SvgAttributes attributes = {});
    void line(SvgPoint from, SvgPoint to, std::string_view title = {}, SvgAttributes attributes = {});
    void circle(SvgPoint centre, float radius, std::string_view title = {}, SvgAttributes attributes = {});
    /// Text that begins at the place. It is set in `width` where the viewer can do that, unless the width is 0.
    void text(SvgPoint at, std::string_view text, SvgAttributes attributes = {}, float width = 0);
    /// The same, written in the direction.
    void turnedText(SvgPoint at, SvgPoint direction, std::string_view text, SvgAttributes attributes, float width);

    /// Makes room for so many more bytes, whatever was left out.
    void makeRoom(std::size_t bytes);
    /// How many elements were left out.
    [[nodiscard]] std::size_t leftOut() const { return leftOut_; }
    /// The file with what was written so far, for a picture of that size.
    [[nodiscard]] std::string finish(float width, float height) &&;

    /// At most two decimals, between -1e6 and 1e6; 0 for what is not a number.
    [[nodiscard]] static std::string number(float value);

private:
    /// Ends an element that begins at `begin` of the output, or takes it back if there is no room.
    void keep(std::size_t begin);
    void appendShape(std::string_view name, std::span<const SvgPoint> corners, std::string_view title,
                     SvgAttributes attributes);
    void appendEnd(std::string_view name, std::string_view title, SvgAttributes attributes);
    void appendText(std::string_view text, SvgAttributes attributes, float width);
    void append(SvgAttributes attributes);
    void appendEscaped(std::string_view text);
    void appendPoint(SvgPoint point);

    std::size_t mostBytes_;
    std::size_t leftOut_ = 0;
    std::string out_;
};

} // namespace quillow::pdf
