// The entry of the parser: from the characters of a document, or of a fragment, to its tree.
#pragma once

#include "engines/html/tree/Tree.h"

#include <memory>
#include <string>
#include <string_view>

namespace quillow::html {

/// The tree of a document in well-formed UTF-8, scripting off. Never fails: any text is a document.
[[nodiscard]] std::unique_ptr<Tree> parseHtml(std::string utf8);

/// The same without a copy: the document, which holds no U+000D, outlives the tree.
[[nodiscard]] std::unique_ptr<Tree> parseHtmlInPlace(std::string_view utf8);

/// HTML, 13.4 "Parsing HTML fragments". The tree of a fragment in well-formed UTF-8, read as the content of an element with
/// that lower-case name; see TreeBuilder::runFragment.
[[nodiscard]] std::unique_ptr<Tree> parseFragment(std::string utf8, std::string_view contextName,
                                                  Namespace contextSpace);

/// HTML, 13.2.3.5 "Preprocessing the input stream": line ends become LF.
[[nodiscard]] std::string withLineFeeds(std::string source);

/// The same as a copy.
[[nodiscard]] std::string copyWithLineFeeds(std::string_view source);

} // namespace quillow::html
