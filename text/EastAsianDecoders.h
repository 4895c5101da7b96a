// The decoders of the Encoding Standard for Chinese, Japanese and Korean (sections 10 to 13), whole input at once. Where the
// standard keeps a lead byte between calls, these look at the next byte; "restore" is not to consume it.
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
