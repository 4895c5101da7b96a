// Any rows with any parameters, which the first bytes give. The result keeps its limit, and a lower limit gives the
// beginning of it.
#include "engines/pdf/filters/Predictor.h"
#include "text/Bytes.h"

#include <cstdlib>

namespace {

using namespace quillow;

constexpr std::size_t kLimit = std::size_t{1} << 22;
constexpr std::size_t kLowLimit = 100;

void require(bool holds) {
    if (!holds) std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    text::ByteCursor cursor({reinterpret_cast<const char*>(data), size});
    pdf::PredictorParameters parameters;
    parameters.predictor = cursor.i8();
    parameters.colors = cursor.i8();
    parameters.bitsPerComponent = cursor.i8();
    parameters.columns = cursor.i32();
    const std::string_view stored = cursor.take(cursor.remaining());
    text::ByteBuffer out;
    const pdf::Decoding decoding = pdf::undoPredictor(stored, parameters, kLimit, out);
    require(out.size() <= stored.size() && out.size() <= pdf::storedLimit(parameters, kLimit));
    text::ByteBuffer little;
    static_cast<void>(pdf::undoPredictor(stored, parameters, kLowLimit, little));
    require(little.size() <= kLowLimit);
    if (decoding == pdf::Decoding::complete) require(out.view().starts_with(little.view()));
    return 0;
}
