// Converts the planned documents to their texts.
#pragma once

#include "cli/Batch.h"
#include "cli/DocumentReader.h"
#include "cli/OutputFolder.h"
#include "cli/PasswordPrompt.h"
#include "cli/Plan.h"
#include "cli/Result.h"
#include "cli/results/Sha256.h"

#include <chrono>
#include <cstddef>
#include <deque>
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

    /// A document on its way. A worker may look at its bytes, so it stays in its place.
    struct Begun {
        Result result = {}; ///< of a document that is not given to the reader, and what is known of one that is
        InputDocument input = {};
        std::optional<DocumentKind> given = {}; ///< what the document was given to the reader as
        std::chrono::steady_clock::duration time = {};
    };

    /// True if the document is a small file: it is there at once, and fits in what lies between this process and a
    /// worker, so that nothing waits for it but the worker.
    [[nodiscard]] bool mayBeginEarly(const PlannedDocument& document) const;
    /// Reads the document's bytes and gives them to the queue. Neither this nor `end` throws if memory runs out. Both
    /// may be called from several threads at once, each with a queue of its own.
    void begin(const PlannedDocument& document, Begun& begun, ReadingQueue& queue);
    /// Takes the text from the queue and writes it to a file, which has no name yet.
    [[nodiscard]] Result end(const PlannedDocument& document, Begun& begun, ReadingQueue& queue);

    /// The result when the text has its name, or when it did not get it.
    [[nodiscard]] Result named(const PlannedDocument& document, Result result,
                               const std::optional<OutputFailure>& failure) const;

private:
    [[nodiscard]] std::optional<Result> decidedByExistingText(const PlannedDocument& document) const;
    void give(const PlannedDocument& document, Begun& begun, ReadingQueue& queue);
    [[nodiscard]] worker::Question questionFor(DocumentKind kind, const PlannedDocument& document) const;
    [[nodiscard]] Result extracted(const PlannedDocument& document, Begun& begun, ReadingQueue& queue);
    [[nodiscard]] Extraction extractAsking(const PlannedDocument& document, Begun& begun, ReadingQueue& queue);
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

/// The conversions of one thread.
class ConversionJob final : public Job {
public:
    ConversionJob(Converter& converter, const Plan& plan, DocumentReader& reader);

    [[nodiscard]] bool mayBeginEarly(std::size_t index) const override {
        return converter_.mayBeginEarly(plan_.documents[index]);
    }
    void begin(std::size_t index) override;
    [[nodiscard]] Result end(std::size_t index) override;

private:
    Converter& converter_;
    const Plan& plan_;
    std::deque<Converter::Begun> begun_; ///< before the queue, which uses the bytes
    ReadingQueue queue_;
};

} // namespace quillow::cli
