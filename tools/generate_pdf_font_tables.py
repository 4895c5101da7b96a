#!/usr/bin/env python3
"""generate_pdf_font_tables.py [--sources DIR] [ROOT]: writes engines/pdf/fonts/{GlyphNames,Encodings,StandardFonts}Tables.cpp.

Sources, in DIR (default: /, so that installed packages are read), both of Debian:
  python3-fonttools        fontTools/agl.py: the Adobe Glyph List and the list of ITC Zapf Dingbats
                           (Copyright 2002-2019 Adobe, BSD 3-clause)
  python-matplotlib-data   the metrics of the PDF Core Fonts (Copyright 1985-1997 Adobe Systems Incorporated; may be used,
                           copied and distributed for any purpose)
and pdf_tex_encodings.py and pdf_annex_d.py beside this file. The notices are in docs/THIRD-PARTY.md. Exits with 77 if a
source is missing.
"""
import argparse
import pathlib
import sys

import pdf_annex_d
import pdf_tex_encodings

AGL = "usr/lib/python3/dist-packages/fontTools/agl.py"
METRICS = "usr/share/matplotlib/mpl-data/fonts/pdfcorefonts"
FONTS = """Courier Courier-Bold Courier-Oblique Courier-BoldOblique Helvetica Helvetica-Bold Helvetica-Oblique Helvetica-BoldOblique
           Times-Roman Times-Bold Times-Italic Times-BoldItalic Symbol ZapfDingbats""".split()
ENCODINGS = """Standard WinAnsi MacRoman MacExpert Symbol ZapfDingbats MacOs TexText TexItalic TexTypewriter TexSmallCaps TexMathItalic
               TexMathSymbols TexMathExtension TexSymbolsA TexSymbolsB TexLatexSymbols TexWasy TexCork TexCompanion""".split()

# What the private-use values of the Adobe Glyph List mean, where it is not U+F700 plus a character of Latin-1.
PRIVATE = {
    "Acute": "\u00B4", "Caron": "\u02C7", "Dieresis": "\u00A8", "DieresisAcute": "\u0385", "DieresisGrave": "\u1FED",
    "Grave": "\u0060", "Hungarumlaut": "\u02DD", "Macron": "\u00AF", "cyrBreve": "\u02D8", "cyrFlex": "\u0311",
    "dblGrave": "\u02F5", "cyrbreve": "\u02D8", "cyrflex": "\u0311", "dblgrave": "\u02F5", "dieresisacute": "\u0385",
    "dieresisgrave": "\u1FED", "commaaccent": "\u0326", "LL": "LL", "ll": "ll", "dotlessj": "\u0237", "onefitted": "1",
    "rupiah": "Rp", "threequartersemdash": "\u2014", "centinferior": "\u00A2", "centsuperior": "\u00A2",
    "commainferior": ",", "commasuperior": ",", "dollarinferior": "$", "dollarsuperior": "$", "hypheninferior": "-",
    "hyphensuperior": "-", "periodinferior": ".", "periodsuperior": ".", "asuperior": "a", "bsuperior": "b", "dsuperior": "d",
    "esuperior": "e", "isuperior": "i", "lsuperior": "l", "msuperior": "m", "osuperior": "o", "rsuperior": "r",
    "ssuperior": "s", "tsuperior": "t", "Brevesmall": "\u02D8", "Caronsmall": "\u02C7", "Circumflexsmall": "\u02C6",
    "Dotaccentsmall": "\u02D9", "Lslashsmall": "\u0142", "OEsmall": "\u0153", "Ogoneksmall": "\u02DB", "Ringsmall": "\u02DA",
    "Scaronsmall": "\u0161", "Tildesmall": "\u02DC", "Zcaronsmall": "\u017E", "Hungarumlautsmall": "\u02DD",
    "afii10063": "\u0433", "afii10064": "\u0431", "afii10192": "\u0434", "afii10831": "\u043F", "afii10832": "\u0442",
    "radicalex": "\u203E", "arrowvertex": "\u23D0", "arrowhorizex": "\u23AF", "registerserif": "\u00AE",
    "copyrightserif": "\u00A9", "trademarkserif": "\u2122", "registersans": "\u00AE", "copyrightsans": "\u00A9",
    "trademarksans": "\u2122", "parenlefttp": "\u239B", "parenleftex": "\u239C", "parenleftbt": "\u239D",
    "bracketlefttp": "\u23A1", "bracketleftex": "\u23A2", "bracketleftbt": "\u23A3", "bracelefttp": "\u23A7",
    "braceleftmid": "\u23A8", "braceleftbt": "\u23A9", "braceex": "\u23AA", "integralex": "\u23AE", "parenrighttp": "\u239E",
    "parenrightex": "\u239F", "parenrightbt": "\u23A0", "bracketrighttp": "\u23A4", "bracketrightex": "\u23A5",
    "bracketrightbt": "\u23A6", "bracerighttp": "\u23AB", "bracerightmid": "\u23AC", "bracerightbt": "\u23AD",
}
NO_MEANING = {"apple"}
THAI_PLACES = ("lowleftthai", "lowrightthai", "upperleftthai", "upperrightthai", "leftthai", "rightthai")
# deliberate: the list gives the increment and ohm signs for historic reasons; texts have the Greek letters.
GREEK = {"Delta": "\u0394", "Omega": "\u03A9"}


def is_private(char):
    return 0xE000 <= ord(char) <= 0xF8FF or ord(char) >= 0xF0000


def of_private(name, chars, listed):
    """The plain characters of a name whose value is private use."""
    if name in NO_MEANING:
        return ""
    if name in PRIVATE:
        return PRIVATE[name]
    for place in THAI_PLACES:
        if name.endswith(place):
            return listed[name[:-len(place)] + "thai"]
    code = ord(chars)
    assert 0xF720 <= code <= 0xF7FF, name
    return chr(code - 0xF700)


def read_glyph_list(path):
    """The Adobe Glyph List and the names of ITC Zapf Dingbats: names with their characters."""
    module = {"__name__": "agl"}
    source = path.read_text(encoding="utf-8").replace("from fontTools.misc.textTools import tostr\n", "tostr = str\n")
    exec(compile(source, str(path), "exec"), module)
    listed = {name: "".join(map(chr, codes)) for name, codes in module["LEGACY_AGL2UV"].items()}
    plain = {}
    for name, chars in listed.items():
        plain[name] = of_private(name, chars, listed) if any(map(is_private, chars)) else chars
        if chars < " ":
            plain[name] = ""
    plain |= GREEK
    dingbats = {f"a{i}": c for i, c in enumerate(module["_AGL_ZAPF_DINGBATS"]) if c and c != " "}
    return plain, dingbats


def read_metrics(path):
    """Codes with their names, names with their widths, (ascent, descent)."""
    codes, widths, values = {}, {}, {}
    for line in path.read_text(encoding="latin-1").splitlines():
        if line.startswith("C "):
            fields = dict(field.split(None, 1) for field in line.rstrip("; ").split(" ; "))
            widths[fields["N"]] = int(fields["WX"])
            if int(fields["C"]) >= 0:
                codes[int(fields["C"])] = fields["N"]
        elif line.startswith(("Ascender", "Descender", "FontBBox")):
            values[line.split()[0]] = [int(number) for number in line.split()[1:]]
    box = values["FontBBox"]
    return codes, widths, (values.get("Ascender", [box[3]])[0], values.get("Descender", [box[1]])[0])


def tex_names(glyph_list):
    names = pdf_tex_encodings.names()

    def chars(value):
        if value.startswith("@"):
            stem = value[1:]
            return chars(names[stem]) if stem in names else glyph_list[stem]
        return "".join(chr(int(code, 16)) for code in value.split("+"))

    return {name: chars(value) for name, value in names.items()}


def numbers(values, width=120):
    lines, line = [], "   "
    for value in values:
        text = f" {value},"
        if len(line) + len(text) > width:
            lines.append(line)
            line = "   "
        line += text
    return "\n".join([*lines, line] if line.strip() else lines)


def string_pool(names):
    """The C++ of a pool of sorted names: one literal, and where each name begins in it."""
    starts, text = [0], ""
    for name in names:
        text += name
        starts.append(len(text))
    assert len(text) < 0x10000
    lines = [f'    "{text[i:i + 110]}"' for i in range(0, len(text), 110)]
    return "\n".join(lines), starts


def name_table(identifier, names):
    assert names == sorted(names)
    literal, starts = string_pool(names)
    return (f"constexpr char k{identifier}Pool[] =\n{literal};\n"
            f"constexpr std::uint16_t k{identifier}Starts[] = {{\n{numbers(starts)}\n}};\n")


class Texts:
    """A pool of strings of code points, each once."""

    def __init__(self):
        self.pool = ""

    def place(self, chars):
        """Where they are: the offset, and above 13 bits the length. 0 for the empty string."""
        if not chars:
            return 0
        if chars not in self.pool:
            self.pool += chars
        offset = self.pool.index(chars)
        assert offset < 1 << 13 and len(chars) < 8
        return len(chars) << 13 | offset

    def source(self, identifier):
        return f"constexpr char32_t {identifier}[] = {{\n{numbers([f'0x{ord(c):X}' for c in self.pool])}\n}};\n"


HEAD = """// {what}
// Generated by tools/generate_pdf_font_tables.py.
// {notice}
#include "engines/pdf/fonts/{include}"

namespace quillow::pdf {{

// clang-format off
namespace {{

"""
FOOT = "// clang-format on\n\n} // namespace quillow::pdf\n"
AGL_NOTICE = "From the Adobe Glyph List, Copyright 2002-2019 Adobe, BSD 3-clause licence: see docs/THIRD-PARTY.md."
AFM_NOTICE = ("From the metrics of the PDF Core Fonts, Copyright 1985-1997 Adobe Systems Incorporated, changed into tables: see\n"
              "// docs/THIRD-PARTY.md.")


def glyph_names_source(lists):
    texts = Texts()
    out = [HEAD.format(what="The names of glyphs with their characters.", notice=AGL_NOTICE, include="GlyphNamesTables.h")]
    sequences = []
    for identifier, entries in lists:
        names = sorted(entries)
        values = []
        for name in names:
            chars = entries[name]
            if len(chars) == 1 and ord(chars) < 0x10000:
                values.append(f"0x{ord(chars):X}")
            elif not chars:
                values.append("0")
            else:
                if chars not in sequences:
                    sequences.append(chars)
                values.append(f"0x{0xD800 + sequences.index(chars):X}")
        out.append(name_table(identifier, names))
        out.append(f"constexpr char16_t k{identifier}Values[] = {{\n{numbers(values)}\n}};\n")
    assert len(sequences) < 0x800
    offsets = []
    for chars in sequences:
        offsets.append(texts.place(chars))
    out.append(texts.source("kSequencePool"))
    out.append(f"constexpr std::uint16_t kSequences[] = {{\n{numbers(offsets)}\n}};\n")
    out.append("} // namespace\n")
    for identifier, entries in lists:
        out.append(f"const GlyphNameList k{identifier}Names = {{{{k{identifier}Pool, k{identifier}Starts, {len(entries)}}}, "
                   f"k{identifier}Values, kSequences, kSequencePool}};")
    return "\n".join(out) + "\n" + FOOT


def encodings_source(encodings, meaning):
    texts = Texts()
    names = sorted({name for table in encodings.values() for name, _ in table})
    out = [HEAD.format(what="The encodings: names of glyphs and characters by code.", notice=AGL_NOTICE, include="EncodingsTables.h")]
    index = {name: i for i, name in enumerate(names)}
    rows = []
    for identifier in ENCODINGS:
        row_names, row_texts = [], []
        for name, chars in encodings[identifier]:
            if chars is None:
                chars = meaning(identifier, name) if name else ""
            elif chars:
                chars = "".join(chr(int(code, 16)) for code in chars.split("+"))
            row_names.append(index[name])
            row_texts.append(texts.place(chars))
        rows.append((identifier, row_names, row_texts))
    out.append(name_table("EncodingName", names))
    out.append(texts.source("kEncodingTextPool"))
    out.append("} // namespace\n")
    out.append(f"const NameTable kEncodingNames = {{kEncodingNamePool, kEncodingNameStarts, {len(names)}}};\n"
               "const char32_t* const kEncodingTexts = kEncodingTextPool;\n")
    for what, at in (("NameIndexes", 1), ("TextPlaces", 2)):
        out.append(f"const std::uint16_t kEncoding{what}[kEncodingCount][256] = {{")
        for row in rows:
            out.append(f"{{ // {row[0]}\n{numbers(row[at])}\n}},")
        out.append("};\n")
    return "\n".join(out) + FOOT


def standard_fonts_source(metrics):
    out = [HEAD.format(what="The widths of the fourteen standard fonts.", notice=AFM_NOTICE, include="StandardFontsTables.h")]
    latin = sorted(metrics["Helvetica"][1])
    sets = {"Latin": latin, "Symbol": sorted(metrics["Symbol"][1]), "ZapfDingbats": sorted(metrics["ZapfDingbats"][1])}
    for identifier, names in sets.items():
        out.append(name_table(identifier, names))
    rows, heights = [], []
    for font in FONTS:
        names = sets.get(font, latin)
        widths = metrics[font][1]
        assert sorted(widths) == names, font
        identifier = font.replace("-", "")
        out.append(f"constexpr std::uint16_t k{identifier}Widths[] = {{\n{numbers([widths[n] for n in names])}\n}};\n")
        group = font if font in sets else "Latin"
        rows.append(f"    {{{{k{group}Pool, k{group}Starts, {len(names)}}}, k{identifier}Widths, "
                    f"{{{metrics[font][2][0]}, {metrics[font][2][1]}}}}},")
    out.append("} // namespace\n")
    out.append("const StandardFontTable kStandardFonts[kStandardFontCount] = {\n" + "\n".join(rows) + "\n};")
    return "\n".join(out) + "\n" + FOOT


def built_in(codes):
    return [(codes.get(code, ""), None) for code in range(256)]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("--sources", default="/", type=pathlib.Path)
    parser.add_argument("root", nargs="?", default=pathlib.Path(__file__).parent.parent, type=pathlib.Path)
    options = parser.parse_args()
    for source in (AGL, METRICS):
        if not (options.sources / source).exists():
            print(f"generate_pdf_font_tables.py: {options.sources / source} is missing", file=sys.stderr)
            sys.exit(77)
    glyph_list, dingbats = read_glyph_list(options.sources / AGL)
    metrics = {font: read_metrics(options.sources / METRICS / f"{font}.afm") for font in FONTS}
    tex = tex_names(glyph_list)

    names_of = {glyph_list[name]: name for name in metrics["Times-Roman"][1]}

    def name_of(code):
        return names_of[chr(code)]

    encodings = {"Standard": built_in(metrics["Times-Roman"][0]), "WinAnsi": pdf_annex_d.win_ansi(name_of),
                 "MacRoman": pdf_annex_d.mac_roman(name_of, False), "MacExpert": pdf_annex_d.mac_expert(),
                 "Symbol": built_in(metrics["Symbol"][0]), "ZapfDingbats": built_in(metrics["ZapfDingbats"][0]),
                 "MacOs": pdf_annex_d.mac_roman(name_of, True), **pdf_tex_encodings.encodings()}
    symbol = glyph_list | {"mu": "\u03BC", "phi": "\u03C6", "phi1": "\u03D5", "dotmath": "\u22C5"}

    def meaning(identifier, name):
        if identifier == "ZapfDingbats":
            return dingbats.get(name) or glyph_list[name]
        if identifier == "Symbol":
            return symbol[name]
        if identifier.startswith("Tex"):
            return tex[name] if name in tex else glyph_list[name]
        return glyph_list[name]

    folder = options.root / "engines/pdf/fonts"
    folder.mkdir(parents=True, exist_ok=True)
    lists = [("Adobe", glyph_list), ("Tex", tex), ("Dingbat", dingbats)]
    (folder / "GlyphNamesTables.cpp").write_text(glyph_names_source(lists))
    (folder / "EncodingsTables.cpp").write_text(encodings_source(encodings, meaning))
    (folder / "StandardFontsTables.cpp").write_text(standard_fonts_source(metrics))


if __name__ == "__main__":
    main()
