// Transformers from a stored bookmark to the path or the name of its file.
#pragma once

#include "util/MWValueTransformer.h"

#include <QUrl>

#include <optional>

namespace quillow {

class BookmarkStore;

/// The path of the file of a bookmark; "FILe NOT FOUND" if it is empty, nil if the bookmark does not resolve.
class MWPathFromBookmark final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWPathFromBookmark(BookmarkStore& bookmarkStore)
        : bookmarkStore_(bookmarkStore) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    BookmarkStore& bookmarkStore_;
};

/// The file name of a bookmark; "FILE NOT FOUND" if it is empty, nil if the bookmark does not resolve.
class MWNameFromBookmark final : public MWValueTransformerOf<ValueClass::string, Reverse::notAllowed> {
public:
    explicit MWNameFromBookmark(BookmarkStore& bookmarkStore)
        : bookmarkStore_(bookmarkStore) {} // selector: init
    [[nodiscard]] Boxed transformedValue(const Boxed& value) const override;

private:
    BookmarkStore& bookmarkStore_;
};

} // namespace quillow
