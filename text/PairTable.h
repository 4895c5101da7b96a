// Tables of double-byte character sets. All sets share one pool of rows, so that rows that occur in two sets
// (Shift_JIS and EUC-JP, Big5 and code page 950, UHC and Johab) are stored once.
#pragma once

#include <cstdint>

namespace quillow::text {

struct PairTable {
    /// The characters of one lead byte: `count` codes in the pool from `offset` on, one per column.
    struct Row {
        std::uint32_t offset;
        std::uint32_t count;
    };

    /// Code points; 0 if there is none. A value in the surrogate range is 0xD800 plus an index into `astral`.
    const std::uint16_t* pool;
    const char32_t* astral;      ///< code points over U+FFFF
    const std::uint8_t* columns; ///< column of each trail byte; 0xFF if this set does not have that trail byte
    const Row* rows;             ///< row of each lead byte, from 0x80 on

    /// The code point of a pair, or 0 if the set has none. Any two bytes are allowed.
    [[nodiscard]] char32_t decode(std::uint8_t lead, std::uint8_t trail) const {
        if (lead < 0x80) return 0;
        const Row row = rows[lead - 0x80];
        const std::uint8_t column = columns[trail];
        if (column >= row.count) return 0;
        const std::uint16_t code = pool[row.offset + column];
        return (code & 0xF800) == 0xD800 ? astral[code - 0xD800] : char32_t{code};
    }
};

extern const PairTable kShiftJisPairs;    ///< the standard's index jis0208 by Shift_JIS bytes, with user-defined rows
extern const PairTable kEucJpPairs;       ///< the same index by EUC-JP bytes
extern const PairTable kJisX0212Pairs;    ///< index jis0212, by the bytes after 0x8F in EUC-JP
extern const PairTable kGbkPairs;         ///< index gb18030
extern const PairTable kBig5Pairs;        ///< index Big5 without its four pairs that are two characters each
extern const PairTable kUhcPairs;         ///< index EUC-KR, which is code page 949
extern const PairTable kCodePage950Pairs; ///< Big5 as in Windows
extern const PairTable kMacJapanesePairs; ///< code page 10001
extern const PairTable kMacKoreanPairs;   ///< code page 10003
extern const PairTable kJohabPairs;       ///< code page 1361

} // namespace quillow::text
