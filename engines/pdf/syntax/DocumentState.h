// The state of a document that one thread reads.
#pragma once

#include "engines/pdf/syntax/Document.h"
#include "engines/pdf/syntax/DocumentFile.h"
#include "engines/pdf/syntax/IndirectObject.h"
#include "engines/pdf/syntax/ObjectCache.h"
#include "engines/pdf/syntax/ObjectStream.h"
#include "engines/pdf/syntax/StreamDecoder.h"

#include <unordered_map>

namespace quillow::pdf {

class Document::State final : public References, public StreamLengths {
public:
    explicit State(std::shared_ptr<const DocumentFile> file);

    [[nodiscard]] const std::shared_ptr<const DocumentFile>& file() const { return file_; }
    [[nodiscard]] Object load(Reference reference);
    [[nodiscard]] Object resolve(const Object& object) override;
    [[nodiscard]] StreamBytes decode(const StreamContent& stream, text::ByteBuffer& buffer);
    /// Null if the object is not an object stream that can be read.
    [[nodiscard]] ObjectStream* objectStream(std::uint32_t number);
    /// Whether the object is where its cross-reference says.
    [[nodiscard]] bool isInPlace(Reference reference) const;

    [[nodiscard]] bool isExhausted() const { return followedLeft_ == 0 || decoder_.isExhausted(); }
    [[nodiscard]] double usedShare() const;

private:
    class OutsideObjectStreams;

    [[nodiscard]] std::int64_t lengthOf(Reference reference) override;
    [[nodiscard]] const Keywords& keywords() override { return file_->keywords.get(); }

    [[nodiscard]] Object read(std::uint32_t number, CrossReference entry);
    [[nodiscard]] std::optional<ObjectHeader> headerOf(std::uint32_t number, CrossReference entry) const;
    [[nodiscard]] Object readAt(const ObjectHeader& header);
    [[nodiscard]] Object readFromStream(std::uint32_t number, CrossReference entry);
    [[nodiscard]] Object search(std::uint32_t number);
    [[nodiscard]] std::unique_ptr<ObjectStream> readObjectStream(const StreamContent& stream);
    [[nodiscard]] std::size_t memoryLimit() const;
    [[nodiscard]] std::size_t parsedLimit() const;
    [[nodiscard]] std::size_t followedLimit() const;
    [[nodiscard]] bool isFull() const;
    [[nodiscard]] StreamBytes decodeWith(References& references, const StreamContent& stream, text::ByteBuffer& buffer);

    std::shared_ptr<const DocumentFile> file_;
    ObjectCache cache_;
    Arena arena_;
    ObjectParser parser_;
    StreamDecoder decoder_;
    text::ByteBuffer buffer_; ///< of object streams while they are decoded
    std::unordered_map<std::uint32_t, std::unique_ptr<ObjectStream>> objectStreams_;
    std::size_t followedLeft_; ///< references that may still be followed
    std::size_t parsed_ = 0;   ///< bytes that objects were parsed from
};

} // namespace quillow::pdf
