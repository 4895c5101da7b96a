// Port: how wide a text is on the screen.
#pragma once

#include <QString>

namespace quillow {

struct TextAttributes {
    QString fontFamily;  ///< empty for the font of the program's windows
    double fontSize = 0; ///< in points; 0 for that of the program's windows
    bool isBold = false;
    bool isItalic = false;
    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// The width of the text as it is set in the windows, in their units: of its widest line, when it has several. Kerning,
    /// ligatures and joining letters count, so that a text may be narrower than a beginning of it, though never by much.
    [[nodiscard]] virtual double width(const QString& text, const TextAttributes& attributes) const = 0;
};

} // namespace quillow
