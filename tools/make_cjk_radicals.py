#!/usr/bin/env python3
"""make_cjk_radicals.py [EquivalentUnifiedIdeograph.txt] > engines/pdf/fonts/CjkRadicalsTables.cpp

Prints the ideographs that look the same as CJK radicals, from the file of that name of the Unicode Character Database
(Debian package unicode-data).
"""
import re
import sys

FIRST, LAST = 0x2E80, 0x2FD5
FILE = "/usr/share/unicode/EquivalentUnifiedIdeograph.txt"
LINE = re.compile(r"([0-9A-F]+)(?:\.\.([0-9A-F]+))?\s*;\s*([0-9A-F]+)")


def main():
    ideographs = [0] * (LAST - FIRST + 1)
    lines = open(sys.argv[1] if len(sys.argv) > 1 else FILE, encoding="utf-8").read().split("\n")
    for line in lines:
        found = LINE.match(line)
        if not found:
            continue
        first, last = int(found[1], 16), int(found[2] or found[1], 16)
        for code in range(max(first, FIRST), min(last, LAST) + 1):
            ideographs[code - FIRST] = int(found[3], 16)
    out = sys.stdout.write
    out("// Made by tools/make_cjk_radicals.py from %s.\n" % lines[0].lstrip("# "))
    out('#include "engines/pdf/fonts/CjkRadicals.h"\n\nnamespace quillow::pdf {\n\n// clang-format off\n')
    out("const char32_t kIdeographsOfRadicals[kLastRadical - kFirstRadical + 1] = {\n")
    for i in range(0, len(ideographs), 12):
        out("    " + ", ".join("0x%04X" % c for c in ideographs[i:i + 12]) + ",\n")
    out("};\n// clang-format on\n\n} // namespace quillow::pdf\n")


main()
