#!/usr/bin/env python3
"""run.py [--ours PROGRAM] [--documents N] [--rounds N] [--folder PATH] [--no-peers]: a batch of small documents.

Makes 5,000 mixed small documents (RTF, HTML, PDF), the samples and generated ones in turns, and converts them all, two
at a time, into a folder of texts: with quillow-convert, with the same without isolation, and with one run of a peer for
each document (pdftotext, w3m, catdoc) under xargs -P2. Prints wall seconds, documents per second and ratios. The times
are the least of the rounds. Checks that both our runs write the same texts.
"""
import argparse
import filecmp
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time
import zlib

ROOT = pathlib.Path(__file__).resolve().parents[2]
WORDS = ("the of and to in a is that for it as was with be by on not he his but at are this have from or had an they "
         "which one you were her all she there would their we him been has when who will more no if out so said what up "
         "harbour kettle ledger meadow notary orchard parcel quarry ribbon saddle timber umbrella valley window yonder").split()


def sentence(dice):
    words = [dice.choice(WORDS) for _ in range(dice.randint(6, 18))]
    return " ".join(words).capitalize() + "."


def paragraphs(dice):
    return [" ".join(sentence(dice) for _ in range(dice.randint(2, 6))) for _ in range(dice.randint(3, 12))]


def rtf(dice):
    body = "".join(f"\\pard\\sa200\\qj {{\\b {dice.choice(WORDS)}}} {text}\\par\n" for text in paragraphs(dice))
    row = "\\trowd\\cellx3000\\cellx6000\\intbl{}\\cell {}\\cell\\row\n"
    table = "".join(row.format(dice.choice(WORDS), dice.randint(1, 9999)) for _ in range(dice.randint(0, 8)))
    head = "{\\rtf1\\ansi\\ansicpg1252\\deff0{\\fonttbl{\\f0\\froman Times New Roman;}}{\\colortbl;\\red0\\green0\\blue0;}\n"
    return (head + "{\\stylesheet{\\s0 Normal;}}\\f0\\fs24\n" + body + table + "}").encode()


def html(dice):
    items = "".join(f'<li><a href="/{word}.html">{word}</a></li>' for word in dice.sample(WORDS, 8))
    rows = "".join(f"<tr><td>{dice.choice(WORDS)}</td><td>{dice.randint(1, 9999)}</td></tr>" for _ in range(dice.randint(0, 10)))
    body = "\n".join(f'<p class="text">{text}</p>' for text in paragraphs(dice))
    style = "body{font-family:serif;margin:2em}nav li{display:inline}.text{text-align:justify}"
    return (f'<!DOCTYPE html><html><head><meta charset="utf-8"><title>{sentence(dice)}</title><style>{style}</style></head>'
            f"<body><nav><ul>{items}</ul></nav><h1>{sentence(dice)}</h1>\n{body}<table>{rows}</table></body></html>").encode()


def wrapped(text, width):
    lines, line = [], ""
    for word in text.split():
        if len(line) + len(word) + 1 > width:
            lines.append(line)
            line = word
        else:
            line = f"{line} {word}".strip()
    return lines + [line]


def pdf(dice):
    pages = []
    for _ in range(dice.randint(1, 3)):
        lines = [line for text in paragraphs(dice) for line in [*wrapped(text, 80), ""]][:50]
        pages.append("BT /F1 11 Tf 14 TL 72 770 Td " + " ".join(f"({line}) Tj T*" for line in lines) + " ET")
    first = 4
    kids = " ".join(f"{first + 2 * i} 0 R" for i in range(len(pages)))
    objects = [b"<</Type/Catalog/Pages 2 0 R>>", f"<</Type/Pages/Kids[{kids}]/Count {len(pages)}>>".encode(),
               b"<</Type/Font/Subtype/Type1/BaseFont/Times-Roman/Encoding/WinAnsiEncoding>>"]
    for i, content in enumerate(pages):
        packed = zlib.compress(content.encode())
        objects.append(f"<</Type/Page/Parent 2 0 R/MediaBox[0 0 595 842]/Resources<</Font<</F1 3 0 R>>>>"
                       f"/Contents {first + 2 * i + 1} 0 R>>".encode())
        objects.append(f"<</Filter/FlateDecode/Length {len(packed)}>>stream\n".encode() + packed + b"\nendstream")
    out, places = b"%PDF-1.4\n", []
    for number, body in enumerate(objects, 1):
        places.append(len(out))
        out += f"{number} 0 obj\n".encode() + body + b"\nendobj\n"
    table = "".join(f"{place:010} 00000 n \n" for place in places)
    trailer = f"trailer<</Size {len(objects) + 1}/Root 1 0 R>>\nstartxref\n{len(out)}\n%%EOF\n"
    return out + f"xref\n0 {len(objects) + 1}\n0000000000 65535 f \n{table}{trailer}".encode()


def make_documents(folder, count):
    samples = sorted(path for path in (ROOT / "samples").iterdir() if path.suffix in (".rtf", ".html", ".htm", ".pdf"))
    makers = ((".rtf", rtf), (".html", html), (".rtf", rtf), (".html", html), (".pdf", pdf))
    dice = random.Random(17)
    paths = []
    for number in range(count):
        if number % 3 == 0:
            sample = samples[number // 3 % len(samples)]
            paths.append(folder / f"{number:05}{'.html' if sample.suffix == '.htm' else sample.suffix}")
            shutil.copyfile(sample, paths[-1])
        else:
            extension, make = makers[number % len(makers)]
            paths.append(folder / f"{number:05}{extension}")
            paths[-1].write_bytes(make(dice))
    return paths


def timed(work):
    begin = time.monotonic()
    work()
    return time.monotonic() - begin


def ours(program, documents, texts, *options):
    listed = b"\0".join(bytes(path) for path in documents) + b"\0"
    return timed(lambda: subprocess.run([program, "-q", "-j", "2", "-0", "--files-from", "-", *options, "-o", texts],
                                        input=listed, check=True))


PEERS = {".pdf": 'for f; do pdftotext -q "$f" "$0/${f##*/}.txt"; done',
         ".html": 'for f; do w3m -dump -cols 10000 -T text/html -O UTF-8 "$f" > "$0/${f##*/}.txt"; done',
         ".rtf": 'for f; do catdoc -d utf-8 "$f" > "$0/${f##*/}.txt"; done'}


def peers(documents, texts):
    texts.mkdir()

    def run():
        for extension, script in PEERS.items():
            listed = b"\0".join(bytes(path) for path in documents if path.suffix == extension)
            # A shell for many documents, so that its start does not count.
            subprocess.run(["xargs", "-0", "-P2", "-n50", "sh", "-c", script, texts], input=listed, check=True,
                           stderr=subprocess.DEVNULL)
    return timed(run)


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--ours", default=str(ROOT / "build/release/bin/quillow-convert"))
    parser.add_argument("--documents", type=int, default=5000)
    parser.add_argument("--rounds", type=int, default=3)
    parser.add_argument("--folder", help="where to make the documents and the texts (default: the temporary folder)")
    parser.add_argument("--no-peers", action="store_true")
    arguments = parser.parse_args()
    missing = [name for name in ("pdftotext", "w3m", "catdoc") if not shutil.which(name)]
    if missing and not arguments.no_peers:
        sys.exit(f"not installed: {' '.join(missing)} (tools/install-packages.sh bench)")

    with tempfile.TemporaryDirectory(dir=arguments.folder) as name:
        folder = pathlib.Path(name)
        (folder / "documents").mkdir()
        documents = make_documents(folder / "documents", arguments.documents)
        megabytes = sum(path.stat().st_size for path in documents) / 1e6
        print(f"{len(documents)} documents, {megabytes:.1f} MB")
        runs = {"quillow-convert": lambda texts: ours(arguments.ours, documents, texts),
                "the same with --in-process": lambda texts: ours(arguments.ours, documents, texts, "--in-process")}
        if not arguments.no_peers:
            runs["pdftotext, w3m, catdoc under xargs -P2"] = lambda texts: peers(documents, texts)
        least = {}
        for round_ in range(arguments.rounds):
            for number, (title, run) in enumerate(runs.items()):
                if "xargs" in title and round_ > 0:
                    continue  # by far the longest
                # A folder of its own: some file systems are slow to make files just after many were removed.
                texts = folder / f"texts-{round_}-{number}"
                least[title] = min(least.get(title, 1e9), run(texts))
        own = least["quillow-convert"]
        for title, seconds in least.items():
            print(f"{title:40}{seconds:8.2f} s {len(documents) / seconds:8.0f} documents/s   {seconds / own:6.2f} times ours")
        comparison = filecmp.dircmp(folder / "texts-0-0", folder / "texts-0-1")
        print(f"texts: {len(comparison.left_list)}, different without isolation: "
              f"{len(comparison.diff_files) + len(comparison.left_only) + len(comparison.right_only)}")


if __name__ == "__main__":
    main()
