// The text view that the user never sees: styled text goes in, its plain characters come out.
#pragma once

#include "platform/TextReaders.h"

#include <QByteArray>

namespace quillow {

class TextView {
public:
    void setAttributedString(const AttributedString& text) { text_ = text; }
    /// The plain characters of the text, in UTF-8.
    [[nodiscard]] const QByteArray& string() const { return text_.plainUtf8; }

private:
    AttributedString text_;
};

} // namespace quillow
