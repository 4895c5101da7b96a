#include "engines/html/HtmlTree.h"

#include <algorithm>
#include <cassert>
#include <new>

namespace quillow::html {

namespace {
constexpr std::size_t kChunkBytes = std::size_t{64} * 1024;
/// A guess; pages of few tags have fewer nodes, and what is reserved and not used costs nothing.
constexpr std::size_t kBytesPerNode = 24;
std::uint32_t bitOf(const Attribute& attribute) {
    static_assert(static_cast<unsigned>(AttributeName::count) <= 32);
    return std::uint32_t{1} << static_cast<unsigned>(attribute.known());
}

} // namespace

void NodeBlock::reserve(std::size_t count) {
    if (count <= capacity_) return;
    void* const moved = std::realloc(static_cast<void*>(nodes_.get()), count * sizeof(Node));
    if (moved == nullptr) throw std::bad_alloc();
    static_cast<void>(nodes_.release()); // which std::realloc has freed
    nodes_.reset(static_cast<Node*>(moved));
    capacity_ = count;
}

HtmlTree::HtmlTree(std::string_view source)
    : source_(source) {
    nodes_.reserve(source_.size() / kBytesPerNode + 16);
    nodes_.emplaceBack().kind = NodeKind::document;
}

HtmlTree::HtmlTree(std::string source)
    : HtmlTree(std::string_view()) {
    ownSource_ = std::move(source);
    source_ = ownSource_;
}

std::optional<std::string_view> HtmlTree::attribute(NodeId id, std::string_view name) const {
    if (const AttributeName known = attributeNameForKey(keyOf(name)); known != AttributeName::unknown)
        return attribute(id, known);
    for (const Attribute& attribute : attributes(id))
        if (attribute.known() == AttributeName::unknown && attribute.name() == name) return attribute.value();
    return std::nullopt;
}

NodeId HtmlTree::createElement(Tag tag, std::string_view name, Namespace space, std::span<const Attribute> attributes) {
    const auto id = static_cast<NodeId>(nodes_.size());
    Node& node = nodes_.emplaceBack();
    node.tag = tag;
    node.space = space;
    if (tag == Tag::style || tag == Tag::frameset || tag == Tag::noframes) noted_.push_back(id);
    const std::size_t count = std::min(attributes.size(), kMaxAttributes);
    node.attributeCount = static_cast<std::uint8_t>(count);
    if (count == 0 && tag != Tag::unknown) return id;
    const std::size_t named = tag == Tag::unknown ? 1 : 0;
    Attribute* const room = allocateAttributes(count + named);
    if (named != 0) std::construct_at(room, AttributeName::unknown, std::string_view(), name);
    for (std::size_t i = 0; i < count; ++i) {
        std::construct_at(room + named + i, attributes[i]);
        node.sizeOrKnown |= bitOf(attributes[i]);
    }
    node.content.attributes = room + named;
    return id;
}

NodeId HtmlTree::createClone(const Node& original) {
    const auto id = static_cast<NodeId>(nodes_.size());
    const Node copied = original; // the block may move under it
    Node& node = nodes_.emplaceBack();
    node.tag = copied.tag;
    node.space = copied.space;
    node.attributeCount = copied.attributeCount;
    node.sizeOrKnown = copied.sizeOrKnown;
    node.content = copied.content;
    return id;
}

void HtmlTree::insertBefore(NodeId parent, NodeId child, NodeId before) {
    Node& inserted = nodes_[child];
    Node& container = nodes_[parent];
    const NodeId previous = before == kNoNode ? container.lastChild : nodes_[before].previous;
    inserted.parent = parent;
    inserted.previous = previous;
    inserted.next = before;
    (previous == kNoNode ? container.firstChild : nodes_[previous].next) = child;
    (before == kNoNode ? container.lastChild : nodes_[before].previous) = child;
}

void HtmlTree::remove(NodeId child) {
    Node& removed = nodes_[child];
    if (removed.parent == kNoNode) return;
    Node& container = nodes_[removed.parent];
    (removed.previous == kNoNode ? container.firstChild : nodes_[removed.previous].next) = removed.next;
    (removed.next == kNoNode ? container.lastChild : nodes_[removed.next].previous) = removed.previous;
    removed.parent = removed.previous = removed.next = kNoNode;
}

std::size_t HtmlTree::moveChildren(NodeId from, NodeId to) {
    std::size_t moved = 0;
    for (; nodes_[from].firstChild != kNoNode; ++moved) {
        const NodeId child = nodes_[from].firstChild;
        remove(child);
        append(to, child);
    }
    return moved;
}

void HtmlTree::addMissingAttributes(NodeId element, std::span<const Attribute> added) {
    std::vector<Attribute> all(attributes(element).begin(), attributes(element).end());
    const std::size_t before = all.size();
    for (const Attribute& attribute : added)
        if (std::none_of(all.begin(), all.end(), [&](const Attribute& a) { return a.hasNameOf(attribute); }) &&
            all.size() < kMaxAttributes)
            all.push_back(attribute);
    if (all.size() == before) return;
    // An element whose attributes are added to has a known tag: no name stands before them.
    assert(nodes_[element].tag != Tag::unknown);
    Attribute* const room = allocateAttributes(all.size());
    std::uninitialized_copy(all.begin(), all.end(), room);
    nodes_[element].content.attributes = room;
    nodes_[element].attributeCount = static_cast<std::uint8_t>(all.size());
    for (const Attribute& attribute : all)
        nodes_[element].sizeOrKnown |= bitOf(attribute);
}

/// A chunk of its own where what is asked for would waste what is left of the one in use.
char* HtmlTree::allocateChunk(std::size_t size) {
    const std::size_t chunk = std::max(size, kChunkBytes);
    chunks_.push_back(std::make_unique_for_overwrite<char[]>(chunk));
    char* const room = chunks_.back().get();
    if (size <= kChunkBytes / 4) {
        free_ = room + size;
        freeBytes_ = chunk - size;
    }
    return room;
}

char* HtmlTree::allocate(std::size_t size, std::size_t alignment) {
    const std::size_t padding = -reinterpret_cast<std::uintptr_t>(free_) & (alignment - 1);
    if (padding + size > freeBytes_) return allocateChunk(size);
    char* const room = free_ + padding;
    free_ = room + size;
    freeBytes_ -= padding + size;
    return room;
}

std::string_view HtmlTree::keep(std::string_view text) {
    char* const room = allocate(text.size(), 1);
    std::copy(text.begin(), text.end(), room);
    return {room, text.size()};
}

std::string_view HtmlTree::withReplacements(std::string_view text) {
    if (text.find('\0') == std::string_view::npos) return text;
    std::string replaced;
    for (const char c : text) {
        if (c == '\0') {
            replaced += "\uFFFD";
        } else {
            replaced += c;
        }
    }
    return keep(replaced);
}

} // namespace quillow::html
