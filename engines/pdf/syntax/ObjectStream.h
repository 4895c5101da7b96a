// Object streams: streams that contain objects (ISO 32000-2, 7.5.7).
#pragma once

#include "engines/pdf/syntax/Object.h"

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace quillow::pdf {

/// The decoded bytes of one object stream and where its objects begin.
class ObjectStream {
public:
    struct Item {
        std::uint32_t number = 0;
        std::uint32_t begin = 0; ///< in `bytes`
    };

    /// `bytes` must outlive the object. `count` and `first` are /N and /First.
    ObjectStream(std::string_view bytes, std::int64_t count, std::int64_t first);

    [[nodiscard]] std::string_view bytes() const { return bytes_; }
    /// In the order of the index at the stream's begin.
    [[nodiscard]] const std::vector<Item>& items() const { return items_; }
    /// The bytes from an object on. `index` is where the cross-reference says that it is.
    [[nodiscard]] std::optional<std::string_view> find(std::uint32_t number, std::size_t index);

private:
    std::string_view bytes_;
    std::vector<Item> items_;
    std::vector<Item> byNumber_; ///< the items sorted by number, once an index was wrong
};

} // namespace quillow::pdf
