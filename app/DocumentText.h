// Reads one document and extracts its text with the reader that its extension selects.
#pragma once

#include "engines/DocumentKind.h"
#include "platform/TextReaders.h"

#include <QByteArray>
#include <QString>

#include <cstdint>
#include <optional>

namespace quillow {

class FileSystem;

class DocumentText { // selector: none
public:
    struct Ports {
        FileSystem& fileSystem;
        RtfTextReader& rtfTextReader;
        HtmlTextReader& htmlTextReader;
        PdfTextReader& pdfTextReader;
    };

    enum class End : std::uint8_t {
        text,            ///< there is a text
        noText,          ///< the document has none, is too large, or its kind is not one that is read
        bytesUnreadable, ///< HTML or PDF whose bytes could not be read
    };

    struct Outcome {
        End end = End::noText;
        std::optional<AttributedString> styledText; ///< for RTF, RTFD and HTML
        std::optional<QByteArray> pdfText;          ///< for PDF, in UTF-8
    };

    explicit DocumentText(const Ports& ports)
        : ports_(ports) {}

    /// The kind that the path's extension says, in any letter case. Nothing on disk is looked at.
    [[nodiscard]] static std::optional<DocumentKind> kindOf(const QString& path);

    /// Reads the document at the path. Changes nothing.
    [[nodiscard]] Outcome read(const QString& path) const;

private:
    [[nodiscard]] Outcome readRtf(const QString& path) const;

    Ports ports_;
};

} // namespace quillow
