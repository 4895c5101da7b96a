// The predictors of LZW and Flate (ISO 32000-2, 7.4.4.4): rows of samples that were stored as differences.
#pragma once

#include "engines/pdf/filters/Decoding.h"
#include "text/ByteBuffer.h"

#include <cstddef>
#include <string_view>

namespace quillow::pdf {

/// The decode parameters of LZW and Flate (7.4.4.3, table 8), with the defaults of the standard.
struct PredictorParameters {
    int predictor = 1; ///< 1 none, 2 TIFF, 10 and over PNG
    int colors = 1;
    int bitsPerComponent = 8;
    int columns = 1;
    bool earlyChange = true; ///< of LZW only
};

/// Parameters beyond these, or below 1, are damage: the rows of the data cannot be found.
inline constexpr int kMaximumColors = 32; ///< components of a DeviceN colour space (annex C)
inline constexpr int kMaximumColumns = 1 << 24;

[[nodiscard]] bool hasPredictor(const PredictorParameters& parameters);

/// How many bytes of stored rows give `limit` decoded bytes. PNG rows have a tag each.
[[nodiscard]] std::size_t storedLimit(const PredictorParameters& parameters, std::size_t limit);

/// Appends to `out` the samples of the stored rows, at most `limit` bytes. A short last row is kept.
[[nodiscard]] Decoding undoPredictor(std::string_view stored, const PredictorParameters& parameters, std::size_t limit,
                                     text::ByteBuffer& out);

} // namespace quillow::pdf
