// Port: the width of a text on the screen.
#pragma once

#include <QString>

namespace quillow {

struct TextAttributes {
    QString fontFamily;  ///< empty means the font of the program's windows
    double fontSize = 0; ///< in points; 0 means the size in the program's windows
    bool isBold = false;
    bool isItalic = false;
    friend bool operator==(const TextAttributes&, const TextAttributes&) = default;
};

class TextMeasure {
public:
    virtual ~TextMeasure() = default;
    /// The width of the text in the program's windows, in their units; for several lines, the width of the widest
    /// one. Kerning, ligatures and joining letters count, so a text may be slightly narrower than a prefix of it.
    [[nodiscard]] virtual double width(const QString& text, const TextAttributes& attributes) const = 0;
};

} // namespace quillow
