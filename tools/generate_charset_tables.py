#!/usr/bin/env python3
"""generate_charset_tables.py [ROOT | --check DUMP]: writes text/CodePageTables.cpp, text/PairTables.cpp and
text/EncodingTables.cpp.

Sources: the codecs of Python's standard library (generated from the vendors' mapping files at unicode.org), and
the corrections in charset_corrections.py, which adapt them to the Encoding Standard's indexes and to the code
pages of Windows. --check writes nothing. It compares the encodings of the Encoding Standard with a dump of a
browser's decoders, which dump_browser_encodings.html prints.
"""
import array
import json
import pathlib
import sys

import charset_corrections as corrections

NONE = 0xFFFD
LEAD = 0xFFFF

SINGLE_BYTE_CODECS = {
    437: "cp437", 720: "cp720", 737: "cp737", 775: "cp775", 819: "iso8859_1", 850: "cp850", 852: "cp852", 855: "cp855",
    857: "cp857", 858: "cp858", 860: "cp860", 861: "cp861", 862: "cp862", 863: "cp863", 864: "cp864", 865: "cp865",
    866: "cp866", 869: "cp869", 874: "cp874", 1250: "cp1250", 1251: "cp1251", 1252: "cp1252", 1253: "cp1253",
    1254: "cp1254", 1255: "cp1255", 1256: "cp1256", 1257: "cp1257", 1258: "cp1258", 10000: "mac_roman",
    10004: "mac_arabic", 10006: "mac_greek", 10007: "mac_cyrillic", 10010: "mac_romanian", 10017: "mac_cyrillic",
    10029: "mac_latin2", 10079: "mac_iceland", 10081: "mac_turkish", 10082: "mac_croatian", 20127: "ascii",
    20866: "koi8_r", 21866: "koi8_u", 28591: "iso8859_1", 28592: "iso8859_2", 28593: "iso8859_3", 28594: "iso8859_4",
    28595: "iso8859_5", 28596: "iso8859_6", 28597: "iso8859_7", 28598: "iso8859_8", 28599: "iso8859_9",
    28600: "iso8859_10", 28603: "iso8859_13", 28604: "iso8859_14", 28605: "iso8859_15", 28606: "iso8859_16",
}
# Bytes that Python's codecs lack, or decode differently from Windows and the Encoding Standard.
SINGLE_BYTE_CHANGES = {
    1255: {0xCA: 0x05BA},
    10004: {0xC0: 0x066D},
    10081: {0xF5: NONE},
    21866: {0xAE: 0x045E, 0xBE: 0x040E},
}
# The single bytes of double-byte code pages that are neither ASCII nor lead bytes.
HALFWIDTH_KATAKANA = {byte: 0xFF61 + byte - 0xA1 for byte in range(0xA1, 0xE0)}
MAC_SIGNS = {0xFD: 0x00A9, 0xFE: 0x2122, 0xFF: 0x2026}
DOUBLE_BYTE_SINGLES = {
    932: HALFWIDTH_KATAKANA,
    936: {0x80: 0x20AC},
    949: {},
    950: {},
    1361: {},
    10001: HALFWIDTH_KATAKANA | MAC_SIGNS | {0x80: 0x005C, 0xA0: 0x00A0},
    10002: MAC_SIGNS | {0x80: 0x005C, 0xA0: 0x00A0},
    10003: {0x80: 0x00A0, 0x81: 0x20A9, 0x82: 0x2013, 0x83: 0x00A9, 0xFE: 0x2122, 0xFF: 0x2026},
    10008: MAC_SIGNS | {0x80: 0x00FC, 0xA0: 0x00A0},
}
# The single-byte encodings of the Encoding Standard, in its order, with their code pages. Only bytes 0x80 to 0x9F
# differ: if the code page has no character there, the standard has the control character.
STANDARD_SINGLE_BYTE = {
    "ibm866": 866, "iso-8859-2": 28592, "iso-8859-3": 28593, "iso-8859-4": 28594, "iso-8859-5": 28595,
    "iso-8859-6": 28596, "iso-8859-7": 28597, "iso-8859-8": 28598, "iso-8859-10": 28600, "iso-8859-13": 28603,
    "iso-8859-14": 28604, "iso-8859-15": 28605, "iso-8859-16": 28606, "koi8-r": 20866, "koi8-u": 21866,
    "macintosh": 10000, "windows-874": 874, "windows-1250": 1250, "windows-1251": 1251, "windows-1252": 1252,
    "windows-1253": 1253, "windows-1254": 1254, "windows-1255": 1255, "windows-1256": 1256, "windows-1257": 1257,
    "windows-1258": 1258, "x-mac-cyrillic": 10007,
}

# The trail bytes of each set, in the order of its columns.
SHIFT_JIS_TRAILS = [*range(0x40, 0x7F), *range(0x80, 0xFD)]
GBK_TRAILS = [*range(0x40, 0x7F), *range(0x80, 0xFF)]
BIG5_TRAILS = [*range(0x40, 0x7F), *range(0xA1, 0xFF)]
EUC_TRAILS = [*range(0xA1, 0xFF)]
UHC_TRAILS = [*EUC_TRAILS, *range(0x41, 0x5B), *range(0x61, 0x7B), *range(0x81, 0xA1)]
JOHAB_TRAILS = [*range(0x31, 0x7F), *range(0x91, 0xFF), *range(0x81, 0x91)]


def decode(codec, data):
    """The code point of the one character that the bytes encode, or None."""
    try:
        text = data.decode(codec)
    except UnicodeDecodeError:
        return None
    return ord(text) if len(text) == 1 else None


def single_bytes():
    """The 256 code points of every single-byte code page, by number."""
    pages = {}
    for number, codec in SINGLE_BYTE_CODECS.items():
        page = [decode(codec, bytes([byte])) for byte in range(256)]
        page = [NONE if code is None else code for code in page]
        for byte, code in SINGLE_BYTE_CHANGES.get(number, {}).items():
            page[byte] = code
        pages[number] = page
    ascii_half = list(range(0x80))
    for number, text in corrections.SINGLE_BYTE.items():
        pages[number] = ascii_half + [ord(c) for c in text]
    for number, text in corrections.ISCII.items():
        pages[number] = ascii_half + [NONE] * 0x20 + [ord(c) for c in text]
    for number, page in pages.items():
        assert len(page) == 256, number
    return pages


def pairs_of(codec, leads, trails, prefix=b""):
    pairs = {}
    for lead in leads:
        for trail in trails:
            code = decode(codec, prefix + bytes([lead, trail]))
            if code is not None:
                pairs[lead << 8 | trail] = code
    return pairs


def correct(pairs, changes, trails):
    for first, text in changes.items():
        column = trails.index(first & 0xFF)
        for offset, character in enumerate(text):
            pairs[first & 0xFF00 | trails[column + offset]] = ord(character)


def pair_sets():
    """Every double-byte set: name, characters by pair, trail bytes in column order."""
    every_lead = range(0x81, 0xFF)
    shift_jis = pairs_of("cp932", every_lead, SHIFT_JIS_TRAILS)
    mac_japanese = {pair: code for pair, code in shift_jis.items() if (pair >> 8) < 0xED and not 0x85 <= (pair >> 8) <= 0x87}
    correct(mac_japanese, corrections.MAC_JAPANESE, SHIFT_JIS_TRAILS)
    # EUC-JP: a Shift_JIS lead byte has two rows of 94.
    euc_jp = {}
    for lead in range(0x81, 0xF0):
        row = (lead - (0x81 if lead < 0xA0 else 0xC1)) * 2
        for column, trail in enumerate(SHIFT_JIS_TRAILS):
            if lead << 8 | trail in shift_jis and row + column // 94 < 94:
                euc_jp[(0xA1 + row + column // 94) << 8 | (0xA1 + column % 94)] = shift_jis[lead << 8 | trail]
    jis_x_0212 = pairs_of("euc_jp", EUC_TRAILS, EUC_TRAILS, prefix=b"\x8F")
    correct(jis_x_0212, corrections.JISX0212, EUC_TRAILS)
    gbk = pairs_of("gb18030", every_lead, GBK_TRAILS)
    correct(gbk, corrections.GB18030, GBK_TRAILS)
    code_page_950 = pairs_of("cp950", every_lead, BIG5_TRAILS)
    big5 = pairs_of("big5hkscs", every_lead, BIG5_TRAILS)
    big5.update((pair, code) for pair, code in code_page_950.items() if not 0xC6A1 <= pair <= 0xC8FE)
    correct(big5, corrections.BIG5, BIG5_TRAILS)
    uhc = pairs_of("cp949", every_lead, UHC_TRAILS)
    mac_korean = {pair: code for pair, code in uhc.items() if pair >> 8 < 0xFE and pair >> 8 > 0xA0 and pair & 0xFF > 0xA0}
    johab = pairs_of("johab", every_lead, JOHAB_TRAILS)
    return [
        ("kBig5Pairs", big5, BIG5_TRAILS), ("kCodePage950Pairs", code_page_950, BIG5_TRAILS),
        ("kGbkPairs", gbk, GBK_TRAILS), ("kShiftJisPairs", shift_jis, SHIFT_JIS_TRAILS),
        ("kMacJapanesePairs", mac_japanese, SHIFT_JIS_TRAILS), ("kEucJpPairs", euc_jp, EUC_TRAILS),
        ("kJisX0212Pairs", jis_x_0212, EUC_TRAILS), ("kUhcPairs", uhc, UHC_TRAILS),
        ("kMacKoreanPairs", mac_korean, EUC_TRAILS), ("kJohabPairs", johab, JOHAB_TRAILS),
    ]


class Pool:
    """The rows of all sets, one after another. A row that the pool already contains is not stored again."""

    def __init__(self):
        self.codes = array.array("H")
        self.astral = []

    def narrow(self, code):
        if code < 0x10000:
            return code
        if code not in self.astral:
            self.astral.append(code)
        assert len(self.astral) <= 0x800
        return 0xD800 + self.astral.index(code)

    def place(self, row):
        row = array.array("H", [self.narrow(code) for code in row])
        needle, haystack, at = row.tobytes(), self.codes.tobytes(), 0
        while (at := haystack.find(needle, at)) >= 0:
            if at % 2 == 0:
                return at // 2
            at += 1
        self.codes.extend(row)
        return len(self.codes) - len(row)


def lines_of(numbers, per_line=20):
    return "\n".join("    " + ",".join(f"0x{n:X}" for n in numbers[i:i + per_line]) + "," for i in range(0, len(numbers), per_line))


HEADER = "// {what}\n// Generated by tools/generate_charset_tables.py.\n{includes}\n\nnamespace quillow::text {{\n\n// clang-format off\n"
FOOTER = "// clang-format on\n\n} // namespace quillow::text\n"


def write_pair_tables(sets):
    pool = Pool()
    tables, column_maps = [], []
    for name, pairs, trails in sets:
        columns = [0xFF] * 256
        for column, trail in enumerate(trails):
            columns[trail] = column
        if columns not in column_maps:
            column_maps.append(columns)
        rows = []
        for lead in range(0x80, 0x100):
            row = [pairs.get(lead << 8 | trail, 0) for trail in trails]
            while row and row[-1] == 0:
                row.pop()
            rows.append((pool.place(row) if row else 0, len(row)))
        tables.append((name, column_maps.index(columns), rows))
    out = [HEADER.format(what="The double-byte sets: the pool of rows that they share, and the place of each set's rows in the pool.",
                         includes='#include "text/PairTable.h"')]
    out.append("namespace {\n")
    out.append(f"constexpr std::uint16_t kPool[{len(pool.codes)}] = {{\n{lines_of(pool.codes)}\n}};\n")
    out.append(f"constexpr char32_t kAstral[{len(pool.astral)}] = {{\n{lines_of(pool.astral)}\n}};\n")
    for index, columns in enumerate(column_maps):
        out.append(f"constexpr std::uint8_t kColumns{index}[256] = {{\n{lines_of(columns, 32)}\n}};\n")
    for name, _, rows in tables:
        text = ",".join("{%d,%d}" % row for row in rows)
        pieces = text.replace("},{", "},|{").split("|")
        body = "\n".join("    " + "".join(pieces[i:i + 12]) for i in range(0, len(pieces), 12))
        out.append(f"constexpr PairTable::Row {name}Rows[128] = {{\n{body}\n}};\n")
    out.append("} // namespace\n")
    for name, column_map, _ in tables:
        out.append(f"const PairTable {name} = {{kPool, kAstral, kColumns{column_map}, {name}Rows}};")
    return "\n".join(out) + "\n\n" + FOOTER


def write_code_pages(pages, sets):
    pairs = {name: characters for name, characters, _ in sets}
    set_of = {932: "kShiftJisPairs", 936: "kGbkPairs", 949: "kUhcPairs", 950: "kCodePage950Pairs", 1361: "kJohabPairs",
              10001: "kMacJapanesePairs", 10002: "kCodePage950Pairs", 10003: "kMacKoreanPairs", 10008: "kGbkPairs"}
    pages = dict(pages)
    for number, singles in DOUBLE_BYTE_SINGLES.items():
        page = list(range(0x80)) + [NONE] * 0x80
        for pair in pairs[set_of[number]]:
            page[pair >> 8] = LEAD
        for byte, code in singles.items():
            page[byte] = code
        pages[number] = page
    distinct = []
    for number in sorted(pages):
        if pages[number] not in distinct:
            distinct.append(pages[number])
    out = [HEADER.format(what="The list of code pages and their tables of single bytes.", includes='#include "text/CodePageTables.h"')]
    out.append(f"const std::uint16_t kCodePageSingles[{len(distinct)}][256] = {{")
    for page in distinct:
        out.append("{\n" + lines_of(page, 32) + "\n},")
    out.append("};\n")
    out.append("const CodePage kCodePages[] = {")
    for number in sorted(pages):
        pairs_of_page = "&" + set_of[number] if number in set_of else "nullptr"
        out.append(f"    CodePage({number}, kCodePageSingles[{distinct.index(pages[number])}], {pairs_of_page}),")
    out.append("};\n")
    out.append(f"const std::size_t kCodePageCount = {len(pages)};\n")
    return "\n".join(out) + "\n" + FOOTER


def standard_single_bytes(pages):
    """The upper halves, by the Encoding Standard's names; 0 for a byte without a character."""
    halves = {}
    for name, number in STANDARD_SINGLE_BYTE.items():
        half = pages[number][0x80:]
        half = [0x80 + i if code == NONE and i < 0x20 else code for i, code in enumerate(half)]
        halves[name] = [0 if code == NONE else code for code in half]
    return halves


def gb18030_ranges(gbk):
    """The four-byte codes of the basic plane: (first pointer, first code point) of every run of characters. They
    were assigned to the characters without a two-byte code in the edition of 2000, so two-byte codes of later
    editions do not count."""
    moved = {ord(c) for text in corrections.GB18030.values() for c in text} - {0x3000}
    taken = (set(gbk.values()) - moved) | set(decode("gb18030", bytes([lead, trail])) or 0
                                               for lead in range(0x81, 0xFF) for trail in GBK_TRAILS)
    ranges, pointer, previous = [], 0, None
    for code in range(0x80, 0x10000):
        if code in taken or 0xD800 <= code <= 0xDFFF:
            continue
        if previous is None or code != previous + 1:
            ranges.append((pointer, code))
        previous = code
        pointer += 1
    assert pointer == 39420, pointer
    return ranges


def write_encodings(halves, ranges):
    out = [HEADER.format(what="The single-byte indexes of the Encoding Standard (section 9) and the ranges of gb18030.",
                         includes='#include "text/EncodingTables.h"')]
    out.append(f"const std::uint16_t kSingleByteIndexes[{len(halves)}][128] = {{")
    for name, half in halves.items():
        out.append("{ // " + name + "\n" + lines_of(half, 32) + "\n},")
    out.append("};\n")
    body = ",".join("{%d,0x%X}" % r for r in ranges).replace("},{", "},|{").split("|")
    out.append(f"const Gb18030Range kGb18030Ranges[{len(ranges)}] = {{")
    out += ["    " + "".join(body[i:i + 8]) for i in range(0, len(body), 8)]
    out.append("};\n")
    out.append(f"const std::size_t kGb18030RangeCount = {len(ranges)};\n")
    return "\n".join(out) + "\n" + FOOTER


def check(dump, halves, sets, ranges):
    """Prints the differences between our tables and a browser's decoders; returns 1 if there are any."""
    browser = json.loads(pathlib.Path(dump).read_text())
    differences = []
    for name, half in halves.items():
        for i, code in enumerate(half):
            if browser[name][0x80 + i] != (code or NONE):
                differences.append(f"{name} {0x80 + i:02X}")
    pairs = {name: characters for name, characters, _ in sets}
    compound = {0x8862, 0x8864, 0x88A3, 0x88A5}  # two characters each: written out in the decoder
    for label, name in (("gb18030", "kGbkPairs"), ("big5", "kBig5Pairs"), ("shift_jis", "kShiftJisPairs"),
                        ("euc-kr", "kUhcPairs"), ("euc-jp", "kEucJpPairs"), ("jis0212", "kJisX0212Pairs")):
        theirs = {int(pair): codes for pair, codes in browser[label].items() if int(pair) > 0xFF}
        if label == "euc-jp":
            theirs = {pair: codes for pair, codes in theirs.items() if pair >> 8 > 0xA0}
        theirs = {pair: codes if isinstance(codes, int) else codes[0] for pair, codes in theirs.items()}
        for pair in theirs.keys() | pairs[name].keys():
            if theirs.get(pair) != pairs[name].get(pair) and not (label == "big5" and pair in compound):
                differences.append(f"{label} {pair:04X}: {theirs.get(pair, 0):X}, ours {pairs[name].get(pair, 0):X}")
    # One pointer is outside the ranges; the decoder handles it separately.
    their_ranges = [tuple(r) for r in browser["ranges"] if tuple(r) not in ((7457, 0xE7C7), (7458, 0x1E40))]
    if their_ranges != ranges:
        differences.append("gb18030 ranges: " + str(set(their_ranges) ^ set(ranges)))
    print("\n".join(differences[:50]))
    print(f"{len(differences)} differences")
    return 1 if differences else 0


def main():
    pages, sets = single_bytes(), pair_sets()
    halves = standard_single_bytes(pages)
    ranges = gb18030_ranges(next(characters for name, characters, _ in sets if name == "kGbkPairs"))
    if len(sys.argv) == 3 and sys.argv[1] == "--check":
        return check(sys.argv[2], halves, sets, ranges)
    root = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else pathlib.Path(__file__).parents[1])
    text = root / "text"
    text.mkdir(exist_ok=True)
    (text / "PairTables.cpp").write_text(write_pair_tables(sets))
    (text / "CodePageTables.cpp").write_text(write_code_pages(pages, sets))
    (text / "EncodingTables.cpp").write_text(write_encodings(halves, ranges))
    return 0


if __name__ == "__main__":
    sys.exit(main())
