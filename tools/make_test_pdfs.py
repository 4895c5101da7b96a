#!/usr/bin/env python3
"""make_test_pdfs.py [FOLDER]: writes the small PDFs of tests/data/pdf. Needs qpdf for the encrypted ones."""
import pathlib
import subprocess
import sys

HELVETICA = b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /Encoding /WinAnsiEncoding >>"


def stream(body, extra=b""):
    return b"<< " + extra + b"/Length %d >>\nstream\n" % len(body) + body + b"\nendstream"


def file_of(objects, root=1):
    """A PDF file of numbered objects, with its cross-reference table and trailer."""
    out = bytearray(b"%PDF-1.4\n%\xe2\xe3\xcf\xd3\n")
    offsets = {}
    for number, body in sorted(objects.items()):
        offsets[number] = len(out)
        out += b"%d 0 obj\n" % number + body + b"\nendobj\n"
    xref = len(out)
    size = max(objects) + 1
    out += b"xref\n0 %d\n0000000000 65535 f \n" % size
    for number in range(1, size):
        out += b"%010d 00000 n \n" % offsets[number] if number in offsets else b"0000000000 65535 f \n"
    out += b"trailer\n<< /Size %d /Root %d 0 R >>\nstartxref\n%d\n%%%%EOF\n" % (size, root, xref)
    return bytes(out)


def document(contents, font=HELVETICA, more=None, count=None, resources=b"/Font << /F1 3 0 R >>"):
    """A document with one page per content stream; None is a page that the page tree names but the file lacks."""
    objects = {1: b"<< /Type /Catalog /Pages 2 0 R >>", 3: font}
    objects.update(more or {})
    kids = []
    number = 10
    for content in contents:
        kids.append(b"%d 0 R" % number)
        if content is not None:
            objects[number] = (b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 300 300] /Resources << " + resources +
                               b" >> /Contents %d 0 R >>" % (number + 1))
            objects[number + 1] = stream(content)
        number += 2
    objects[2] = b"<< /Type /Pages /Kids [" + b" ".join(kids) + b"] /Count %d >>" % (count or len(contents))
    return file_of(objects)


def lines(*texts, size=12):
    out = b"BT /F1 %d Tf 20 260 Td 16 TL\n" % size
    for text in texts:
        out += b"(" + text + b") Tj T*\n"
    return out + b"ET"


def to_unicode(pairs):
    body = b"/CIDInit /ProcSet findresource begin 12 dict begin begincmap\n1 begincodespacerange <00> <FF> endcodespacerange\n"
    body += b"%d beginbfchar\n" % len(pairs)
    for code, text in pairs.items():
        body += b"<%02X> <%s>\n" % (code, text.encode("utf-16-be").hex().upper().encode())
    return stream(body + b"endbfchar\nendcmap end end")


def mapped_font(pairs):
    return (b"<< /Type /Font /Subtype /Type1 /BaseFont /Helvetica /ToUnicode 4 0 R >>", {4: to_unicode(pairs)})


def encrypted(plain, user, folder, name, options=("128", "--use-aes=y")):
    source = folder / (name + ".plain")
    source.write_bytes(plain)
    subprocess.run(["qpdf", "--static-id", "--static-aes-iv", "--allow-weak-crypto", "--encrypt", user, "owner",
                    *options, "--", str(source), str(folder / (name + ".in"))], check=True)
    source.unlink()


def main():
    folder = pathlib.Path(sys.argv[1] if len(sys.argv) > 1 else "tests/data/pdf")
    put = lambda name, data: (folder / (name + ".in")).write_bytes(data)
    first, second = lines(b"Page one, line one.", b"Line two: caf\\351."), lines(b"Page two.")
    two_pages = document([first, second])
    put("plain", two_pages)
    put("junkBeforeHeader", b"HTTP/1.1 200 OK\r\n\r\n" + two_pages)
    put("wrongStartxref", two_pages[:two_pages.rindex(b"startxref")] + b"startxref\n7\n%%EOF\n")
    put("truncated", two_pages[:len(two_pages) // 3])

    # Two columns, written one after the other: the order of the stream is the reading order, the order of the
    # lines is not.
    column = lambda x, *texts: b"BT /F1 10 Tf %d 260 Td 14 TL " % x + b" ".join(b"(" + t + b") Tj T*" for t in texts) + b" ET\n"
    put("twoColumns", document([column(20, b"left one", b"left two") + column(160, b"right one", b"right two")]))

    font, more = mapped_font({0x41: "\ufb01", 0x42: "n", 0x43: "\ufb04", 0x44: "e", 0x45: "a"})
    put("ligatures", document([lines(b"AB", b"ECD")], font, more))
    font, more = mapped_font({0x41: "\ue001", 0x42: "b", 0x43: "\u00ad", 0x44: "\x07"})
    put("oddCharacters", document([lines(b"BABCBDB")], font, more))

    # Hebrew, with the letters drawn from left to right as they are on paper: the first letter of the text is drawn
    # last.
    letters = {0x41 + i: chr(0x5D0 + i) for i in range(27)}
    font, more = mapped_font(letters | {0x20: " "})
    back = {v: k for k, v in letters.items()} | {" ": 0x20}
    drawn = bytes(back[c] for c in reversed("שלום עולם"))
    put("hebrew", document([lines(drawn, size=14)], font, more))

    picture = b"q 100 0 0 100 20 20 cm BI /W 2 /H 2 /CS /G /BPC 8 ID \x00\xff\xff\x00 EI Q"
    put("picturesOnly", document([picture, b""]))
    put("middlePageWithoutText", document([first, picture, second]))
    put("missingPage", document([first, None, second]))
    put("lyingCount", document([first], count=8))
    put("pageTreeCycle", file_of({1: b"<< /Type /Catalog /Pages 2 0 R >>",
                                  2: b"<< /Type /Pages /Kids [2 0 R] /Count 3 >>"}))
    # A form that draws itself.
    loop = {5: stream(b"BT /F1 12 Tf 20 100 Td (once) Tj ET /X Do", b"/Type /XObject /Subtype /Form /BBox [0 0 300 300] "
                      b"/Resources << /Font << /F1 3 0 R >> /XObject << /X 5 0 R >> >> ")}
    put("formCycle", document([b"/X Do"], more=loop, resources=b"/Font << /F1 3 0 R >> /XObject << /X 5 0 R >>"))
    encrypted(two_pages, "secret", folder, "needsPassword")
    encrypted(two_pages, "", folder, "emptyPassword")
    encrypted(two_pages, "Zürich €", folder, "accentedPassword")  # in PDFDocEncoding
    encrypted(two_pages, "Zürich €", folder, "accentedUtf8Password", ("256",))  # its salts differ in every run


main()
