// The entry of the parser: turns the characters of a document or a fragment into a tree.
#pragma once

#include "engines/html/tree/Tree.h"

#include <memory>
#include <string>
#include <string_view>

namespace quillow::html {

/// Parses a document in well-formed UTF-8, scripting off. Never fails: any text is a document.
[[nodiscard]] std::unique_ptr<Tree> parseHtml(std::string utf8);

/// The same without a copy. The document must outlive the tree and must not contain U+000D.
[[nodiscard]] std::unique_ptr<Tree> parseHtmlInPlace(std::string_view utf8);

/// HTML, 13.4 "Parsing HTML fragments". Parses a fragment in well-formed UTF-8 as the content of an element with
/// this lower-case name; see TreeBuilder::runFragment.
[[nodiscard]] std::unique_ptr<Tree> parseFragment(std::string utf8, std::string_view contextName,
                                                  Namespace contextSpace);

/// HTML, 13.2.3.5 "Preprocessing the input stream": line ends become LF.
[[nodiscard]] std::string withLineFeeds(std::string source);

/// The same, written to a copy.
[[nodiscard]] std::string copyWithLineFeeds(std::string_view source);

} // namespace quillow::html
