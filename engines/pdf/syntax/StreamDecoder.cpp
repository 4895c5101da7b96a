#include "engines/pdf/syntax/StreamDecoder.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace quillow::pdf {
namespace {

int integerOf(const Dictionary& dictionary, std::string_view key, int fallback, References& references) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(references.resolve(dictionary.find(key)).integerOr(fallback), -kMost, kMost));
}

PredictorParameters parametersOf(const Dictionary& dictionary, References& references) {
    PredictorParameters parameters;
    if (dictionary.empty()) return parameters;
    parameters.predictor = integerOf(dictionary, "Predictor", parameters.predictor, references);
    parameters.colors = integerOf(dictionary, "Colors", parameters.colors, references);
    parameters.bitsPerComponent = integerOf(dictionary, "BitsPerComponent", parameters.bitsPerComponent, references);
    parameters.columns = integerOf(dictionary, "Columns", parameters.columns, references);
    parameters.earlyChange = integerOf(dictionary, "EarlyChange", 1, references) != 0;
    return parameters;
}

void addFilter(FilterChain& chain, const Object& name, const Dictionary& parameters, References& references) {
    if (name.isNull()) return;
    const std::optional<FilterName> filter = filterOfName(name.name());
    if (!filter) {
        chain.isKnown = false;
        return;
    }
    if (*filter == FilterName::crypt) {
        const std::string_view cryptFilter = references.resolve(parameters.find("Name")).name();
        chain.cryptFilter = cryptFilter.empty() ? "Identity" : cryptFilter;
        return;
    }
    chain.isImage = chain.isImage || *filter == FilterName::image;
    chain.steps[chain.count++] = {*filter, parametersOf(parameters, references)};
}

/// The metadata of a document may be left unencrypted (7.6.4.2, table 21), and a cross-reference stream always is.
bool isEncrypted(const Dictionary& dictionary, const Decryption& decryption, References& references) {
    const Object type = references.resolve(dictionary.find("Type"));
    return !type.isName("XRef") && (decryption.encryptsMetadata() || !type.isName("Metadata"));
}

/// Whether a stream's /F says that its data is in another file, which is never opened (table 5). A name or an array is
/// an inline image's abbreviation of /Filter, which some producers write elsewhere too.
bool isExternal(const Object& file) {
    return file.type() == Object::Type::string || file.type() == Object::Type::dictionary;
}

std::size_t limitFor(std::size_t encoded) {
    return std::max(kMaximumDecodedStream, encoded * kAlwaysDecodedRatio);
}

} // namespace

/// Both entries may be a single value or an array (table 5). The names of inline images are taken too.
FilterChain filtersOf(const Dictionary& dictionary, References& references) {
    FilterChain chain;
    Object filters = references.resolve(dictionary.find("Filter"));
    if (filters.isNull()) filters = references.resolve(dictionary.find("F"));
    if (filters.isNull()) return chain;
    Object parameters = references.resolve(dictionary.find("DecodeParms"));
    if (parameters.isNull()) parameters = references.resolve(dictionary.find("DP"));
    if (filters.type() != Object::Type::array) {
        // Some producers write an array for one filter too.
        if (!parameters.array().empty()) parameters = references.resolve(parameters.array().front());
        addFilter(chain, filters, parameters.dictionary(), references);
        return chain;
    }
    const std::span<const Object> names = filters.array();
    chain.isKnown = names.size() <= kMaximumFilters;
    for (std::size_t i = 0; i < names.size() && chain.isKnown; ++i) {
        const bool isShared = parameters.type() == Object::Type::dictionary && names.size() == 1;
        const Object own = i < parameters.array().size() ? references.resolve(parameters.array()[i]) : Object();
        addFilter(chain, references.resolve(names[i]), isShared ? parameters.dictionary() : own.dictionary(),
                  references);
    }
    return chain;
}

StreamBytes StreamDecoder::decode(const StreamContent& stream, References& references, const Decryption* decryption,
                                  text::ByteBuffer& out) {
    out.clear();
    if (isExhausted()) return {{}, false, false};
    bytesLeft_ -= kLeastDecoded;
    if (isExternal(references.resolve(stream.dictionary.find("F")))) return {{}, false, false};
    const FilterChain chain = filtersOf(stream.dictionary, references);
    if (chain.isImage) return {{}, true, true};
    if (!chain.isKnown) return {{}, false, false};
    StreamBytes bytes{stream.encoded, !stream.isCut, false};
    text::ByteBuffer* to = chain.count % 2 == 1 ? &out : &scratch_;
    text::ByteBuffer* other = chain.count % 2 == 1 ? &scratch_ : &out;
    if (decryption != nullptr && isEncrypted(stream.dictionary, *decryption, references)) {
        other->clear();
        decryption->decryptStream(stream.id.number, stream.id.generation, chain.cryptFilter, bytes.bytes, *other);
        bytes.bytes = other->view();
    }
    return apply(chain, bytes, limitFor(stream.encoded.size()), to, other);
}

/// Each filter writes to one buffer what the one before it wrote to the other.
StreamBytes StreamDecoder::apply(const FilterChain& chain, StreamBytes bytes, std::size_t limit, text::ByteBuffer* to,
                                 text::ByteBuffer* other) {
    for (std::size_t i = 0; i < chain.count; ++i, std::swap(to, other)) {
        const auto& [filter, parameters] = chain.steps[i];
        to->clear();
        const Decoding decoding = filters_.decode(filter, bytes.bytes, parameters, std::min(limit, bytesLeft_), *to);
        bytesLeft_ -= to->size();
        bytes.bytes = to->view();
        bytes.complete = bytes.complete && decoding == Decoding::complete;
    }
    return bytes;
}

} // namespace quillow::pdf
