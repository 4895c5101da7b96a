#include "cli/DocumentReader.h"

#include "worker/Program.h"

namespace quillow::cli {

DocumentReader::DocumentReader(const Arguments& arguments)
    : readIn_(arguments.readIn) {
    if (readIn_ == ReadIn::thisProcess) return;
    if (auto program = worker::findWorkerProgram()) {
        pool_.emplace(worker::WorkerProgram{std::move(*program)}, arguments.limits);
        pool_->prepare();
    }
}

std::optional<std::string> DocumentReader::obstacle() const {
    if (readIn_ == ReadIn::thisProcess || pool_) return std::nullopt;
    return "quillow-worker, in which documents are isolated, is not found; '--in-process' reads without isolation";
}

Extraction DocumentReader::read(Bytes& bytes, DocumentKind kind, const Options& options) {
    if (!pool_) return extract(bytes.view(), kind, options, [&bytes] { bytes.release(); });
    if (bytes.descriptor() >= 0) return pool_->read({{}, bytes.descriptor(), bytes.view().size()}, kind, options);
    return pool_->read({bytes.view()}, kind, options);
}

std::string isolationLine() {
    const auto program = worker::findWorkerProgram();
    if (!program) return "isolation: none, because quillow-worker is not found";
    const auto isolation = worker::Pool({*program}).isolation();
    if (const auto* const why = std::get_if<std::string>(&isolation)) return "isolation: none, because " + *why;
    return "isolation: " + describe(std::get<worker::Isolation>(isolation));
}

} // namespace quillow::cli
