// Any encryption dictionary, and any bytes as a string and as a stream of the document. tools/make_encrypted_tables.py
// writes the seeds in this order of fields.
#include "engines/pdf/crypt/Decryption.h"
#include "text/Bytes.h"

#include <cstdlib>

namespace {

using namespace quillow;

void require(bool holds) {
    if (!holds) std::abort();
}

/// A byte for the length, then the bytes.
std::string_view field(text::ByteCursor& cursor) {
    return cursor.take(cursor.u8());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    text::ByteCursor cursor({reinterpret_cast<const char*>(data), size});
    pdf::EncryptionValues values;
    values.filter = "Standard";
    values.version = cursor.i8();
    values.revision = cursor.i8();
    values.lengthInBits = cursor.i16();
    values.permissions = cursor.i32();
    values.encryptsMetadata = cursor.u8() != 0;
    values.owner = field(cursor);
    values.user = field(cursor);
    values.ownerKey = field(cursor);
    values.userKey = field(cursor);
    values.documentId = field(cursor);
    const std::string_view password = field(cursor);
    values.streamFilter = field(cursor);
    values.stringFilter = field(cursor);
    const std::string_view ownFilter = field(cursor);
    for (std::size_t count = cursor.u8(); count > 0 && !cursor.atEnd(); --count) {
        const std::string_view name = field(cursor);
        const std::string_view method = field(cursor);
        values.cryptFilters.push_back({name, method, cursor.i16()});
    }
    const auto decryption = pdf::Decryption::open(values, password);
    if (!decryption) return 0;
    const std::uint32_t number = cursor.u32();
    const std::uint16_t generation = cursor.u16();
    const std::string_view bytes = cursor.take(cursor.remaining());
    text::ByteBuffer out;
    decryption->decryptString(number, generation, bytes, out);
    require(out.size() <= bytes.size());
    out.clear();
    decryption->decryptStream(number, generation, ownFilter, bytes, out);
    require(out.size() <= bytes.size());
    return 0;
}
