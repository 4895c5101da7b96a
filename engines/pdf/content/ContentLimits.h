// How much content is read.
#pragma once

#include "engines/pdf/Limits.h"

namespace quillow::pdf {

/// In operators; see Limits.h. Tests set lower ones.
struct ContentLimits {
    std::size_t operatorsOfPage = kMaximumOperators;
    std::size_t operatorsOfDocument = kMaximumOperatorsOfDocument;
};

} // namespace quillow::pdf
