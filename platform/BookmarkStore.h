// Port: creates and resolves bookmarks, and opens and closes access to the items that they name. A bookmark is a
// block of bytes that remembers a chosen file or folder across launches.
#pragma once

#include <QByteArray>
#include <QString>
#include <QUrl>

#include <cstdint>
#include <optional>
#include <vector>

namespace quillow {

/// Options of bookmark creation; their numbers are part of the interface.
inline constexpr std::uint32_t kBookmarkCreationWithSecurityScope = 0x800;
inline constexpr std::uint32_t kBookmarkCreationSecurityScopeAllowOnlyReadAccess = 0x1000;
/// Option of bookmark resolution.
inline constexpr std::uint32_t kBookmarkResolutionWithSecurityScope = 0x400;

/// Facts about the item that are captured in a bookmark.
enum class UrlResourceKey { path, name, isDirectory };

/// The platform's description of a failure. Callers may only check whether there is one.
struct PlatformError {
    QString description;
};

class BookmarkStore {
public:
    virtual ~BookmarkStore() = default;

    /// A bookmark of the item at a file URL. `relativeToURL`, if given, makes it document-scoped: it also records the
    /// path relative to that document. On failure (no such item, not a file URL) it returns std::nullopt, sets
    /// `*error`, or both.
    [[nodiscard]] virtual std::optional<QByteArray>
    bookmarkData(const QUrl& url, std::uint32_t options,
                 const std::vector<UrlResourceKey>& includingResourceValuesForKeys,
                 const std::optional<QUrl>& relativeToURL, std::optional<PlatformError>* error) = 0;

    /// The URL of the item that the bookmark names. If the item is no longer at the recorded path but was found
    /// elsewhere, `*bookmarkDataIsStale` becomes true; otherwise it is unchanged.
    [[nodiscard]] virtual std::optional<QUrl> resolveBookmarkData(const QByteArray& bookmark, std::uint32_t options,
                                                                  const std::optional<QUrl>& relativeToURL,
                                                                  bool* bookmarkDataIsStale,
                                                                  std::optional<PlatformError>* error) = 0;

    /// Opens access to a resolved URL. Returns true if the item exists. The caller pairs each true with one stop.
    [[nodiscard]] virtual bool startAccessingSecurityScopedResource(const QUrl& url) = 0;
    virtual void stopAccessingSecurityScopedResource(const QUrl& url) = 0;
};

} // namespace quillow
