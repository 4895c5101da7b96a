#include "engines/pdf/syntax/DocumentState.h"

#include "engines/pdf/Limits.h"
#include "engines/pdf/syntax/Lexer.h"

#include <algorithm>

namespace quillow::pdf {
namespace {

using Kind = CrossReference::Kind;

constexpr int kMaximumReferenceChain = 16; ///< references that lead to references

} // namespace

/// What the dictionary of an object stream refers to must not be in an object stream itself (7.5.7), or reading one
/// would need another, and so on.
class Document::State::OutsideObjectStreams final : public References {
public:
    explicit OutsideObjectStreams(State& state)
        : state_(&state) {}
    [[nodiscard]] Object resolve(const Object& object) override {
        const bool isReference = object.type() == Object::Type::reference;
        const CrossReference entry = state_->file_->objects.find(object.reference().number);
        return isReference && entry.kind != Kind::inFile ? Object() : state_->resolve(object);
    }

private:
    State* state_;
};

Document::State::State(std::shared_ptr<const DocumentFile> file)
    : file_(std::move(file))
    , parser_(arena_)
    , decoder_(kMaximumDecodedTotal + kDecodedTotalRatio * file_->bytes.size())
    , followedLeft_(followedLimit()) {}

Object Document::State::load(Reference reference) {
    const std::uint32_t number = reference.number;
    if (number == 0 || number >= file_->objects.size()) return {};
    ObjectCache::Place& place = cache_.at(number);
    if (place.state == ObjectCache::State::read) return place.object;
    if (place.state == ObjectCache::State::beingRead || isFull()) return {};
    place.state = ObjectCache::State::beingRead;
    place.object = read(number, file_->objects.find(number));
    place.state = ObjectCache::State::read;
    return place.object;
}

Object Document::State::resolve(const Object& object) {
    if (object.type() != Object::Type::reference) return object;
    if (followedLeft_ == 0) return {};
    --followedLeft_;
    Object target = load(object.reference());
    for (int i = 0; target.type() == Object::Type::reference; ++i) {
        if (i == kMaximumReferenceChain) return {};
        target = load(target.reference());
    }
    return target;
}

std::size_t Document::State::memoryLimit() const {
    return kMaximumObjectMemory + kObjectMemoryRatio * file_->bytes.size();
}

std::size_t Document::State::parsedLimit() const {
    return kMaximumParsed + kParsedRatio * file_->bytes.size();
}

std::size_t Document::State::followedLimit() const {
    return kMaximumFollowed + kFollowedRatio * file_->bytes.size();
}

bool Document::State::isFull() const {
    return arena_.size() > memoryLimit() || parsed_ > parsedLimit();
}

double Document::State::usedShare() const {
    const auto share = [](std::size_t used, std::size_t limit) {
        return static_cast<double>(used) / static_cast<double>(limit);
    };
    return std::max({share(arena_.size(), memoryLimit()), share(parsed_, parsedLimit()),
                     share(followedLimit() - followedLeft_, followedLimit()), decoder_.usedShare()});
}

Object Document::State::read(std::uint32_t number, CrossReference entry) {
    if (entry.kind == Kind::inObjectStream) return readFromStream(number, entry);
    if (entry.kind != Kind::inFile) return {};
    if (const auto header = headerOf(number, entry)) return readAt(*header);
    return search(number);
}

std::optional<ObjectHeader> Document::State::headerOf(std::uint32_t number, CrossReference entry) const {
    const auto header = objectHeaderAt(file_->bytes, entry.position);
    return header && header->id.number == number ? header : std::nullopt;
}

Object Document::State::readAt(const ObjectHeader& header) {
    const Decryption* const decryption = header.id == file_->encryption ? nullptr : file_->decryption.get();
    const IndirectObject object = readIndirectObject(file_->bytes, header, parser_, arena_, *this, decryption);
    parsed_ += object.parsed;
    return object.object;
}

Object Document::State::readFromStream(std::uint32_t number, CrossReference entry) {
    ObjectStream* const stream = objectStream(entry.position);
    const auto bytes = stream != nullptr ? stream->find(number, entry.generation) : std::nullopt;
    if (!bytes) return search(number);
    const ParsedObject parsed = parser_.parse(bytes->data(), bytes->data() + bytes->size());
    parsed_ += static_cast<std::size_t>(parsed.end - bytes->data());
    return parsed.object;
}

/// The object as a scan of the whole file finds it, because its cross-reference is wrong. Other objects are not
/// concerned: what an object is does not depend on which were read before.
Object Document::State::search(std::uint32_t number) {
    const CrossReference entry = file_->scan().latest.find(number);
    if (entry.kind != Kind::inFile) return {};
    const auto header = headerOf(number, entry);
    return header ? readAt(*header) : Object();
}

/// An object that is needed for its length only is not parsed and not kept.
std::int64_t Document::State::lengthOf(Reference reference) {
    const CrossReference entry = file_->objects.find(reference.number);
    if (entry.kind != Kind::inFile) return -1;
    const auto header = headerOf(reference.number, entry);
    if (!header) return -1;
    const char* const end = file_->bytes.data() + file_->bytes.size();
    const char* const p = skipWhiteSpace(file_->bytes.data() + header->body, end);
    const NumberToken number = readNumber(p, end);
    return number.end != p && number.isInteger ? Object::ofReal(number.value).integerOr(-1) : -1;
}

ObjectStream* Document::State::objectStream(std::uint32_t number) {
    if (file_->objects.find(number).kind != Kind::inFile) return nullptr;
    const auto [place, isNew] = objectStreams_.try_emplace(number);
    if (isNew && !isFull()) {
        if (const StreamContent* const stream = load({number, 0}).stream()) place->second = readObjectStream(*stream);
    }
    return place->second.get();
}

std::unique_ptr<ObjectStream> Document::State::readObjectStream(const StreamContent& stream) {
    OutsideObjectStreams references(*this);
    const StreamBytes decoded = decodeWith(references, stream, buffer_);
    const auto integer = [&](std::string_view key) {
        return references.resolve(stream.dictionary.find(key)).integerOr(-1);
    };
    const std::int64_t count = integer("N");
    const std::int64_t first = integer("First");
    return std::make_unique<ObjectStream>(arena_.keep(decoded.bytes), count, first);
}

StreamBytes Document::State::decode(const StreamContent& stream, text::ByteBuffer& buffer) {
    return decodeWith(*this, stream, buffer);
}

StreamBytes Document::State::decodeWith(References& references, const StreamContent& stream, text::ByteBuffer& buffer) {
    return decoder_.decode(stream, references, file_->decryption.get(), buffer);
}

bool Document::State::isInPlace(Reference reference) const {
    const CrossReference entry = file_->objects.find(reference.number);
    return entry.kind == Kind::inObjectStream || (entry.kind == Kind::inFile && headerOf(reference.number, entry));
}

} // namespace quillow::pdf
