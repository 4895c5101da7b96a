#!/usr/bin/env python3
"""make_presentation_forms.py > engines/pdf/layout/PresentationFormsTables.cpp

Prints the compatibility decompositions (NFKC) of the blocks "Alphabetic Presentation Forms" and "Arabic Presentation
Forms-A" and "-B", from the Unicode data of this Python.
"""
import sys
import unicodedata

BLOCKS = [(0xFB00, 0xFB4F), (0xFB50, 0xFDFF), (0xFE70, 0xFEFE)]


def main():
    pool, entries = [], []
    places = {}
    for first, last in BLOCKS:
        for code in range(first, last + 1):
            plain = unicodedata.normalize("NFKC", chr(code))
            if plain == chr(code):
                continue
            if len(plain) > 1 and plain[0] == " " and unicodedata.combining(plain[1]):
                plain = plain[1:]  # drop the blank of a mark drawn alone: it belongs to the letter before it
            if plain not in places:
                places[plain] = len(pool)
                pool.extend(ord(c) for c in plain)
            entries.append((code, places[plain], len(plain)))
    out = sys.stdout.write
    out("// Made by tools/make_presentation_forms.py from Unicode %s.\n" % unicodedata.unidata_version)
    out('#include "engines/pdf/layout/PresentationForms.h"\n\nnamespace quillow::pdf {\n\n// clang-format off\n')
    out("const char16_t kPresentationFormPool[] = {\n")
    for i in range(0, len(pool), 16):
        out("    " + ", ".join("0x%04X" % c for c in pool[i:i + 16]) + ",\n")
    out("};\n\nconst PresentationForm kPresentationForms[] = {\n")
    for i in range(0, len(entries), 6):
        out("    " + ", ".join("{0x%04X, %d, %d}" % e for e in entries[i:i + 6]) + ",\n")
    out("};\nconst std::size_t kPresentationFormCount = %d;\n// clang-format on\n\n} // namespace quillow::pdf\n" % len(entries))


main()
