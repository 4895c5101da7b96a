#include "cli/DocumentReader.h"

#include "cli/Paths.h"
#include "cli/Threads.h"
#include "engines/Explain.h"
#include "worker/Program.h"

#include <sys/stat.h>

namespace quillow::cli {

namespace {

worker::Document documentOf(const Bytes& bytes) {
    if (bytes.descriptor() >= 0) return {{}, bytes.descriptor(), bytes.view().size()};
    return {bytes.view()};
}

/// The threads that the first document will probably want: several if it is the only one and a long PDF.
unsigned threadsOfFirst(const Arguments& arguments) {
    if (arguments.inputs.size() != 1) return 1;
    struct stat status = {};
    const std::string& path = arguments.inputs.front();
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return 1;
    const auto kind = documentKindForExtension(extensionOf(path));
    return kind ? worker::usefulThreads(*kind, static_cast<std::size_t>(status.st_size), maximumThreads(arguments)) : 1;
}

} // namespace

DocumentReader::DocumentReader(const Arguments& arguments)
    : readIn_(arguments.readIn) {
    if (readIn_ == ReadIn::thisProcess) return;
    if (auto program = worker::findWorkerProgram()) {
        worker::Limits limits = arguments.limits;
        limits.threads = maximumThreads(arguments);
        pool_.emplace(worker::WorkerProgram{std::move(*program)}, limits);
        pool_->prepare(threadsOfFirst(arguments));
    }
}

std::optional<std::string> DocumentReader::obstacle() const {
    if (readIn_ == ReadIn::thisProcess || pool_) return std::nullopt;
    return "quillow-worker, in which documents are isolated, is not found; '--in-process' reads without isolation";
}

Extraction DocumentReader::read(Bytes& bytes, DocumentKind kind, const Options& options) {
    if (!pool_) return extract(bytes.view(), kind, options, [&bytes] { bytes.release(); });
    Options useful = options;
    useful.threads = worker::usefulThreads(kind, bytes.view().size(), options.threads);
    return pool_->read(documentOf(bytes), kind, useful);
}

Extraction DocumentReader::explain(Bytes& bytes, DocumentKind kind, std::size_t page, const Options& options) {
    if (!pool_) return quillow::explain(bytes.view(), kind, page, options);
    Options useful = options;
    useful.threads = 1;
    return pool_->explain(documentOf(bytes), kind, page, useful);
}

std::string isolationLine() {
    const auto program = worker::findWorkerProgram();
    if (!program) return "isolation: none, because quillow-worker is not found";
    const auto isolation = worker::Pool({*program}).isolation();
    if (const auto* const why = std::get_if<std::string>(&isolation)) return "isolation: none, because " + *why;
    return "isolation: " + describe(std::get<worker::Isolation>(isolation));
}

} // namespace quillow::cli
