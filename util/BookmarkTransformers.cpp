#include "util/BookmarkTransformers.h"

#include "base/PathStrings.h"
#include "platform/BookmarkStore.h"

namespace quillow {

namespace {

// deliberate: the two texts differ in the case of one letter; each transformer has its own.
constexpr char16_t kPathNotFound[] = u"FILe NOT FOUND";
constexpr char16_t kNameNotFound[] = u"FILE NOT FOUND";

/// Staleness and the error are ignored.
std::optional<QUrl> resolve(BookmarkStore& store, const Boxed& bookmark) {
    const auto bytes = bookmark.data();
    if (!bytes) return std::nullopt;
    bool isStale = false;
    std::optional<PlatformError> error;
    return store.resolveBookmarkData(*bytes, kBookmarkResolutionWithSecurityScope, std::nullopt, &isStale, &error);
}

QString orWhenEmpty(const QString& text, const char16_t* notFound) {
    return text.isEmpty() ? QString::fromUtf16(notFound) : text;
}

} // namespace

Boxed MWPathFromBookmark::transformedValue(const Boxed& value) const {
    const auto url = resolve(bookmarkStore_, value);
    if (!url) return {};
    return orWhenEmpty(pathOfURL(*url), kPathNotFound);
}

Boxed MWNameFromBookmark::transformedValue(const Boxed& value) const {
    const auto url = resolve(bookmarkStore_, value);
    if (!url) return {};
    return orWhenEmpty(lastPathComponent(pathOfURL(*url)), kNameNotFound);
}

} // namespace quillow
