// The text-reader ports, implemented with an engine. Any text is accepted, a partial one too. If the
// text is missing or incomplete, the reason goes to the caller's log in one line.
#pragma once

#include "engines/DocumentKind.h"
#include "engines/Extraction.h"
#include "platform/TextReaders.h"

#include <QByteArray>

#include <cstddef>
#include <functional>
#include <optional>
#include <span>
#include <string_view>
#include <utility>

namespace quillow {

/// The common part of the readers: turns a document's bytes into its text or a log line.
class DocumentExtractor {
public:
    using Extract = std::function<Extraction(std::span<const std::byte> bytes, DocumentKind kind)>;
    using ReasonLog = std::function<void(std::string_view line)>;

    /// `extract` reads one document. `reasonLog` (may be empty) gets a line such as "PDF document: locked: it needs a
    /// password", without a line end, for every outcome except a complete text.
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
    /// Returns std::nullopt for absent bytes without calling the engine. Empty bytes go to the engine.
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
