#!/usr/bin/env python3
"""legacy_rtf.py SOURCE TARGET: turns an RTF template in UTF-8 into the 7-bit RTF of the days before Unicode.

Every character over U+007F becomes bytes of the code page named by the nearest mark before it, and the marks vanish:
  @@cp1251@@     both halves of a pair as \\'hh
  @@cp932:plain@@  the second half of a pair as the plain ASCII character where it is a letter, a digit or a simple sign
"""
import re
import sys

SAFE = re.compile(rb"[0-9A-Za-z@^_`~|\[\]]")


def escape(character, codec, plain):
    encoded = character.encode(codec)
    out = "\\'%02x" % encoded[0]
    for trail in encoded[1:]:
        out += chr(trail) if plain and SAFE.match(bytes([trail])) else "\\'%02x" % trail
    return out


def main():
    source = open(sys.argv[1], encoding="utf-8").read()
    codec, plain, out = "cp1252", False, []
    for part in re.split(r"(@@[a-z0-9:]+@@)", source):
        if part.startswith("@@"):
            codec, _, mode = part.strip("@").partition(":")
            plain = mode == "plain"
            continue
        out += [c if c < "\x80" else escape(c, codec, plain) for c in part]
    with open(sys.argv[2], "w", encoding="ascii", newline="\r\n") as target:
        target.write("".join(out))


if __name__ == "__main__":
    main()
