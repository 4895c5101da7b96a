// How badly an encoding fits a sample: about how many bits it takes to write the sample's characters down, in steps of
// kStepsPerBit, knowing the language. The encoding with the least is the likeliest.
#pragma once

#include "text/DetectorSample.h"
#include "text/Encoding.h"
#include "text/EncodingDetectorTables.h"

namespace quillow::text {

/// For a single-byte encoding and a language written in an alphabet.
[[nodiscard]] std::uint64_t alphabetCost(const BytePairCounts& pairs, Encoding encoding, const LanguageModel& model);

/// For Shift_JIS, EUC-JP, EUC-KR, Big5 and gb18030. Counting stops once the cost is over the limit.
[[nodiscard]] std::uint64_t eastAsianCost(const DetectorSample& sample, Encoding encoding, std::uint64_t limit);

} // namespace quillow::text
