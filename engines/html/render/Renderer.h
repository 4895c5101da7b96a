// Turns the tree into text: the "get the text" steps of the HTML Standard (section 3.2.7, innerText) over computed
// styles, with list markers and the other options on top.
#pragma once

#include "engines/Extraction.h"
#include "engines/html/tree/Tree.h"

namespace quillow::html {

enum class AuthorStyles { apply, ignore };

struct RenderedText {
    std::string text;
    bool sawAuthorStyles = false; ///< a declaration of a sheet or style attribute applied
};

/// The text of the document's body.
[[nodiscard]] RenderedText renderText(const Tree& tree, const Options& options, AuthorStyles authorStyles);

} // namespace quillow::html
