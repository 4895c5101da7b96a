// The kinds of document that the engines read, and how a file name tells them.
#pragma once

#include <optional>
#include <string_view>

namespace quillow {

enum class DocumentKind { rtf, rtfd, html, pdf };

/// The kind that a file-name extension stands for. `extension` is without the dot and already in lower case
/// ("rtf", "rtfd", "html", "htm", "pdf"); any other answers nothing.
[[nodiscard]] constexpr std::optional<DocumentKind> documentKindForExtension(std::string_view extension) {
    if (extension == "rtf") return DocumentKind::rtf;
    if (extension == "rtfd") return DocumentKind::rtfd;
    if (extension == "html" || extension == "htm") return DocumentKind::html;
    if (extension == "pdf") return DocumentKind::pdf;
    return std::nullopt;
}

} // namespace quillow
