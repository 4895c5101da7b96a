#!/usr/bin/env python3
"""make_encrypted_tables.py: writes tests/engines/pdf/crypt/EncryptedFilesTables.cpp, the encryption dictionaries and a
string and a stream of small PDFs that other programs encrypted, and the seeds of pdf_crypt_fuzz. Needs qpdf and mutool. Both choose random salts, so
every run gives other tables."""
import pathlib
import re
import struct
import subprocess
import tempfile

TITLE = b"the string of an object"
CONTENT = b"BT (the stream of an object) Tj ET"
ACCENTS = "Zürich €"
LONG = "0123456789" * 14
QPDF, MUTOOL = "qpdf", "mutool"
QPDF_OF_BYTES = "qpdf --password-mode=bytes"  # hashes the password in UTF-8
CASES = [  # name, program, user's password, owner's password, options
    ("rc4Of40Bits", QPDF, "user", "owner", ["40"]),
    ("rc4Of128Bits", QPDF, "user", "owner", ["128", "--use-aes=n"]),
    ("rc4AsCryptFilter", QPDF, "user", "owner", ["128", "--use-aes=n", "--force-V4"]),
    ("aes128", QPDF, "user", "owner", ["128", "--use-aes=y"]),
    ("aes128WithPlainMetadata", QPDF, "user", "owner", ["128", "--use-aes=y", "--cleartext-metadata"]),
    ("aes256OfRevision5", QPDF, "user", "owner", ["256", "--force-R5"]),
    ("aes256", QPDF, "user", "owner", ["256"]),
    ("aes256WithPlainMetadata", QPDF, "user", "owner", ["256", "--cleartext-metadata"]),
    ("emptyUserOfRevision2", QPDF, "", "owner", ["40"]),
    ("emptyUserOfRevision4", QPDF, "", "owner", ["128", "--use-aes=y"]),
    ("emptyUserOfRevision6", QPDF, "", "owner", ["256"]),
    ("accentsOfRevision4", QPDF, ACCENTS, "owner", ["128", "--use-aes=y"]),
    ("accentsOfRevision6", QPDF, ACCENTS, "owner", ["256"]),
    ("longPasswordOfRevision3", QPDF, LONG, "owner", ["128", "--use-aes=n"]),
    ("longPasswordOfRevision6", QPDF, LONG[:127], "owner", ["256"]),
    ("otherProgramRc4Of40Bits", MUTOOL, "user", "owner", ["rc4-40"]),
    ("otherProgramRc4Of128Bits", MUTOOL, "user", "owner", ["rc4-128"]),
    ("otherProgramAes128", MUTOOL, "user", "owner", ["aes-128"]),
    ("otherProgramAes256", MUTOOL, "user", "owner", ["aes-256"]),
    ("accentsInUtf8OfRevision4", QPDF_OF_BYTES, ACCENTS, "owner", ["128", "--use-aes=y"]),
]
ESCAPES = {b"n": b"\n", b"r": b"\r", b"t": b"\t", b"b": b"\b", b"f": b"\f"}


def plain_file():
    objects = [b"<< /Type /Catalog /Pages 2 0 R >>", b"<< /Type /Pages /Kids [3 0 R] /Count 1 >>",
               b"<< /Type /Page /Parent 2 0 R /MediaBox [0 0 9 9] /Contents 4 0 R >>",
               b"<< /Length %d >> stream\n%s\nendstream" % (len(CONTENT), CONTENT), b"<< /Title (%s) >>" % TITLE]
    out, places = bytearray(b"%PDF-1.7\n"), []
    for number, body in enumerate(objects, 1):
        places.append(len(out))
        out += b"%d 0 obj %s endobj\n" % (number, body)
    start = len(out)
    out += b"xref\n0 6\n0000000000 65535 f \n" + b"".join(b"%010d 00000 n \n" % place for place in places)
    return bytes(out + b"trailer << /Size 6 /Root 1 0 R /Info 5 0 R /ID [<00112233445566778899AABBCCDDEEFF> "
                       b"<00112233445566778899AABBCCDDEEFF>] >> startxref %d %%%%EOF\n" % start)


def string_after(data, key):
    """The string behind a key, as bytes; empty if there is none."""
    found = re.search(rb"/" + key + rb"\s*\[?\s*(<(?!<)|\()", data)
    if not found:
        return b""
    at = found.end()
    if found[1] == b"<":
        return bytes.fromhex(data[at:data.index(b">", at)].decode())
    out, depth = b"", 1
    while True:
        byte = data[at:at + 1]
        at += 1
        if byte == b"\\":
            octal = re.match(rb"[0-7]{1,3}", data[at:at + 3])
            follower = octal[0] if octal else data[at:at + 1]
            out += bytes([int(octal[0], 8)]) if octal else ESCAPES.get(follower, follower)
            at += len(follower)
            continue
        depth += {b"(": 1, b")": -1}.get(byte, 0)
        if depth == 0:
            return out
        out += byte


def number_after(data, key, default=0):
    found = re.search(rb"/" + key + rb"\s+(-?\d+)", data)
    return int(found[1]) if found else default


def name_after(data, key, default):
    found = re.search(rb"/" + key + rb"\s*/(\w+)", data)
    return found[1].decode() if found else default


def encryption_of(data):
    """The encryption dictionary: an object, or a part of the trailer."""
    return data[data.rindex(b"/Encrypt<<"):] if b"/Encrypt<<" in data else object_with(data, rb"/Standard")[1]


def object_with(data, pattern):
    for found in re.finditer(rb"(\d+) 0 obj(.*?)endobj", data, re.S):
        if re.search(pattern, found[2], re.S):
            return int(found[1]), found[2]
    raise SystemExit(f"no object with {pattern}")


def encrypt(folder, program, user, owner, options):
    source, target = folder / "plain.pdf", folder / "encrypted.pdf"
    source.write_bytes(plain_file())
    if program.startswith(QPDF):
        command = [*program.split(), "--allow-weak-crypto", "--object-streams=disable", "--stream-data=preserve",
                   "--encrypt", user, owner, *options, "--", source, target]
    else:
        command = ["mutool", "clean", "-E", options[0], "-U", user, "-O", owner, source, target]
    subprocess.run(command, check=True)
    return target.read_bytes()


def literal(value):
    """A C++ view of bytes: every byte in octal, so that none joins the next."""
    if not value:
        return '""sv'
    text = "".join("\\%03o" % byte for byte in value)
    return "\n         ".join(f'"{text[i:i + 96]}"' for i in range(0, len(text), 96)) + "sv"


def read(data):
    """The values of an encrypted file, by the names of EncryptedFile's members."""
    encryption = encryption_of(data)
    string_number, title = object_with(data, rb"/Title")
    stream_number, stream = object_with(data, rb"\bstream\b")
    begin = re.search(rb"stream\r?\n", stream).end()
    filters = re.search(rb"/StdCF\s*<<.*?>>", encryption, re.S)
    outside = encryption.replace(filters[0], b"") if filters else encryption
    return {"version": number_after(outside, b"V"), "revision": number_after(outside, b"R"),
            "lengthInBits": number_after(outside, b"Length", 40), "permissions": number_after(outside, b"P"),
            "encryptsMetadata": not re.search(rb"/EncryptMetadata\s+false", outside),
            "method": name_after(filters[0], b"CFM", "None") if filters else "",
            "filterLength": number_after(filters[0], b"Length") if filters else 0,
            "owner": string_after(outside, b"O"), "user": string_after(outside, b"U"),
            "ownerKey": string_after(outside, b"OE"), "userKey": string_after(outside, b"UE"),
            "documentId": string_after(data, b"ID"),
            "stringNumber": string_number, "string": string_after(title, b"Title"),
            "streamNumber": stream_number, "stream": stream[begin:begin + number_after(stream, b"Length")]}


def entry(name, user, owner, values):
    fields = [f'"{name}"sv', f'"{user}"sv', f'"{owner}"sv']
    for value in values.values():
        fields.append(literal(value) if isinstance(value, bytes) else f'"{value}"sv' if isinstance(value, str)
                      else str(value).lower())
    return "    {" + ",\n     ".join(fields) + "},\n"


def seed(password, values):
    """What fuzz/PdfCryptFuzz.cpp reads."""
    field = lambda value: bytes([len(value)]) + value
    name = b"StdCF" if values["method"] else b""
    filters = field(name) + field(values["method"].encode()) + struct.pack(">h", values["filterLength"])
    return (struct.pack(">bbhi?", values["version"], values["revision"], values["lengthInBits"], values["permissions"],
                        values["encryptsMetadata"])
            + b"".join(field(values[key]) for key in ("owner", "user", "ownerKey", "userKey", "documentId"))
            + field(password.encode()) + field(name) + field(name) + field(b"")
            + (b"\1" + filters if name else b"\0") + struct.pack(">IH", values["streamNumber"], 0) + values["stream"])


def main():
    out = ("// Generated by tools/make_encrypted_tables.py. Do not edit.\n"
           '#include "tests/engines/pdf/crypt/EncryptedFiles.h"\n\n#include <array>\n\nnamespace quillow::pdf {\n\n'
           "using namespace std::string_view_literals;\n\n// clang-format off\n"
           f"static constexpr std::array<EncryptedFile, {len(CASES)}> kFiles{{{{\n")
    top = pathlib.Path(__file__).parent.parent
    with tempfile.TemporaryDirectory() as folder:
        for name, program, user, owner, options in CASES:
            values = read(encrypt(pathlib.Path(folder), program, user, owner, options))
            out += entry(name, user, owner, values)
            (top / "fuzz/seeds/pdf_crypt_fuzz" / name).write_bytes(seed(user, values))
    out += ("}};\n// clang-format on\n\nstd::span<const EncryptedFile> encryptedFiles() {\n    return kFiles;\n}\n\n"
            "} // namespace quillow::pdf\n")
    (top / "tests/engines/pdf/crypt/EncryptedFilesTables.cpp").write_text(out)


main()
