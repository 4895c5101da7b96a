#include "engines/pdf/syntax/PageTree.h"

#include "engines/pdf/Limits.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <unordered_set>

namespace quillow::pdf {
namespace {

constexpr Rectangle kDefaultPage = {0, 0, 612, 792}; ///< US Letter, where a page has no size of its own
constexpr double kLargestCoordinate = 1e7;           ///< a page of 3,500 km is a mistake
constexpr double kSmallestSide = 1e-3;

/// What a page may inherit (7.7.3.4).
struct Inherited {
    Dictionary resources;
    Object mediaBox;
    Object cropBox;
    Object rotation;
};

bool isUsable(const Rectangle& box) {
    return box.right - box.left >= kSmallestSide && box.top - box.bottom >= kSmallestSide;
}

Rectangle intersectionOf(const Rectangle& a, const Rectangle& b) {
    return {std::max(a.left, b.left), std::max(a.bottom, b.bottom), std::min(a.right, b.right), std::min(a.top, b.top)};
}

Rectangle visibleBoxOf(Document& document, const Inherited& inherited) {
    Rectangle media = rectangleOf(document, inherited.mediaBox, kDefaultPage);
    if (!isUsable(media)) media = kDefaultPage;
    const Rectangle crop = intersectionOf(rectangleOf(document, inherited.cropBox, media), media);
    return isUsable(crop) ? crop : media;
}

/// The nearest multiple of 90 degrees, from 0 to 270.
int rotationOf(const Object& object) {
    constexpr std::int64_t kFull = 360;
    constexpr std::int64_t kQuarter = 90;
    const std::int64_t angle = (object.integerOr(0) % kFull + kFull) % kFull;
    return static_cast<int>((angle + kQuarter / 2) / kQuarter * kQuarter % kFull);
}

double userUnitOf(const Object& object) {
    const double unit = object.numberOr(1);
    return unit > 0 && unit < kLargestCoordinate ? unit : 1;
}

/// Walks the tree with a stack of its own, because files may nest as deep as they like.
class Walk {
public:
    Walk(Document& document, std::size_t mostPages, std::size_t mostNodes)
        : document_(document)
        , mostPages_(mostPages)
        , mostNodes_(mostNodes) {}

    PageList run() {
        visit(document_.catalog().find("Pages"), Inherited());
        while (!open_.empty() && !isDone()) {
            Level& level = open_.back();
            if (level.next == level.kids.size()) {
                onPath_.erase(level.id.number);
                open_.pop_back();
            } else {
                const Object kid = level.kids[level.next++];
                visit(kid, Inherited(level.inherited));
            }
        }
        const bool isCut = !open_.empty() && isDone() && mostPages_ == kMaximumPages;
        if (pages_.empty()) addLoosePages();
        return {std::move(pages_), missing_, isCut};
    }

private:
    struct Level {
        std::span<const Object> kids;
        std::size_t next = 0;
        Reference id;
        Inherited inherited;
    };

    [[nodiscard]] bool isDone() const { return pages_.size() >= mostPages_ || visited_ >= mostNodes_; }

    void visit(const Object& entry, Inherited inherited) {
        ++visited_;
        const Dictionary node = document_.resolve(entry).dictionary();
        if (node.empty()) {
            ++missing_;
            return;
        }
        const Object kids = document_.get(node, "Kids");
        const Object type = document_.get(node, "Type");
        const bool isTree =
            kids.type() == Object::Type::array && (!type.isName("Page") || node.find("Contents").isNull());
        if (!isTree && (type.isName("Pages") || type.isName("Catalog"))) return;
        inherit(node, inherited);
        if (isTree) return openLevel(kids.array(), entry.reference(), inherited);
        addPage(node, entry.reference(), inherited);
    }

    void inherit(const Dictionary& node, Inherited& inherited) {
        const auto replace = [&](Object& value, std::string_view key) {
            const Object own = document_.get(node, key);
            if (!own.isNull()) value = own;
        };
        replace(inherited.mediaBox, "MediaBox");
        replace(inherited.cropBox, "CropBox");
        replace(inherited.rotation, "Rotate");
        const Object resources = document_.get(node, "Resources");
        if (resources.type() == Object::Type::dictionary) inherited.resources = resources.dictionary();
    }

    /// A node that is its own ancestor is passed over.
    void openLevel(std::span<const Object> kids, Reference id, const Inherited& inherited) {
        if (open_.size() == kMaximumPageTreeDepth) return;
        if (id.number != 0 && !onPath_.insert(id.number).second) return;
        open_.push_back({kids, 0, id, inherited});
    }

    void addPage(const Dictionary& page, Reference id, const Inherited& inherited) {
        PageNode node;
        node.dictionary = page;
        node.id = id;
        node.resources = inherited.resources;
        node.cropBox = visibleBoxOf(document_, inherited);
        node.rotation = rotationOf(inherited.rotation);
        node.userUnit = userUnitOf(document_.get(page, "UserUnit"));
        pages_.push_back(node);
    }

    void addLoosePages() {
        for (const Reference& id : document_.loosePages()) {
            if (isDone()) return;
            Inherited inherited;
            const Dictionary page = document_.load(id).dictionary();
            inherit(page, inherited);
            addPage(page, id, inherited);
        }
    }

    Document& document_;
    std::size_t mostPages_;
    std::size_t mostNodes_;
    std::size_t visited_ = 0;
    std::size_t missing_ = 0;
    std::vector<Level> open_;
    std::unordered_set<std::uint32_t> onPath_;
    std::vector<PageNode> pages_;
};

class ContentStreams {
public:
    explicit ContentStreams(Document& document)
        : document_(document) {}

    void add(const Object& entry, std::size_t depth) {
        const Object object = document_.resolve(entry);
        if (object.stream() != nullptr) streams.push_back(object.stream());
        if (depth == kMaximumContentNesting) return;
        for (const Object& item : object.array()) {
            if (visited_ == kMaximumContentStreams) return;
            ++visited_;
            add(item, depth + 1);
        }
    }

    std::vector<const StreamContent*> streams;

private:
    Document& document_;
    std::size_t visited_ = 0;
};

} // namespace

PageList pageListOf(Document& document) {
    return Walk(document, kMaximumPages, kMaximumPageTreeNodes).run();
}

std::vector<PageNode> pagesOf(Document& document) {
    return pageListOf(document).pages;
}

bool hasPage(Document& document) {
    return !Walk(document, 1, kMaximumNodesBeforePage).run().pages.empty();
}

Rectangle rectangleOf(Document& document, const Object& object, const Rectangle& fallback) {
    const Object box = document.resolve(object);
    const std::span<const Object> items = box.array();
    std::array<double, 4> sides{};
    if (items.size() < sides.size()) return fallback;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        const Object item = document.resolve(items[i]);
        sides[i] = item.numberOr(0);
        if (!item.isNumber() || std::abs(sides[i]) > kLargestCoordinate) return fallback;
    }
    return {std::min(sides[0], sides[2]), std::min(sides[1], sides[3]), std::max(sides[0], sides[2]),
            std::max(sides[1], sides[3])};
}

std::vector<const StreamContent*> contentsOf(Document& document, const PageNode& page) {
    ContentStreams contents(document);
    if (!document.isExhausted()) contents.add(page.dictionary.find("Contents"), 0);
    return std::move(contents.streams);
}

} // namespace quillow::pdf
