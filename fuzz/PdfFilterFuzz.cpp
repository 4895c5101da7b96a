// Any bytes through one filter, which the target names (QUILLOW_FILTER). The first byte says whether LZW widens its
// codes early. The result keeps its limit. A lower limit gives the beginning of it; not with Flate, which may read data
// without a header from another start then.
#include "engines/pdf/filters/Filter.h"

#include <cstdlib>

namespace {

using namespace quillow;
using pdf::Decoding;

constexpr std::size_t kLimit = std::size_t{1} << 22;
constexpr std::size_t kLowLimit = 100;

void require(bool holds) {
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    constexpr pdf::FilterName kFilter = pdf::FilterName::QUILLOW_FILTER;
    pdf::PredictorParameters parameters;
    parameters.earlyChange = data[0] % 2 == 0;
    const std::string_view encoded(reinterpret_cast<const char*>(data + 1), size - 1);
    pdf::FilterDecoder decoder;
    text::ByteBuffer out;
    const Decoding decoding = decoder.decode(kFilter, encoded, parameters, kLimit, out);
    require(out.size() <= kLimit && decoding != Decoding::notText);
    text::ByteBuffer little;
    const Decoding early = decoder.decode(kFilter, encoded, parameters, kLowLimit, little);
    require(little.size() <= kLowLimit);
    if (kFilter == pdf::FilterName::flate) return 0;
    require(out.view().starts_with(little.view()));
    if (out.size() > kLowLimit) require(early == Decoding::tooLong);
    return 0;
}
