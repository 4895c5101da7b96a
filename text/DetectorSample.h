// What the encoding detector looks at: the words of a document that hold bytes over 0x7F.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::text {

/// Words with a separator (a space) before each and after the last. A word is a run of ASCII letters and bytes over 0x7F;
/// what may be the second byte of a pair belongs to it too.
struct DetectorSample {
    std::string words;

    /// HTML's tags, comments, scripts and style sheets are left out, unless nothing else holds a byte over 0x7F.
    explicit DetectorSample(std::string_view bytes, std::size_t mostBytes);
};

/// How often each byte follows each in a sample.
struct BytePairCounts {
    struct Entry {
        std::uint8_t first;
        std::uint8_t second;
        std::uint32_t count;
    };
    std::vector<Entry> entries;      ///< of the pairs that occur
    std::vector<std::uint8_t> bytes; ///< that occur

    explicit BytePairCounts(const DetectorSample& sample);
};

} // namespace quillow::text
