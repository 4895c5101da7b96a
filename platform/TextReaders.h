// Ports: readers that turn a document's bytes into its text. Texts are UTF-8 and are never converted to a QString on
// their way to the file.
#pragma once

#include <QByteArray>

#include <optional>

namespace quillow {

/// The styled text of a document. The program uses only its plain characters.
struct AttributedString {
    QByteArray plainUtf8;
    friend bool operator==(const AttributedString&, const AttributedString&) = default;
};

class RtfTextReader {
public:
    virtual ~RtfTextReader() = default;
    /// The styled text of RTF bytes, or std::nullopt. Absent bytes (std::nullopt) differ from empty ones.
    [[nodiscard]] virtual std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) = 0;
};

class HtmlTextReader {
public:
    virtual ~HtmlTextReader() = default;
    /// The styled text of HTML bytes, or std::nullopt.
    [[nodiscard]] virtual std::optional<AttributedString> initWithHTML(const QByteArray& bytes) = 0;
};

class PdfTextReader {
public:
    virtual ~PdfTextReader() = default;
    /// The text of a PDF document in page order as UTF-8, or std::nullopt.
    [[nodiscard]] virtual std::optional<QByteArray> stringOfPDF(const QByteArray& bytes) = 0;
};

} // namespace quillow
