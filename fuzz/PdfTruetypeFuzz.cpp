// Any bytes as a TrueType font, also if they do not look like one.
#include "engines/pdf/fonts/fontfiles/TrueTypeFile.h"
#include "fuzz/EmbeddedFontQuestions.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quillow::pdf::TrueTypeFile font(std::string_view(reinterpret_cast<const char*>(data), size));
    quillow::pdf::EmbeddedFontQuestions(font).askAll();
    return 0;
}
