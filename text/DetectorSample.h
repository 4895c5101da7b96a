// The input of the encoding detector: the words of a document that contain bytes over 0x7F.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillow::text {

/// Words with a separator (a space) before each and after the last. A word is a run of ASCII letters and bytes over
/// 0x7F, with the bytes that may be the second byte of a pair.
struct DetectorSample {
    std::string words;

    /// Collects words until they have `mostBytes` bytes. HTML tags, comments, scripts and style sheets are left
    /// out, unless nothing else contains a byte over 0x7F.
    explicit DetectorSample(std::string_view bytes, std::size_t mostBytes);
};

/// How often each pair of adjacent bytes occurs in a sample.
struct BytePairCounts {
    struct Entry {
        std::uint8_t first;
        std::uint8_t second;
        std::uint32_t count;
    };
    std::vector<Entry> entries;      ///< the pairs that occur
    std::vector<std::uint8_t> bytes; ///< the byte values that occur

    explicit BytePairCounts(const DetectorSample& sample);
};

} // namespace quillow::text
