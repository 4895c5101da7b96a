// Ports: what turns a document's bytes into its text. Texts are UTF-8 and never become a QString on their way to the file.
#pragma once

#include <QByteArray>

#include <optional>

namespace quillow {

/// The styled text of a document, of which the program only ever takes the plain characters.
struct AttributedString {
    QByteArray plainUtf8;
    friend bool operator==(const AttributedString&, const AttributedString&) = default;
};

class RtfTextReader {
public:
    virtual ~RtfTextReader() = default;
    /// The styled text of RTF bytes, or nothing. Absent bytes are an argument of their own, distinct from empty ones.
    [[nodiscard]] virtual std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) = 0;
};

class HtmlTextReader {
public:
    virtual ~HtmlTextReader() = default;
    /// The styled text of HTML bytes, or nothing.
    [[nodiscard]] virtual std::optional<AttributedString> initWithHTML(const QByteArray& bytes) = 0;
};

class PdfTextReader {
public:
    virtual ~PdfTextReader() = default;
    /// The text of a PDF document in page order as UTF-8, or nothing.
    [[nodiscard]] virtual std::optional<QByteArray> stringOfPDF(const QByteArray& bytes) = 0;
};

} // namespace quillow
