#include "engines/pdf/syntax/Opening.h"

#include "engines/pdf/Limits.h"
#include "engines/pdf/syntax/CrossReferenceReader.h"
#include "engines/pdf/syntax/EncryptionDictionary.h"
#include "engines/pdf/syntax/PageTree.h"

namespace quillow::pdf {
namespace {

/// Whether only attached files are encrypted (7.6.5.1): neither strings nor other streams are.
bool isReadableWithoutKey(const EncryptionValues& values) {
    constexpr int kWithCryptFilters = 4;
    return values.version >= kWithCryptFilters && values.streamFilter == "Identity" &&
           values.stringFilter == "Identity";
}

} // namespace

Opening::Opening(std::string_view bytes, std::string_view password)
    : file_(std::make_shared<DocumentFile>(bytes))
    , password_(password) {}

Result<std::unique_ptr<Document>> Opening::open() {
    if (file_->bytes.size() > kMaximumDocument) return Failure{Reason::tooLarge, "the document is too large"};
    const std::size_t header = headerOffsetOf(file_->bytes);
    Outcome outcome = openByTables(header);
    if (outcome == Outcome::unusable && header != 0) outcome = openByTables(0);
    if (outcome == Outcome::unusable) outcome = openByRepair();
    if (outcome == Outcome::locked && !Decryption::isAvailable())
        return Failure{Reason::unreadable, "libnettle 8, which decrypts PDFs, is not installed"};
    if (outcome == Outcome::locked) return Failure{Reason::locked, "needs a password"};
    if (outcome == Outcome::unusable) return Failure{Reason::damaged, "the document has no pages"};
    return std::move(document_);
}

Opening::Outcome Opening::openByTables(std::size_t base) {
    const std::optional<std::size_t> start = startOffsetOf(file_->bytes);
    if (!start) return Outcome::unusable;
    auto objects = CrossReferenceReader(file_->bytes, base, file_->keywords, file_->arena).read(*start);
    if (!objects) return Outcome::unusable;
    begin(std::move(*objects));
    if (!isRootInPlace()) return Outcome::unusable;
    if (!unlock()) return Outcome::locked;
    return hasPage(*document_) ? Outcome::opened : Outcome::unusable;
}

void Opening::begin(CrossReferences objects) {
    file_->objects = std::move(objects);
    file_->decryption.reset();
    file_->encryption = {};
    renewState();
}

void Opening::renewState() {
    document_.reset(new Document(std::make_unique<Document::State>(file_)));
}

bool Opening::unlock() {
    const Object entry = document_->trailer().find("Encrypt");
    const Dictionary encryption = document_->resolve(entry).dictionary();
    if (encryption.empty()) return true;
    const EncryptionValues values = encryptionValuesOf(encryption, document_->trailer(), state());
    file_->encryption = entry.reference();
    file_->decryption = Decryption::open(values, password_);
    return file_->decryption != nullptr || isReadableWithoutKey(values);
}

/// Whether the cross-references are right where it matters most. Those of other objects are checked when they are read.
bool Opening::isRootInPlace() const {
    const Object root = document_->trailer().find("Root");
    return root.type() == Object::Type::reference && document_->state_->isInPlace(root.reference());
}

} // namespace quillow::pdf
