"""Reads Adobe's CMap resources for generate_pdf_cmap_tables.py."""
import re

TOKEN = re.compile(r"<[0-9a-fA-F\s]*>|\d+|\[[^\]]*\]")
SECTION = re.compile(r"begin(codespacerange|cidrange|cidchar|notdefrange|bfrange|bfchar)(.*?)end\1", re.S)


def size_of(token):
    return (len(token) - 2) // 2


def code_of(token):
    return int(token[1:-1], 16)


def text_of(token):
    return bytes.fromhex(token[1:-1]).decode("utf-16-be", "surrogatepass")


class Resource:
    """A CMap: its codespace, its own codes with their CIDs (or, in a map to Unicode, CIDs with their characters)."""

    def __init__(self, path):
        source = re.sub(r"%.*", "", path.read_text(encoding="latin-1"))
        self.name = path.name
        self.codespace = []  # (bytes, first, last)
        self.cids = {}  # by code
        self.texts = {}  # by CID
        used = re.search(r"/(\S+)\s+usecmap", source)
        self.parent = used and used.group(1)
        mode = re.search(r"/WMode\s+(\d)", source)
        self.is_vertical = bool(mode) and mode.group(1) == "1"
        ordering = re.search(r"/Ordering\s*\(([^)]*)\)", source)
        self.ordering = ordering and ordering.group(1)
        undefined = {}
        is_to_unicode = self.name.startswith("Adobe-") and self.name.endswith("-UCS2")
        for kind, body in SECTION.findall(source):
            if kind.startswith("bf") and not is_to_unicode:
                continue
            tokens = TOKEN.findall(body)
            getattr(self, kind)(tokens, undefined)
        for code, cid in undefined.items():
            self.cids.setdefault(code, cid)

    def codespacerange(self, tokens, _):
        for first, last in zip(tokens[::2], tokens[1::2]):
            self.codespace.append((size_of(first), code_of(first), code_of(last)))

    def cidrange(self, tokens, _):
        for first, last, cid in zip(tokens[::3], tokens[1::3], tokens[2::3]):
            start = code_of(first)
            for code in range(start, code_of(last) + 1):
                self.cids[code] = int(cid) + code - start

    def cidchar(self, tokens, _):
        for code, cid in zip(tokens[::2], tokens[1::2]):
            self.cids[code_of(code)] = int(cid)

    def notdefrange(self, tokens, undefined):
        for first, last, cid in zip(tokens[::3], tokens[1::3], tokens[2::3]):
            for code in range(code_of(first), code_of(last) + 1):
                undefined[code] = int(cid)

    def bfchar(self, tokens, _):
        for cid, text in zip(tokens[::2], tokens[1::2]):
            self.texts[code_of(cid)] = text_of(text)

    def bfrange(self, tokens, _):
        for first, last, text in zip(tokens[::3], tokens[1::3], tokens[2::3]):
            start = code_of(first)
            if text.startswith("["):
                for i, item in enumerate(re.findall(r"<[^>]*>", text)):
                    self.texts[start + i] = text_of(item)
                continue
            chars = text_of(text)
            for i in range(code_of(last) - start + 1):
                self.texts[start + i] = chars[:-1] + chr(ord(chars[-1]) + i)
