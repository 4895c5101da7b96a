#include "cli/DocumentReader.h"

#include "cli/Threads.h"
#include "engines/Explain.h"
#include "worker/Program.h"

namespace quillow::cli {

namespace {

worker::Document documentOf(const Bytes& bytes) {
    if (bytes.descriptor() >= 0) return {{}, bytes.descriptor(), bytes.view().size()};
    return {bytes.view()};
}

} // namespace

DocumentReader::DocumentReader(const Arguments& arguments)
    : readIn_(arguments.readIn) {
    if (readIn_ == ReadIn::thisProcess) return;
    if (auto program = worker::findWorkerProgram()) {
        worker::Limits limits = arguments.limits;
        limits.threads = maximumThreads(arguments);
        pool_.emplace(worker::WorkerProgram{std::move(*program)}, limits);
        pool_->prepare();
    }
}

std::optional<std::string> DocumentReader::obstacle() const {
    if (readIn_ == ReadIn::thisProcess || pool_) return std::nullopt;
    return "quillow-worker, in which documents are isolated, is not found; '--in-process' reads without isolation";
}

Extraction DocumentReader::read(Bytes& bytes, DocumentKind kind, const Options& options) {
    if (!pool_) return extract(bytes.view(), kind, options, [&bytes] { bytes.release(); });
    return pool_->read(documentOf(bytes), kind, options);
}

Extraction DocumentReader::explain(Bytes& bytes, DocumentKind kind, std::size_t page, const Options& options) {
    if (!pool_) return quillow::explain(bytes.view(), kind, page, options);
    return pool_->explain(documentOf(bytes), kind, page, options);
}

std::string isolationLine() {
    const auto program = worker::findWorkerProgram();
    if (!program) return "isolation: none, because quillow-worker is not found";
    const auto isolation = worker::Pool({*program}).isolation();
    if (const auto* const why = std::get_if<std::string>(&isolation)) return "isolation: none, because " + *why;
    return "isolation: " + describe(std::get<worker::Isolation>(isolation));
}

} // namespace quillow::cli
