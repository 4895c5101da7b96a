// What a filter made of some bytes, as a value that tests compare and print.
#pragma once

#include "engines/pdf/filters/Filter.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <string_view>

namespace quillow::pdf {

struct Decoded {
    Decoding decoding = Decoding::complete;
    std::string bytes;

    bool operator==(const Decoded&) const = default;
};

inline void PrintTo(const Decoded& decoded, std::ostream* out) {
    *out << "Decoding " << static_cast<int>(decoded.decoding) << ", " << decoded.bytes.size()
         << " bytes: " << testing::PrintToString(decoded.bytes.substr(0, 200));
}

inline constexpr std::size_t kNoLimit = std::size_t{1} << 30;

/// Decodes behind bytes that are in the buffer already, which must stay.
inline Decoded decodedBy(FilterName filter, std::string_view encoded, const PredictorParameters& parameters = {},
                         std::size_t limit = kNoLimit) {
    constexpr std::string_view kBefore = "before";
    text::ByteBuffer out;
    out.append(kBefore);
    Decoded decoded;
    decoded.decoding = FilterDecoder().decode(filter, encoded, parameters, limit, out);
    EXPECT_EQ(out.view().substr(0, kBefore.size()), kBefore);
    decoded.bytes = out.view().substr(kBefore.size());
    return decoded;
}

inline Decoded complete(std::string bytes) {
    return {Decoding::complete, std::move(bytes)};
}

inline Decoded cut(std::string bytes) {
    return {Decoding::cut, std::move(bytes)};
}

inline Decoded tooLong(std::string bytes) {
    return {Decoding::tooLong, std::move(bytes)};
}

} // namespace quillow::pdf
