// Reads the documents of a run: in workers, or in this process if the user wants it.
#pragma once

#include "cli/Input.h"
#include "cli/options/Arguments.h"
#include "worker/Pool.h"
#include "worker/Queue.h"

#include <deque>
#include <optional>
#include <string>

namespace quillow::cli {

class DocumentReader {
public:
    /// Begins the start of the first worker.
    explicit DocumentReader(const Arguments& arguments);

    /// Why no document can be read; std::nullopt if all is well. There is no way back to this process: the user decides
    /// about isolation.
    [[nodiscard]] std::optional<std::string> obstacle() const;

    /// The document's text or the reason why there is none. Frees the bytes if they are no longer needed and the
    /// document is not locked. May be called from several threads at once.
    [[nodiscard]] Extraction read(Bytes& bytes, const worker::Question& question);

private:
    friend class ReadingQueue;
    [[nodiscard]] Extraction readHere(Bytes& bytes, const worker::Question& question) const;

    const ReadIn readIn_;
    std::optional<worker::Pool> pool_;
};

/// The documents that one thread has read one after another.
class ReadingQueue {
public:
    explicit ReadingQueue(DocumentReader& reader);

    /// Gives a document to a worker. In this process it is read when it is taken.
    void give(Bytes& bytes, const worker::Question& question);
    /// As DocumentReader::read(), the outcome of the document that was given first.
    [[nodiscard]] Extraction take();

private:
    DocumentReader& reader_;
    std::optional<worker::Queue> workers_;
    struct Given {
        Bytes& bytes;
        worker::Question question;
    };
    std::deque<Given> here_;
};

/// What protects the system from documents, in one line.
[[nodiscard]] std::string isolationLine();

} // namespace quillow::cli
