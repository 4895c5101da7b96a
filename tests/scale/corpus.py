"""Many small documents of every kind for runs over several machines: each has a text that says its number."""
import os
import zlib


def document(number):
    """Extension, bytes and expected status of a document."""
    kind = number % 10
    words = f"Document {number}. " + "The quick brown fox jumps over the lazy dog. " * (number % 37)
    if number % 97 == 0:
        return "pdf", b"%PDF-1.4\n" + os.urandom(200), "damaged"
    if number % 211 == 0:
        return "rtf", b"", "damaged"
    if kind < 4:
        return "html", f"<!DOCTYPE html><title>t</title><h1>{number}</h1><p>{words}</p>".encode(), "ok"
    if kind < 8:
        return "rtf", f"{{\\rtf1\\ansi {words}\\par}}".encode(), "ok"
    return "pdf", pdf(words[:80]), "ok"


def pdf(words):
    content = zlib.compress(f"BT /F 12 Tf 50 700 Td ({words}) Tj ET".encode())
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", b"<</Type/Pages/Kids[3 0 R]/Count 1>>",
               b"<</Type/Page/Parent 2 0 R/MediaBox[0 0 600 800]/Contents 4 0 R/Resources<</Font<</F 5 0 R>>>>>>",
               b"<</Length %d/Filter/FlateDecode>>stream\n%s\nendstream" % (len(content), content),
               b"<</Type/Font/Subtype/Type1/BaseFont/Helvetica>>"]
    out, offsets = b"%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        offsets.append(len(out))
        out += b"%d 0 obj" % number + body + b"endobj\n"
    table = b"".join(b"%010d 00000 n \n" % offset for offset in offsets)
    return out + b"xref\n0 6\n0000000000 65535 f \n" + table + b"trailer<</Size 6/Root 1 0 R>>\nstartxref\n%d\n%%%%EOF\n" % len(out)


def write_files(folder, numbers):
    """Writes the documents as files, 1,000 in a folder. Returns their expected statuses by path."""
    expected = {}
    for number in numbers:
        extension, data, status = document(number)
        below = folder / f"{number // 1000:03}"
        below.mkdir(parents=True, exist_ok=True)
        path = below / f"d{number:06}.{extension}"
        path.write_bytes(data)
        expected[str(path)] = status
    return expected
