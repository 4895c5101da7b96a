// The kinds of document that the engines read, and their file-name extensions.
#pragma once

#include <optional>
#include <string_view>

namespace quillow {

enum class DocumentKind { rtf, rtfd, html, pdf };

/// The kind of document with a file-name extension, which is without the dot and in lower case ("rtf", "rtfd", "html",
/// "htm", "pdf"); std::nullopt for any other.
[[nodiscard]] constexpr std::optional<DocumentKind> documentKindForExtension(std::string_view extension) {
    if (extension == "rtf") return DocumentKind::rtf;
    if (extension == "rtfd") return DocumentKind::rtfd;
    if (extension == "html" || extension == "htm") return DocumentKind::html;
    if (extension == "pdf") return DocumentKind::pdf;
    return std::nullopt;
}

} // namespace quillow
