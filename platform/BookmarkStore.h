// Port: makes and resolves bookmarks, the byte blocks by which a chosen file or folder is remembered across launches, and
// opens and closes access to what they name.
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

/// The platform's account of a failure; callers may only look whether there is one.
struct PlatformError {
    QString description;
};

class BookmarkStore {
public:
    virtual ~BookmarkStore() = default;

    /// A bookmark of the item at a file URL. `relativeToURL`, when given, makes it document-scoped: the path relative to
    /// that document is recorded too. Nothing, or an error, or both, on failure (no such item, not a file URL).
    [[nodiscard]] virtual std::optional<QByteArray>
    bookmarkData(const QUrl& url, std::uint32_t options,
                 const std::vector<UrlResourceKey>& includingResourceValuesForKeys,
                 const std::optional<QUrl>& relativeToURL, std::optional<PlatformError>* error) = 0;

    /// The URL of the item that the bookmark names. When the item is no longer at the recorded path but was found
    /// elsewhere, `*bookmarkDataIsStale` becomes true; otherwise it is left alone.
    [[nodiscard]] virtual std::optional<QUrl> resolveBookmarkData(const QByteArray& bookmark, std::uint32_t options,
                                                                  const std::optional<QUrl>& relativeToURL,
                                                                  bool* bookmarkDataIsStale,
                                                                  std::optional<PlatformError>* error) = 0;

    /// Opens access to a resolved URL: true whenever the item exists. Each true is paired with one stop by the caller.
    [[nodiscard]] virtual bool startAccessingSecurityScopedResource(const QUrl& url) = 0;
    virtual void stopAccessingSecurityScopedResource(const QUrl& url) = 0;
};

} // namespace quillow
