#include "engines/pdf/syntax/EncryptionDictionary.h"

namespace quillow::pdf {
namespace {

class Reader {
public:
    Reader(const Dictionary& dictionary, References& references)
        : dictionary_(dictionary)
        , references_(references) {}

    [[nodiscard]] Object at(std::string_view key) const { return references_.resolve(dictionary_.find(key)); }
    [[nodiscard]] int integer(std::string_view key, int fallback) const {
        return static_cast<int>(at(key).integerOr(fallback));
    }
    [[nodiscard]] std::string_view nameOr(std::string_view key, std::string_view fallback) const {
        const Object value = at(key);
        return value.type() == Object::Type::name ? value.name() : fallback;
    }

private:
    Dictionary dictionary_;
    References& references_;
};

} // namespace

EncryptionValues encryptionValuesOf(const Dictionary& encryption, const Dictionary& trailer, References& references) {
    const Reader reader(encryption, references);
    EncryptionValues values;
    values.filter = reader.at("Filter").name();
    values.version = reader.integer("V", 0);
    values.revision = reader.integer("R", 0);
    values.lengthInBits = reader.integer("Length", values.lengthInBits);
    values.owner = reader.at("O").string();
    values.user = reader.at("U").string();
    values.ownerKey = reader.at("OE").string();
    values.userKey = reader.at("UE").string();
    values.permissions = reader.at("P").integerOr(0);
    values.encryptsMetadata = reader.at("EncryptMetadata").booleanOr(true);
    const Object id = references.resolve(trailer.find("ID"));
    if (!id.array().empty()) values.documentId = references.resolve(id.array().front()).string();
    for (const auto& [name, value] : reader.at("CF").dictionary().entries()) {
        const Reader filter(references.resolve(value).dictionary(), references);
        values.cryptFilters.push_back({name, filter.at("CFM").name(), filter.integer("Length", 0)});
    }
    values.streamFilter = reader.nameOr("StmF", values.streamFilter);
    values.stringFilter = reader.nameOr("StrF", values.stringFilter);
    return values;
}

} // namespace quillow::pdf
