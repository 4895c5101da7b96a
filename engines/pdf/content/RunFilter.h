// Leaves out glyphs that nobody sees.
#pragma once

#include "engines/pdf/content/Page.h"

namespace quillow::pdf {

/// Removes glyphs of `run`, whose glyphs are the last ones of the page: those whose middle is outside the crop box, and
/// those that lie wholly outside the clipping box. Characters of an ActualText move on to the next glyph that stays.
void dropUnseenGlyphs(Page& page, Run& run, const Box& clip);

} // namespace quillow::pdf
