// The annotations of a page that show text on it: form fields, free text, stamps and others with an appearance (ISO
// 32000-2, 12.5). Comments that open in windows of their own are not part of the page; links have no text.
#pragma once

#include "engines/pdf/content/FieldText.h"
#include "engines/pdf/content/Interpreter.h"
#include "engines/pdf/syntax/PageTree.h"

namespace quillow::pdf {

class Annotations {
public:
    /// Both must outlive it.
    Annotations(Document& document, Interpreter& interpreter)
        : document_(document)
        , interpreter_(interpreter)
        , fields_(document, interpreter) {}

    /// Shows the annotations of a page whose content has been interpreted.
    void show(const PageNode& node, const Matrix& toPage, Page& page);

private:
    void showAnnotation(const Dictionary& annotation, const Matrix& toPage, Page& page);
    [[nodiscard]] bool isShown(const Dictionary& annotation);
    [[nodiscard]] const StreamContent* appearanceOf(const Dictionary& annotation);
    void showAppearance(const StreamContent& appearance, const Rectangle& place, const Matrix& toPage,
                        Clipping clipping);

    Document& document_;
    Interpreter& interpreter_;
    FieldText fields_;
};

} // namespace quillow::pdf
