// Transformers from a stored bookmark to the path or the name of what it remembers.
#pragma once

#include "util/MWValueTransformer.h"

#include <QUrl>

#include <optional>

namespace quillow {

class BookmarkStore;

/// The path behind bookmark bytes; an empty path gives "FILe NOT FOUND", a bookmark that does not resolve gives nil.
class MWPathFromBookmark final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWPathFromBookmark(BookmarkStore& bookmarkStore)
        : bookmarkStore_(bookmarkStore) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    BookmarkStore& bookmarkStore_;
};

/// The last path component behind bookmark bytes; an empty one gives "FILE NOT FOUND", a bookmark that does not resolve nil.
class MWNameFromBookmark final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWNameFromBookmark(BookmarkStore& bookmarkStore)
        : bookmarkStore_(bookmarkStore) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    BookmarkStore& bookmarkStore_;
};

} // namespace quillow
