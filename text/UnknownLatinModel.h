// A model of no language in particular: words in Latin letters, some of them with accents.
#pragma once

#include "text/EncodingDetectorTables.h"

namespace quillow::text {

/// For texts in windows-1252 whose language has no model of its own, and for names.
extern const LanguageModel kUnknownLatinModel;

} // namespace quillow::text
