// Objects as text, so that tests can compare them.
#pragma once

#include "engines/pdf/syntax/Object.h"

#include <string>

namespace quillow::pdf::test {

/// As a file would have it: "<</A 1/B [(x) /N 2 0 R null]>>". A stream is its dictionary and "stream".
[[nodiscard]] std::string printed(const Object& object);

} // namespace quillow::pdf::test
