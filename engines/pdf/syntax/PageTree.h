// The pages of a document with what they inherit (ISO 32000-2, 7.7.3).
#pragma once

#include "engines/pdf/syntax/Document.h"

#include <cstddef>
#include <vector>

namespace quillow::pdf {

/// Nodes of page trees inside one another; whatever is deeper is left out.
inline constexpr std::size_t kMaximumPageTreeDepth = 1000;
/// Nodes of the page tree that are visited, pages and others, the same one counted each time.
inline constexpr std::size_t kMaximumPageTreeNodes = 1'000'000;
/// The same until the first page is found.
inline constexpr std::size_t kMaximumNodesBeforePage = 10'000;
/// Streams of one page, and items of its arrays of streams.
inline constexpr std::size_t kMaximumContentStreams = 16'384;
/// Arrays of content streams inside one another.
inline constexpr std::size_t kMaximumContentNesting = 8;

/// An upright rectangle (7.9.5) with left <= right and bottom <= top.
struct Rectangle {
    double left = 0;
    double bottom = 0;
    double right = 0;
    double top = 0;
};

struct PageNode {
    Dictionary dictionary;
    Reference id;         ///< {0, 0} for a page that is a direct object
    Dictionary resources; ///< its own or inherited ones
    Rectangle cropBox;    ///< cut to the media box; never empty
    int rotation = 0;     ///< 0, 90, 180 or 270 degrees clockwise
    double userUnit = 1;  ///< points a unit
};

/// All pages in the order of the page tree, without those that cannot be found. If the tree has no page, the loose
/// pages of the file in the order of their objects.
[[nodiscard]] std::vector<PageNode> pagesOf(Document& document);

struct PageList {
    std::vector<PageNode> pages;
    std::size_t missing = 0; ///< entries of the page tree that lead to nothing
    bool isCut = false;      ///< there are more than the limits allow
};
/// The same, with what is known of pages that are not there.
[[nodiscard]] PageList pageListOf(Document& document);

/// Whether pagesOf would find a page. Looks at kMaximumNodesBeforePage nodes.
[[nodiscard]] bool hasPage(Document& document);

/// A rectangle of a file, its corners put in order; `fallback` if it is not four numbers.
[[nodiscard]] Rectangle rectangleOf(Document& document, const Object& object, const Rectangle& fallback);

/// The content streams of a page in their order (7.7.3.3, /Contents: a stream or an array of streams). None once the
/// document is exhausted.
[[nodiscard]] std::vector<const StreamContent*> contentsOf(Document& document, const PageNode& page);

} // namespace quillow::pdf
