// Any text as a document, or as a fragment in one of several elements: the tree has no cycles, its texts are
// well-formed and bounded by the source, and its depth and size keep their limits.
#include "engines/html/parser/Parse.h"
#include "engines/html/parser/TreeBuilder.h"
#include "engines/html/tree/TreeWalk.h"
#include "text/Encoding.h"
#include "text/Utf8.h"

#include <cstdlib>

using namespace quillow::html;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

struct Context {
    const char* name; ///< nullptr for a document
    Namespace space;
};

constexpr Context kContexts[] = {
    {nullptr, Namespace::html},
    {"div", Namespace::html},
    {"table", Namespace::html},
    {"tr", Namespace::html},
    {"td", Namespace::html},
    {"select", Namespace::html},
    {"template", Namespace::html},
    {"html", Namespace::html},
    {"frameset", Namespace::html},
    {"svg", Namespace::svg},
    {"desc", Namespace::svg},
    {"math", Namespace::mathMl},
    {"annotation-xml", Namespace::mathMl},
    {"textarea", Namespace::html},
};

void checkNode(const Tree& tree, NodeId id) {
    require(tree.node(id).isLast() == (tree.next(id) == kNoNode));
    require(tree.resolved(id) == id);
    require(!tree.text(id).empty());
    require(quillow::text::isValidUtf8(tree.text(id)));
}

/// Checks the tree and returns the number of bytes of its text nodes.
std::size_t checkTree(const Tree& tree) {
    std::size_t visited = 0;
    std::size_t bytes = 0;
    for (TreeWalk walk(tree, Tree::kDocument); walk.node() != kNoNode; walk.advance()) {
        require(++visited <= tree.bytes() / sizeof(Node));
        checkNode(tree, walk.node());
        if (tree.node(walk.node()).kind == NodeKind::text) bytes += tree.text(walk.node()).size();
        // Reconstructed formatting elements, and those that the adoption agency algorithm nests, may exceed
        // kMaxTreeDepth.
        require(walk.ancestors().size() <= kMaxTreeDepth + 2 * kMaxActiveFormatting);
    }
    return bytes;
}

} // namespace

// The first byte chooses the context.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    std::string source = quillow::text::decode(bytes, quillow::text::Encoding::utf8).utf8;
    const std::size_t length = source.size();
    const Context& context = kContexts[data[0] % std::size(kContexts)];
    const auto tree = context.name == nullptr ? parseHtml(std::move(source))
                                              : parseFragment(std::move(source), context.name, context.space);
    require(checkTree(*tree) <= 3 * length);
    constexpr std::size_t kElementBytes = 24; // for most elements; the factor 8 leaves room for attributes
    require(tree->bytes() <=
            kElementBytes * (8 * length + kReconstructionAllowance + kReconstructionsPerTag * length + 16));
    return 0;
}
