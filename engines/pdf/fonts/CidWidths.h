// The widths and the vertical metrics of a composite font by CID (ISO 32000-2, 9.7.4.3).
#pragma once

#include "engines/pdf/syntax/Document.h"

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace quillow::pdf {

/// In thousandths of an em. `x` and `y` lead from the horizontal writing's origin to the vertical one.
struct VerticalMetrics {
    double advance = -1000;
    double x = 0;
    double y = 880;
};

class CidWidths {
public:
    /// Reads the arrays, whose numbers are looked at when a CID is used. The document must outlive this.
    CidWidths(Document& document, const Dictionary& descendant);

    [[nodiscard]] double widthOf(std::uint32_t cid) const;
    /// `width` is that of the CID.
    [[nodiscard]] VerticalMetrics verticalOf(std::uint32_t cid, double width) const;
    /// Whether the document gives any width.
    [[nodiscard]] bool isDeclared() const { return isDeclared_; }

private:
    /// CIDs from `first` to `last`. Each has `numbers` of its own, or all have the same.
    struct Section {
        std::uint32_t first = 0;
        std::uint32_t last = 0;
        bool isShared = false;
        std::span<const Object> numbers;
    };
    using Sections = std::vector<Section>;

    [[nodiscard]] Sections readSections(std::span<const Object> items, std::size_t numbersOfCid) const;
    [[nodiscard]] static std::span<const Object> find(const Sections& sections, std::uint32_t cid,
                                                      std::size_t numbersOfCid);
    [[nodiscard]] double numberOf(const Object& object, double fallback) const;

    Document& document_;
    Sections widths_;
    Sections verticals_;
    double defaultWidth_ = 1000;
    VerticalMetrics defaultVertical_;
    bool isDeclared_ = false;
};

} // namespace quillow::pdf
