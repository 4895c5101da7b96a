#!/usr/bin/env python3
"""collect_detector_texts.py TEXTS: writes TEXTS/LANG.train for train_encoding_detector.py from the message
translations that are installed on this system (/usr/share/locale/LANG/LC_MESSAGES/*.mo). One message in seven goes
to TEXTS/LANG.held instead, for measuring. The more programs with translations are installed, the better."""
import pathlib
import random
import re
import struct
import sys

LOCALES = pathlib.Path("/usr/share/locale")
LANGUAGES = ("sq ca cy cs da de eo es et eu fi fr ga gl hr hu is it lt lv nb nl pl pt ro sk sl sv tr vi be bg mk ru sr uk el "
             "he ar fa th ja ko zh_CN zh_TW").split()
# Names of places and languages are not prose.
LEFT_OUT = ("iso_", "xkeyboard")
NOISE = re.compile(r"<[^>]*>|%[-\d$.*lhz]*[a-zA-Z]|\{[^}]*\}|\$\w+|&[a-z]+;|\\[a-z]|https?:\S+|--?[\w-]+")


def messages(path):
    """The translated texts of one catalogue in GNU's .mo format."""
    data = path.read_bytes()
    order = "<" if data[:4] == b"\xde\x12\x04\x95" else ">"
    count, keys, texts = struct.unpack_from(order + "3I", data, 8)
    charset = "utf-8"
    for i in range(count):
        length, offset = struct.unpack_from(order + "2I", data, keys + 8 * i)
        key = data[offset:offset + length]
        length, offset = struct.unpack_from(order + "2I", data, texts + 8 * i)
        text = data[offset:offset + length]
        if not key:
            named = re.search(rb"charset=([\w-]+)", text)
            charset = named[1].decode() if named else charset
            continue
        try:
            for form in text.decode(charset).split("\0"):
                if form.encode() != key:
                    yield form
        except (UnicodeDecodeError, LookupError):
            continue


def cleaned(text):
    text = NOISE.sub(" ", text)
    text = re.sub(r"\(\w\)", "", re.sub(r"[_&](?=\w)", "", text))  # access keys of menu items
    return " ".join(text.split())


def main():
    texts = pathlib.Path(sys.argv[1])
    texts.mkdir(parents=True, exist_ok=True)
    chance = random.Random(3)
    for language in LANGUAGES:
        lines = set()
        for path in sorted((LOCALES / language / "LC_MESSAGES").glob("*.mo")):
            if not path.name.startswith(LEFT_OUT):
                lines.update(line for line in map(cleaned, messages(path)) if len(line) >= 4)
        lines = sorted(lines)
        chance.shuffle(lines)
        held = len(lines) // 7
        (texts / f"{language}.train").write_text("\n".join(lines[held:]), encoding="utf-8")
        (texts / f"{language}.held").write_text("\n".join(lines[:held]), encoding="utf-8")
        print(language, len(lines))


if __name__ == "__main__":
    main()
