// How badly an encoding fits a sample. The cost is about the number of bits that the sample's characters take if
// the language is known, in units of 1/kStepsPerBit. The encoding with the lowest cost is the most likely one.
#pragma once

#include "text/DetectorSample.h"
#include "text/Encoding.h"
#include "text/EncodingDetectorTables.h"

namespace quillow::text {

/// The cost of a single-byte encoding for a language that is written in an alphabet.
[[nodiscard]] std::uint64_t alphabetCost(const BytePairCounts& pairs, Encoding encoding, const LanguageModel& model);

/// The cost of Shift_JIS, EUC-JP, EUC-KR, Big5 or gb18030. Counting stops as soon as the cost exceeds `limit`.
[[nodiscard]] std::uint64_t eastAsianCost(const DetectorSample& sample, Encoding encoding, std::uint64_t limit);

} // namespace quillow::text
