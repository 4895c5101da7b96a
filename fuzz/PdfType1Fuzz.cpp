// Any bytes as a Type 1 font, also if they do not look like one.
#include "engines/pdf/fonts/fontfiles/Type1File.h"
#include "fuzz/EmbeddedFontQuestions.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    quillow::pdf::Type1File font(std::string_view(reinterpret_cast<const char*>(data), size));
    quillow::pdf::EmbeddedFontQuestions(font).askAll();
    return 0;
}
