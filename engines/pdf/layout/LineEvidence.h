// The words of a line and the gaps between them, for people who want to see why a gap is a blank.
#pragma once

#include "engines/pdf/layout/Evidence.h"
#include "engines/pdf/layout/Letter.h"

#include <span>

namespace quillow::pdf {

/// Adds the words of a line in that area, its gaps, and the threshold that decides about them: see `blankThreshold`.
/// `letters` are from left to right.
void showLine(const Page& page, const Box& area, std::span<const Letter> letters, float threshold, Evidence& evidence);

} // namespace quillow::pdf
