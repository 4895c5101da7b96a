#include "engines/pdf/filters/Filter.h"

#include "engines/pdf/filters/Ascii85.h"
#include "engines/pdf/filters/AsciiHex.h"
#include "engines/pdf/filters/Lzw.h"
#include "engines/pdf/filters/RunLength.h"

#include <algorithm>
#include <array>

namespace quillow::pdf {

namespace {

struct NamedFilter {
    std::string_view name;
    std::string_view abbreviation; ///< of inline images; some producers write it for streams too
    FilterName filter;
};

constexpr std::array kFilters{
    NamedFilter{"FlateDecode", "Fl", FilterName::flate},
    NamedFilter{"LZWDecode", "LZW", FilterName::lzw},
    NamedFilter{"ASCII85Decode", "A85", FilterName::ascii85},
    NamedFilter{"ASCIIHexDecode", "AHx", FilterName::asciiHex},
    NamedFilter{"RunLengthDecode", "RL", FilterName::runLength},
    NamedFilter{"DCTDecode", "DCT", FilterName::image},
    NamedFilter{"CCITTFaxDecode", "CCF", FilterName::image},
    NamedFilter{"JBIG2Decode", "JBIG2Decode", FilterName::image},
    NamedFilter{"JPXDecode", "JPXDecode", FilterName::image},
    NamedFilter{"Crypt", "Crypt", FilterName::crypt},
};

Decoding passOn(std::string_view bytes, std::size_t limit, text::ByteBuffer& out) {
    out.append(bytes.substr(0, limit));
    return bytes.size() > limit ? Decoding::tooLong : Decoding::complete;
}

/// The worse of two results: damage before a limit.
Decoding worse(Decoding first, Decoding second) {
    if (first == Decoding::cut || second == Decoding::cut) return Decoding::cut;
    return first == Decoding::complete ? second : first;
}

} // namespace

std::optional<FilterName> filterOfName(std::string_view name) {
    for (const NamedFilter& filter : kFilters)
        if (name == filter.name || name == filter.abbreviation) return filter.filter;
    return std::nullopt;
}

Decoding FilterDecoder::decode(FilterName filter, std::string_view encoded, const PredictorParameters& parameters,
                               std::size_t limit, text::ByteBuffer& out) {
    switch (filter) {
    case FilterName::asciiHex: return decodeAsciiHex(encoded, limit, out);
    case FilterName::ascii85: return decodeAscii85(encoded, limit, out);
    case FilterName::runLength: return decodeRunLength(encoded, limit, out);
    case FilterName::crypt: return passOn(encoded, limit, out);
    case FilterName::image: return Decoding::notText;
    case FilterName::lzw:
    case FilterName::flate: break;
    }
    if (!hasPredictor(parameters)) return decodeCompressed(filter, encoded, parameters.earlyChange, limit, out);
    rows_.clear();
    const std::size_t storedMost = storedLimit(parameters, limit);
    const Decoding decoding = decodeCompressed(filter, encoded, parameters.earlyChange, storedMost, rows_);
    return worse(decoding, undoPredictor(rows_.view(), parameters, limit, out));
}

Decoding FilterDecoder::decodeCompressed(FilterName filter, std::string_view encoded, bool earlyChange,
                                         std::size_t limit, text::ByteBuffer& out) {
    if (filter == FilterName::flate) return flate_.decode(encoded, limit, out);
    return decodeLzw(encoded, earlyChange, limit, out);
}

} // namespace quillow::pdf
