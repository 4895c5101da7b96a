// Converts the planned documents to their texts, one by one.
#pragma once

#include "cli/DocumentReader.h"
#include "cli/OutputFolder.h"
#include "cli/PasswordPrompt.h"
#include "cli/Plan.h"
#include "cli/Result.h"
#include "cli/results/Sha256.h"

#include <optional>

namespace quillow::cli {

class Converter {
public:
    /// With an output folder the texts are written there, otherwise the results contain them. With `sha256` the results
    /// have the members that are for results only.
    Converter(const Arguments& arguments, DocumentReader& reader, const OutputFolder* outputFolder,
              std::optional<Sha256> sha256)
        : arguments_(arguments)
        , reader_(reader)
        , folder_(outputFolder)
        , sha256_(sha256) {}

    /// Reads the document, extracts its text and writes it to a file, which has no name yet. Does not throw if memory
    /// runs out. May be called from several threads at once.
    [[nodiscard]] Result convert(const PlannedDocument& document);

    /// The result when the text has its name, or when it did not get it.
    [[nodiscard]] Result named(const PlannedDocument& document, Result result,
                               const std::optional<OutputFailure>& failure) const;

private:
    [[nodiscard]] Result convertUnguarded(const PlannedDocument& document);
    [[nodiscard]] std::optional<Result> decidedByExistingText(const PlannedDocument& document) const;
    [[nodiscard]] Result readAndExtract(const PlannedDocument& document);
    [[nodiscard]] Result extracted(InputDocument& input, const PlannedDocument& document);
    [[nodiscard]] Extraction extractAsking(InputDocument& input, DocumentKind kind, unsigned threads);
    [[nodiscard]] Result written(Result result, const PlannedDocument& document) const;
    /// The name of the text, if a run that was killed has already written it.
    [[nodiscard]] std::optional<std::string> writtenEarlier(const PlannedDocument& document,
                                                            const std::string& text) const;

    const Arguments& arguments_;
    DocumentReader& reader_;
    const OutputFolder* const folder_;
    const std::optional<Sha256> sha256_;
    PasswordPrompt prompt_;
};

} // namespace quillow::cli
