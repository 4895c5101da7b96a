// Port: the text view that shows the message log. Positions are UTF-16 units.
#pragma once

#include <QString>

#include <cstdint>

namespace quillow {

struct TextRange {
    qsizetype location = 0;
    qsizetype length = 0;
    friend bool operator==(const TextRange&, const TextRange&) = default;
};

/// An opaque colour of the platform's palette, or literal 0xAARRGGBB.
struct Color {
    enum class Source { controlText, literal } source = Source::controlText;
    std::uint32_t argb = 0xFF000000; ///< for Source::literal
    friend bool operator==(const Color&, const Color&) = default;
};

class LogView {
public:
    virtual ~LogView() = default;

    /// The log's exact text, as it was inserted: U+00A0 and U+2028 are kept.
    [[nodiscard]] virtual QString string() const = 0;
    /// Length of the text.
    [[nodiscard]] virtual qsizetype length() const = 0;
    /// Replaces a range of the text. The new characters have no attributes.
    virtual void replaceCharactersInRange(const TextRange& range, const QString& text) = 0;
    virtual void addForegroundColor(const Color& color, const TextRange& range) = 0;
    virtual void setNeedsDisplay() = 0;
    virtual void scrollRangeToVisible(const TextRange& range) = 0;
};

} // namespace quillow
