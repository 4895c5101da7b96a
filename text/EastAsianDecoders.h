// The decoders of the Encoding Standard for Chinese, Japanese and Korean (sections 10 to 13). They get the whole
// input at once, so they look ahead at the next byte instead of keeping a lead byte, and leave a byte unconsumed
// instead of restoring it.
#pragma once

#include "text/DecoderOutput.h"

namespace quillow::text {

void decodeGb18030(std::string_view bytes, DecoderOutput& out);
void decodeBig5(std::string_view bytes, DecoderOutput& out);
void decodeEucJp(std::string_view bytes, DecoderOutput& out);
void decodeIso2022Jp(std::string_view bytes, DecoderOutput& out);
void decodeShiftJis(std::string_view bytes, DecoderOutput& out);
void decodeEucKr(std::string_view bytes, DecoderOutput& out);

} // namespace quillow::text
