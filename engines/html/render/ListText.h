// The numbers and markers of list items: HTML, 4.4.5 and 4.4.8.
#pragma once

#include "engines/html/css/Style.h"
#include "engines/html/render/TextCollector.h"
#include "engines/html/tree/Tree.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace quillow::html {

/// Keeps the open lists with their next numbers, and hands the markers of open items to the collector.
class ListText {
public:
    /// Both arguments must outlive this object.
    ListText(const Tree& tree, TextCollector& collector)
        : tree_(tree)
        , collector_(collector) {}

    void openList(NodeId list);
    void closeList() { lists_.pop_back(); }

    /// Opens a list item: a `li` element or any element with `display: list-item`. Returns whether it has a marker.
    /// If so, `closeItem` must follow.
    [[nodiscard]] bool openItem(NodeId item, const Style& style);
    /// Discards the marker if the item wrote no text.
    void closeItem() {
        collector_.dropMarker(markersBefore_.back());
        markersBefore_.pop_back();
    }

private:
    struct List {
        std::int64_t nextNumber = 1;
        std::int64_t step = 1; ///< from one number to the next
    };
    [[nodiscard]] std::int64_t takeNumber(NodeId item);

    const Tree& tree_;
    TextCollector& collector_;
    std::vector<List> lists_;
    std::vector<std::size_t> markersBefore_; ///< for each open item: bytes of the markers held before its own
};

} // namespace quillow::html
