// The text of a form field or a free-text annotation that has no appearance (ISO 32000-2, 12.5.6.6, 12.7): the program
// that shows it is to make one.
#pragma once

#include "engines/pdf/content/Interpreter.h"
#include "engines/pdf/content/Matrix.h"
#include "engines/pdf/content/Page.h"
#include "engines/pdf/syntax/PageTree.h"

#include <string>
#include <string_view>

namespace quillow::pdf {

class FieldText {
public:
    /// Both must outlive it.
    FieldText(Document& document, Interpreter& interpreter)
        : document_(document)
        , interpreter_(interpreter) {}

    /// Adds the value of a widget's field as runs at the widget's rectangle. Nothing for buttons, signatures, passwords
    /// and fields without a value. Where the glyphs are is an estimate.
    void write(const Dictionary& widget, const Rectangle& place, const Matrix& toPage, Page& page);

    /// The same for the contents of a free-text annotation.
    void writeFreeText(const Dictionary& annotation, const Rectangle& place, const Matrix& toPage, Page& page);

    /// Whether the document requires that readers make all appearances themselves (/NeedAppearances).
    [[nodiscard]] bool replacesAppearances();

private:
    [[nodiscard]] Object inherited(const Dictionary& field, std::string_view key);
    [[nodiscard]] std::u32string valueOf(const Dictionary& widget);
    [[nodiscard]] std::u32string shownChoice(const Dictionary& widget, const Object& choice);
    [[nodiscard]] double fontSizeOf(const Dictionary& widget);
    void writeLines(std::u32string_view text, bool isMultiline, const Dictionary& annotation, const Rectangle& place,
                    const Matrix& toPage, Page& page);

    Document& document_;
    Interpreter& interpreter_; ///< only for its budget and the account of what is left out
};

} // namespace quillow::pdf
