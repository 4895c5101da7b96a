#include "engines/pdf/syntax/Document.h"

#include "engines/pdf/syntax/DocumentState.h"
#include "engines/pdf/syntax/Opening.h"

namespace quillow::pdf {

Document::Document(std::unique_ptr<State> state)
    : state_(std::move(state)) {}

Document::~Document() = default;

Result<std::unique_ptr<Document>> Document::open(std::string_view bytes, std::string_view password) {
    return Opening(bytes, password).open();
}

std::unique_ptr<Document> Document::forThread() const {
    return std::unique_ptr<Document>(new Document(std::make_unique<State>(state_->file())));
}

Dictionary Document::trailer() const {
    return state_->file()->objects.trailer;
}

Dictionary Document::catalog() {
    return get(trailer(), "Root").dictionary();
}

Object Document::load(Reference reference) {
    return state_->load(reference);
}

Object Document::resolve(const Object& object) {
    return state_->resolve(object);
}

Object Document::get(const Dictionary& dictionary, std::string_view key) {
    return state_->resolve(dictionary.find(key));
}

StreamBytes Document::decode(const StreamContent& stream, text::ByteBuffer& buffer) {
    return state_->decode(stream, buffer);
}

std::span<const Reference> Document::loosePages() const {
    return state_->file()->loosePages;
}

bool Document::isExhausted() const {
    return state_->isExhausted();
}

double Document::usedShare() const {
    return state_->usedShare();
}

bool Document::isRepaired() const {
    return state_->file()->isRepaired;
}

} // namespace quillow::pdf
