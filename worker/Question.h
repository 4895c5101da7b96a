// What a program wants of a document.
#pragma once

#include "engines/DocumentKind.h"
#include "engines/Extraction.h"

#include <cstdint>

namespace quillow::worker {

struct Question {
    DocumentKind kind = DocumentKind::rtf;
    Options options;
    std::uint64_t explainedPage = 0; ///< from 1: a picture of how the page is read takes the place of the text
};

} // namespace quillow::worker
