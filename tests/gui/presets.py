#!/usr/bin/env python3
"""presets.py FOLDER: makes FOLDER the fixed destination of the program whose configuration is in $XDG_CONFIG_HOME.

Writes the defaults file in the program's format (platform/qt/storage/QtDefaults.h). The bookmark is a byte value: a tag and a CBOR
map (platform/qt/files/BookmarkBlock.h). The map has no identity of the folder, so the program finds the folder only by its path.
"""
import base64
import os
import pathlib
import sys


def cbor_head(major, number):
    if number < 24:
        return bytes([major << 5 | number])
    if number < 256:
        return bytes([major << 5 | 24, number])
    return bytes([major << 5 | 25]) + number.to_bytes(2, "big")


def cbor(value):
    if isinstance(value, bool):
        return b"\xf5" if value else b"\xf4"
    if isinstance(value, int):
        return cbor_head(0, value)
    if isinstance(value, bytes):
        return cbor_head(2, len(value)) + value
    if isinstance(value, str):
        return cbor_head(3, len(value.encode())) + value.encode()
    return cbor_head(5, len(value)) + b"".join(cbor(k) + cbor(v) for k, v in value.items())


folder = os.path.abspath(sys.argv[1])
block = {"version": 1, "mode": "rw", "path": os.fsencode(folder), "isDirectory": True}
bookmark = base64.b64encode(b"QuillowBookmark\n" + cbor(block)).decode()
path = "".join(c if c.isalnum() or c in "/-_." else f"%{ord(c):04x}" for c in folder)
defaults = pathlib.Path(os.environ["XDG_CONFIG_HOME"], "org.quillow.Quillow", "defaults.ini")
defaults.parent.mkdir(parents=True, exist_ok=True)
defaults.write_text(f"[General]\ndestinationType=i:1\ndestBookmark=x:{bookmark}\ndestPath=s:{path}\n")
