#include "engines/pdf/fonts/AdobePrivateUse.h"

namespace quillow::pdf {

namespace {

/// radicalex to bracerightbt: pieces of large signs, which have had code points of their own since Unicode 3.2.
constexpr char32_t kFirstPiece = 0xF8E5;
constexpr char32_t kPieces[] = {
    0x203E, 0x23D0, 0x23AF, 0x00AE, 0x00A9,
    0x2122, // radicalex arrowvertex arrowhorizex registersans copyrightsans trademarksans
    0x239B, 0x239C, 0x239D, 0x23A1, 0x23A2,
    0x23A3,                                 // parenleft, bracketleft: top, extension, bottom
    0x23A7, 0x23A8, 0x23A9, 0x23AA, 0x23AE, // braceleft: top, middle, bottom; braceex, integralex
    0x239E, 0x239F, 0x23A0, 0x23A4, 0x23A5,
    0x23A6,                 // parenright, bracketright: top, extension, bottom
    0x23AB, 0x23AC, 0x23AD, // braceright: top, middle, bottom
};
constexpr char32_t kLastPiece = kFirstPiece + sizeof kPieces / sizeof *kPieces - 1;
static_assert(kLastPiece == 0xF8FE);

} // namespace

char32_t withoutAdobePrivateUse(char32_t c) {
    if (c < 0xF6BE || c > kLastPiece) return c;
    if (c >= kFirstPiece) return kPieces[c - kFirstPiece];
    if (c == 0xF6BE) return 0x0237;                                   // dotlessj
    if (c >= 0xF730 && c <= 0xF739) return U'0' + (c - 0xF730);       // zerooldstyle to nineoldstyle
    if (c >= 0xF761 && c <= 0xF77A) return U'a' + (c - 0xF761);       // Asmall to Zsmall
    if (c >= 0xF7E0 && c <= 0xF7FE && c != 0xF7F7) return c - 0xF700; // Agravesmall to Thornsmall
    return c;
}

} // namespace quillow::pdf
