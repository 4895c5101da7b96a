// The generated list of code pages, sorted by number.
#pragma once

#include "text/CodePage.h"
#include "text/PairTable.h"

#include <cstddef>

namespace quillow::text {

extern const CodePage kCodePages[];
extern const std::size_t kCodePageCount;

} // namespace quillow::text
