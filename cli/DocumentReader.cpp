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

worker::Question usefulQuestion(const Bytes& bytes, worker::Question question) {
    unsigned& threads = question.options.threads;
    threads = question.explainedPage > 0 ? 1 : worker::usefulThreads(question.kind, bytes.view().size(), threads);
    return question;
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

Extraction DocumentReader::readHere(Bytes& bytes, const worker::Question& question) const {
    if (question.explainedPage > 0)
        return quillow::explain(bytes.view(), question.kind, question.explainedPage, question.options);
    return extract(bytes.view(), question.kind, question.options, [&bytes] { bytes.release(); });
}

Extraction DocumentReader::read(Bytes& bytes, const worker::Question& question) {
    if (!pool_) return readHere(bytes, question);
    return pool_->read(documentOf(bytes), usefulQuestion(bytes, question));
}

ReadingQueue::ReadingQueue(DocumentReader& reader)
    : reader_(reader) {
    if (reader.pool_) workers_.emplace(*reader.pool_);
}

void ReadingQueue::give(Bytes& bytes, const worker::Question& question) {
    if (workers_) return workers_->give(documentOf(bytes), usefulQuestion(bytes, question));
    here_.push_back({bytes, question});
}

Extraction ReadingQueue::take() {
    if (workers_) return workers_->take();
    const Given given = std::move(here_.front());
    here_.pop_front();
    return reader_.readHere(given.bytes, given.question);
}

std::string isolationLine() {
    const auto program = worker::findWorkerProgram();
    if (!program) return "isolation: none, because quillow-worker is not found";
    const auto isolation = worker::Pool({*program}).isolation();
    if (const auto* const why = std::get_if<std::string>(&isolation)) return "isolation: none, because " + *why;
    return "isolation: " + describe(std::get<worker::Isolation>(isolation));
}

} // namespace quillow::cli
