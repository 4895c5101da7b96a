#!/usr/bin/env python3
"""generate_pdf_cmap_tables.py [--sources DIR] [ROOT]: writes engines/pdf/fonts/PredefinedCMaps*Tables.cpp and
CharacterCollectionsTables.cpp.

Source, in DIR (default: /, so that the installed package is read): the CMap resources of Debian's poppler-data, folder cMap
(Copyright 1990-2019 Adobe, BSD 3-clause: see docs/THIRD-PARTY.md). The package's other folders are under other licences and
not read. Exits with 77 if the source is missing.

A CMap is a list of segments, sorted by code: a run of codes with consecutive CIDs, or an array of CIDs in the pool of the
collection. It has only the codes in which it differs from its parent: any other CMap of the collection, chosen so that the list is
short. For the CMaps of Unicode's forms a code is a code point, so that UTF-8, UTF-16 and UTF-32 share one list.
"""
import argparse
import pathlib
import sys

from pdf_cmap_resources import Resource

FOLDER = "usr/share/poppler/cMap"
# Collections by their name in C++: their folder, the CMap resource of their Unicode values, the name of Unicode CMaps, and a legacy
# encoding that decides where Adobe's two maps to Unicode differ: its CMap and Python's codec.
COLLECTIONS = {
    "Cns1": ("CNS1", "Adobe-CNS1-UCS2", "UniCNS", ("HKscs-B5-H", "big5hkscs")),
    "Gb1": ("GB1", "Adobe-GB1-UCS2", "UniGB", ("GBK-EUC-H", "gbk")),
    "Japan1": ("Japan1", "Adobe-Japan1-UCS2", "UniJIS", ("90ms-RKSJ-H", "cp932")),
    "Japan2": ("Japan2", None, "UniHojo", None),
    "Korea1": ("Korea1", "Adobe-Korea1-UCS2", "UniKS", ("KSCms-UHC-H", "cp949")),
    "Kr": ("KR", "Adobe-KR-UCS2", "UniAKR", None),
}
NO_CID = 0xFFFF  # the code has no CID, although the parent has one
SEGMENT_BYTES = 8
MAX_ARRAY = 1 << 14
MAX_RUN = 1 << 16
MAX_DEPTH = 4


# --- Unicode -------------------------------------------------------------------------------------------------------------
def form_of(name):
    for form in ("UTF16", "UTF8", "UTF32", "UCS2"):
        if name.startswith("Uni") and f"-{form}-" in name:
            return {"UCS2": "Utf16"}.get(form, form.capitalize())
    return None


def code_point(form, code):
    size = (code.bit_length() + 7) // 8 or 1
    if form == "Utf32":
        return code
    data = code.to_bytes(max(size, 2) if form == "Utf16" else size, "big")
    if len(data) == 3 and form == "Utf16":
        data = b"\0" + data
    return ord(data.decode({"Utf16": "utf-16-be", "Utf8": "utf-8"}[form], "surrogatepass"))


def is_private(char):
    return 0xE000 <= ord(char) <= 0xF8FF or ord(char) >= 0xF0000


def is_vertical_form(char):
    return 0xFE10 <= ord(char) <= 0xFE19 or 0xFE30 <= ord(char) <= 0xFE44 or 0xFE47 <= ord(char) <= 0xFE48


def is_usable(text):
    """Whether a text is what a reader reads."""
    return bool(text) and not any(is_private(c) or c < " " or c in "\u00AD\uFFFD" or is_vertical_form(c) or
                                  ord(c) & 0xFFFE == 0xFFFE or 0xD800 <= ord(c) <= 0xDFFF for c in text)


def is_selector(char):
    return 0xFE00 <= ord(char) <= 0xFE0F or 0xE0100 <= ord(char) <= 0xE01EF


def plain(text):
    """Without variation selectors; half-width blanks and bars as in ASCII."""
    return "".join({"\u2002": " ", "\uFFE8": "|"}.get(c, c) for c in text if not is_selector(c))


def inverse(cmap):
    result = {}
    for code in sorted(cmap.cids):
        if code >= 0x20:
            result.setdefault(cmap.cids[code], []).append(chr(code))
    return result


def by_legacy(cmap, codec):
    """CIDs with their characters in a legacy encoding."""
    result = {}
    for code, cid in sorted(cmap.cids.items()):
        try:
            text = code.to_bytes(2 if code > 0xFF else 1, "big").decode(codec)
        except UnicodeDecodeError:
            continue
        result.setdefault(cid, text)
    return result


def unicode_of_cids(resources, collection):
    """The characters by CID. Adobe's map from CIDs comes first. Where the CMap of UTF-32 has other characters, the legacy encoding
    decides which of both. If it has none of them: the CMap for Korean (whose map has errors) and for variants of Han
    characters, else the map. Vertical glyphs are the characters that the vertical CMap turns into them."""
    _, to_unicode, prefix, legacy = COLLECTIONS[collection]
    texts = resources[to_unicode].texts if to_unicode else {}
    horizontal = inverse(resources[f"{prefix}-UTF32-H"])
    vertical = inverse(resources[f"{prefix}-UTF32-V"]) if f"{prefix}-UTF32-V" in resources else {}
    decoded = by_legacy(resources[legacy[0]], legacy[1]) if legacy else {}
    result = {}
    for cid in sorted(texts.keys() | horizontal.keys() | vertical.keys() | decoded.keys()):
        if cid == 0:
            continue
        text = plain(texts.get(cid, ""))
        others = [c for c in horizontal.get(cid, []) if is_usable(c)]
        if others and text not in others:
            prefers_cmap = collection in ("Korea1", "Kr") or any(map(is_selector, texts.get(cid, "")))
            if decoded.get(cid) in [text, *others]:
                text = decoded[cid]
            elif prefers_cmap or not is_usable(text):
                text = plainest(others)
        if not is_usable(text):
            upright = [c for c in vertical.get(cid, []) if is_usable(c)]
            text = plainest(upright) or plainest(others) or FORMS.get(text) or decoded.get(cid, "")
        if is_usable(text):
            result[cid] = text
    return result


def plainest(chars):
    """Of several the one that is not a compatibility character."""
    def rank(char):
        code = ord(char)
        is_compatible = 0x2E80 <= code <= 0x2FDF or 0xF900 <= code <= 0xFAFF or 0x2F800 <= code <= 0x2FA1F or code == 0xA0
        return (is_compatible, code)
    return min(chars, key=rank) if chars else ""


# What vertical forms without a vertical CMap are.
FORMS = {"\uFE30": "\u2025", "\uFE31": "\u2014", "\uFE32": "\u2013", "\uFE33": "\uFF3F", "\uFE34": "\uFE4F", "\uFE19": "\u2026"}


# --- segments ------------------------------------------------------------------------------------------------------------
class Pool:
    """CIDs of arrays, the same ones only once."""

    def __init__(self):
        self.values = []
        self.places = {}

    def place(self, values):
        key = tuple(values)
        if key not in self.places:
            self.places[key] = len(self.values)
            self.values.extend(values)
        return self.places[key]


def runs_of(cids):
    """[first code, number of codes, first CID] of codes that are consecutive with their CIDs. CIDs have 15 bits in a run."""
    runs = []
    for code in sorted(cids):
        cid = cids[code]
        if runs and cid != NO_CID and runs[-1][2] != NO_CID:
            first, count, start = runs[-1]
            if first + count == code and start + count == cid and count < MAX_RUN:
                runs[-1][1] += 1
                continue
        runs.append([code, 1, cid])
    return runs


def segments_of(cids):
    """The cheapest mixture of runs and arrays: (first code, list of CIDs, whether it is an array)."""
    runs = runs_of(cids)
    if not runs:
        return [], 0
    # Costs of the best way that ends with run i, and of the best that ends with an array which has run i as its last.
    best, array, choice, start = [0] * len(runs), [0] * len(runs), [False] * len(runs), [0] * len(runs)
    for i, (first, count, cid) in enumerate(runs):
        before = best[i - 1] if i else 0
        array[i], start[i] = before + SEGMENT_BYTES + 2 * count, i
        if i:
            previous = runs[i - 1]
            grown = array[i - 1] + 2 * (first + count - previous[0] - previous[1])
            if grown < array[i] and first + count - runs[start[i - 1]][0] <= MAX_ARRAY:
                array[i], start[i] = grown, start[i - 1]
        single = before + SEGMENT_BYTES if cid != NO_CID else array[i] + 1
        choice[i] = array[i] < single
        best[i] = min(array[i], single)
    segments = []
    i = len(runs) - 1
    while i >= 0:
        if choice[i]:
            first = runs[start[i]][0]
            values = [0] * (runs[i][0] + runs[i][1] - first)
            for begin, count, cid in runs[start[i]:i + 1]:
                for k in range(count):
                    values[begin - first + k] = cid + k if cid != NO_CID else NO_CID
            segments.append((first, values, True))
            i = start[i] - 1
        else:
            first, count, cid = runs[i]
            segments.append((first, [cid, count], False))
            i -= 1
    segments.reverse()
    return segments, best[-1]


def difference(cids, parent):
    result = {code: cid for code, cid in cids.items() if parent.get(code) != cid}
    result |= {code: NO_CID for code in parent if code not in cids}
    return result


# --- the whole -----------------------------------------------------------------------------------------------------------
class CMap:
    def __init__(self, resource, collection, resources):
        self.name = resource.name
        self.collection = collection
        self.form = form_of(resource.name)
        self.is_vertical = resource.is_vertical
        cids, codespace = {}, []
        chain = [resource]
        while chain[-1].parent:
            chain.append(resources[chain[-1].parent])
        for one in reversed(chain):
            cids |= one.cids
            codespace = one.codespace or codespace
        self.codespace = tuple(codespace)
        if self.form:
            cids = {code_point(self.form, code): cid for code, cid in cids.items()}
        self.cids = cids
        self.parent, self.depth = None, 0
        self.segments = None

    @property
    def codes(self):
        return self.form or "Legacy"


def is_cmap(resource):
    """Whether it is a CMap for texts, not one of the maps to or from Unicode or between supplements."""
    return resource.cids and "Adobe-" not in resource.name or resource.parent and not resource.name.endswith("UCS2")


def read(folder):
    resources = {}
    for directory in sorted(folder.iterdir()):
        if directory.is_dir():
            for path in sorted(directory.iterdir()):
                resources[path.name] = Resource(path)
    return resources


def order(cmap):
    forms = ["Utf32", "Utf16", "Utf8", "Legacy"]
    return (cmap.is_vertical, "UCS2" in cmap.name, forms.index(cmap.codes), cmap.name)


def choose_parents(cmaps):
    """Sets the parent and the segments of each CMap of a collection."""
    done = []
    for cmap in sorted(cmaps, key=order):
        cmap.segments, cost = segments_of(cmap.cids)
        rivals = [other for other in done if bool(other.form) == bool(cmap.form) and other.depth < MAX_DEPTH]
        rivals.sort(key=lambda other: (len(difference(cmap.cids, other.cids)), other.depth, other.name))
        for other in rivals[:2]:
            segments, price = segments_of(difference(cmap.cids, other.cids))
            if price < cost:
                cmap.segments, cost, cmap.parent, cmap.depth = segments, price, other, other.depth + 1
        done.append(cmap)


def numbers(values, width=130):
    lines, line = [], " "
    for value in values:
        text = f"{value},"
        if len(line) + len(text) > width:
            lines.append(line)
            line = " "
        line += text
    lines.append(line)
    return "\n".join(lines)


HEAD = """// {what}
// Generated by tools/generate_pdf_cmap_tables.py.
// From Adobe's CMap resources, Copyright 1990-2019 Adobe, BSD 3-clause licence: see docs/THIRD-PARTY.md.
#include "engines/pdf/fonts/{include}"

namespace quillow::pdf {{

// clang-format off
"""
FOOT = "// clang-format on\n\n} // namespace quillow::pdf\n"


def packed(segment, pool):
    """See CMapSegment in PredefinedCMapsTables.h."""
    first, values, is_array = segment
    if is_array:
        place = pool.place(values)
        assert place < 1 << 17 and len(values) <= MAX_ARRAY
        return f"{{0x{first:X},0x{1 << 31 | (len(values) - 1) << 17 | place:X}}}"
    cid, count = values
    assert cid < 1 << 15 and count <= MAX_RUN
    return f"{{0x{first:X},0x{(count - 1) << 15 | cid:X}}}"


def collection_source(collection, cmaps):
    """The segments and the pool of one collection; sets each CMap's place in them."""
    pool, rows = Pool(), []
    for cmap in cmaps:
        cmap.place = len(rows)
        rows += [packed(segment, pool) for segment in cmap.segments]
    rows, values = rows or ["{0,0}"], pool.values or [0]
    out = HEAD.format(what=f"The CMaps of the collection {COLLECTIONS[collection][0]}.", include="PredefinedCMapsTables.h")
    out += f"extern const CMapSegment k{collection}Segments[{len(rows)}];\n"
    out += f"const CMapSegment k{collection}Segments[{len(rows)}] = {{\n{numbers(rows)}\n}};\n"
    out += f"extern const std::uint16_t k{collection}Pool[{len(values)}];\n"
    out += f"const std::uint16_t k{collection}Pool[{len(values)}] = {{\n{numbers(values)}\n}};\n"
    return out + FOOT, len(rows), len(values)


def list_source(cmaps, identities, sizes):
    out = [HEAD.format(what="The list of predefined CMaps, sorted by name.", include="PredefinedCMapsTables.h")]
    for collection, (rows, values) in sizes.items():
        out.append(f"extern const CMapSegment k{collection}Segments[{rows}];\n"
                   f"extern const std::uint16_t k{collection}Pool[{values}];")
    codespaces = []
    everything = sorted([*cmaps, *identities], key=lambda cmap: cmap.name)
    for cmap in everything:
        if cmap.codespace not in codespaces:
            codespaces.append(cmap.codespace)
    out.append("\nnamespace {\n")
    for i, ranges in enumerate(codespaces):
        body = ", ".join(f"{{0x{first:X}, 0x{last:X}, {size}}}" for size, first, last in ranges)
        out.append(f"constexpr CodespaceRange kCodespace{i}[] = {{{body}}};")
    out.append("\n} // namespace\n")
    index = {cmap.name: i for i, cmap in enumerate(everything)}
    out.append(f"extern const std::size_t kPredefinedCMapCount = {len(everything)};")
    out.append(f"extern constinit const PredefinedCMap kPredefinedCMaps[{len(everything)}] = {{")
    for cmap in everything:
        collection = cmap.collection
        parent = f"&kPredefinedCMaps[{index[cmap.parent.name]}]" if cmap.parent else "nullptr"
        segments = f"{{k{collection}Segments + {cmap.place}, {len(cmap.segments)}}}" if cmap.segments else "{}"
        pool = f"k{collection}Pool" if cmap.segments else "nullptr"
        vertical = "true" if cmap.is_vertical else "false"
        out.append(f'    {{"{cmap.name}", CharacterCollection::{collection}, CMapCodes::{cmap.codes}, {vertical}, '
                   f"kCodespace{codespaces.index(cmap.codespace)}, {segments}, {pool}, {parent}}},")
    out.append("};")
    return "\n".join(out) + "\n" + FOOT


class Identity:
    """The CMaps whose codes are CIDs: Identity-H and -V, and those of the collections ("Adobe-Japan1-2")."""
    codes, segments, parent = "Identity", (), None

    def __init__(self, name, collection, is_vertical, codespace):
        self.name, self.collection, self.is_vertical, self.codespace = name, collection, is_vertical, codespace


def identities_of(resources):
    whole = ((2, 0, 0xFFFF),)
    result = [Identity("Identity-H", "Unknown", False, whole), Identity("Identity-V", "Unknown", True, whole)]
    for collection, (folder, *_) in COLLECTIONS.items():
        for name, resource in resources.items():
            if name.startswith(f"Adobe-{folder}-") and name.rpartition("-")[2].isdigit() and resource.cids:
                result.append(Identity(name, collection, False, whole))
    return result


def collections_source(texts):
    out = [HEAD.format(what="The characters of the CIDs of each collection.", include="CharacterCollectionsTables.h")]
    out.append("namespace {\n")
    rows = []
    for collection, by_cid in texts.items():
        sequences, values = [], []
        for cid in range(max(by_cid) + 1):
            text = by_cid.get(cid, "")
            if len(text) == 1 and ord(text) < 0x10000:
                values.append(f"{ord(text)}")
            elif not text:
                values.append("0")
            else:
                if text not in sequences:
                    sequences.append(text)
                values.append(f"{0xD800 + sequences.index(text)}")
        assert len(sequences) <= 0x800, collection
        starts = [0]
        for text in sequences:
            starts.append(starts[-1] + len(text))
        out.append(f"constexpr char16_t k{collection}Characters[] = {{\n{numbers(values)}\n}};")
        out.append(f"constexpr std::uint16_t k{collection}Starts[] = {{\n{numbers(starts)}\n}};")
        pool = [str(ord(c)) for c in "".join(sequences)] or ["0"]
        out.append(f"constexpr char32_t k{collection}Sequences[] = {{\n{numbers(pool)}\n}};\n")
        rows.append(f"    {{k{collection}Characters, {len(values)}, k{collection}Starts, k{collection}Sequences}},")
    out.append("} // namespace\n")
    out.append(f"const CollectionTable kCollections[{len(rows)}] = {{ // in the order of CharacterCollection, from Cns1")
    out.extend([*rows, "};"])
    return "\n".join(out) + "\n" + FOOT


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sources", default="/", type=pathlib.Path)
    parser.add_argument("root", nargs="?", default=pathlib.Path(__file__).parent.parent, type=pathlib.Path)
    options = parser.parse_args()
    source = options.sources / FOLDER
    if not source.exists():
        print(f"generate_pdf_cmap_tables.py: {source} is missing", file=sys.stderr)
        sys.exit(77)
    resources = read(source)
    folder = options.root / "engines/pdf/fonts"
    folder.mkdir(parents=True, exist_ok=True)
    cmaps, sizes, texts = [], {}, {}
    for collection, (ordering, *_) in COLLECTIONS.items():
        own = [CMap(r, collection, resources) for _, r in sorted(resources.items()) if r.ordering == ordering and is_cmap(r)]
        choose_parents(own)
        text, rows, values = collection_source(collection, own)
        (folder / f"PredefinedCMaps{collection}Tables.cpp").write_text(text)
        sizes[collection] = (rows, values)
        cmaps += own
        texts[collection] = unicode_of_cids(resources, collection)
    (folder / "PredefinedCMapsTables.cpp").write_text(list_source(cmaps, identities_of(resources), sizes))
    (folder / "CharacterCollectionsTables.cpp").write_text(collections_source(texts))
    return sizes


if __name__ == "__main__":
    main()
