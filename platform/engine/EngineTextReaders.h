// The text-reader ports over the engines' one door. Any text counts, a partial one too; why there is none, or not all of it, goes
// to a log of the caller's in one line.
#pragma once

#include "engines/Extract.h"
#include "platform/TextReaders.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace quillow {

/// What the readers have in common: a document's bytes in, its text or a line for the log out.
class DocumentExtractor {
public:
    using Extract = std::function<Extraction(std::span<const std::byte> bytes, DocumentKind kind)>;
    using ReasonLog = std::function<void(std::string_view line)>;

    /// `reasonLog` (may be empty) is told a line such as "PDF document: locked: it needs a password", without a line end,
    /// for every outcome but a whole text.
    explicit DocumentExtractor(ReasonLog reasonLog);
    DocumentExtractor(ReasonLog reasonLog, Extract extract);

    [[nodiscard]] std::optional<QByteArray> textOf(const QByteArray& bytes, DocumentKind kind) const;

private:
    Extract extract_;
    ReasonLog reasonLog_;
};

class EngineRtfTextReader final : public RtfTextReader {
public:
    explicit EngineRtfTextReader(DocumentExtractor extractor)
        : extractor_(std::move(extractor)) {}
    /// Absent bytes answer nothing without a word to the engine; empty ones are the engine's to judge.
    [[nodiscard]] std::optional<AttributedString> initWithRTF(const std::optional<QByteArray>& bytes) override;

private:
    DocumentExtractor extractor_;
};

class EngineHtmlTextReader final : public HtmlTextReader {
public:
    explicit EngineHtmlTextReader(DocumentExtractor extractor)
        : extractor_(std::move(extractor)) {}
    [[nodiscard]] std::optional<AttributedString> initWithHTML(const QByteArray& bytes) override;

private:
    DocumentExtractor extractor_;
};

class EnginePdfTextReader final : public PdfTextReader {
public:
    explicit EnginePdfTextReader(DocumentExtractor extractor)
        : extractor_(std::move(extractor)) {}
    [[nodiscard]] std::optional<QByteArray> stringOfPDF(const QByteArray& bytes) override;

private:
    DocumentExtractor extractor_;
};

} // namespace quillow
