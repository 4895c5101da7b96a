// How far the decoding of a stream came.
#pragma once

#include <cstdint>

namespace quillow::pdf {

enum class Decoding : std::uint8_t {
    complete, ///< a missing end mark is no damage if the format has no other sign that bytes are missing
    cut,      ///< the data is damaged; what came before the break was kept
    tooLong,  ///< a limit was reached; what came before it was kept
    notText,  ///< an image filter, or an unknown one; there are no bytes
};

} // namespace quillow::pdf
