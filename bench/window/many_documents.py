#!/usr/bin/env python3
"""many_documents.py PROGRAM CONVERT FILE...: compares the window with the command line on the same 500 documents.

Run it under tests/gui/session.py. The documents are copies of the FILEs in turn; the window gets them all at once.
Prints wall and CPU seconds from the hand-over to the last text, and ratios. The window converts one document after
the other, so the command line does the same (-j 1). A second start hands the documents over; a drop needs none, so the
wall time of a second start that brings nothing is subtracted. Each is the least of three rounds.
"""
import os
import pathlib
import resource
import shutil
import subprocess
import sys
import time

DOCUMENTS = 500
ROUNDS = 3
HOME = pathlib.Path(os.environ["HOME"])
PRESETS = pathlib.Path(__file__).resolve().parents[2] / "tests/gui/presets.py"
TICKS = os.sysconf("SC_CLK_TCK")


def make_documents(files):
    folder = HOME / "many"
    folder.mkdir()
    documents = []
    for number in range(DOCUMENTS):
        source = pathlib.Path(files[number % len(files)])
        documents.append(folder / f"{number:03}{source.suffix}")
        shutil.copy(source, documents[-1])
    return documents


def wait_for_texts(folder):
    while len(os.listdir(folder)) < DOCUMENTS:
        time.sleep(0.002)


def cpu_seconds(pid):
    fields = pathlib.Path(f"/proc/{pid}/stat").read_text().rsplit(") ", 1)[1].split()
    return (int(fields[11]) + int(fields[12])) / TICKS


def in_window(program, documents):
    texts = HOME / "window-texts"
    texts.mkdir()
    subprocess.run([sys.executable, PRESETS, texts], check=True)
    results = []
    process = subprocess.Popen([program], stdin=subprocess.DEVNULL)
    subprocess.run(["xdotool", "search", "--sync", "--onlyvisible", "--name", "^Quillow$"], check=True, stdout=subprocess.DEVNULL)
    time.sleep(1)
    for _ in range(ROUNDS):
        for text in texts.iterdir():
            text.unlink()
        begin = time.monotonic()
        subprocess.run([program, HOME / "nothing.rtf"], check=True)
        start = time.monotonic() - begin
        used, begin = cpu_seconds(process.pid), time.monotonic()
        subprocess.run([program, *documents], check=True)  # the second instance passes its documents to the first
        wait_for_texts(texts)
        results.append((time.monotonic() - begin - start, cpu_seconds(process.pid) - used))
        time.sleep(1)
    process.terminate()
    process.wait()
    return tuple(map(min, *results))


def on_command_line(convert, documents):
    texts = HOME / "command-line-texts"
    results = []
    for _ in range(ROUNDS):
        shutil.rmtree(texts, ignore_errors=True)
        used, begin = resource.getrusage(resource.RUSAGE_CHILDREN), time.monotonic()
        subprocess.run([convert, "-o", texts, "-j", "1", *documents], check=True, stdin=subprocess.DEVNULL,
                       stderr=subprocess.DEVNULL)
        wall, now = time.monotonic() - begin, resource.getrusage(resource.RUSAGE_CHILDREN)
        results.append((wall, now.ru_utime + now.ru_stime - used.ru_utime - used.ru_stime))
        time.sleep(1)
    return tuple(map(min, *results))


def main():
    program, convert, *files = sys.argv[1:]
    documents = make_documents(files)
    window, line = in_window(program, documents), on_command_line(convert, documents)
    different = [d.name for d in documents if (HOME / "window-texts" / d.stem).with_suffix(".txt").read_bytes() !=
                 (HOME / "command-line-texts" / d.stem).with_suffix(".txt").read_bytes()]
    print(f"{DOCUMENTS} documents{'window':>14}{'command line':>14}{'ratio':>8}")
    for title, ours, theirs in zip(("seconds", "CPU seconds"), window, line):
        print(f"{title:13}{ours:14.2f}{theirs:14.2f}{ours / theirs:8.2f}")
    print(f"texts that differ: {len(different)} {' '.join(different[:5])}")


if __name__ == "__main__":
    main()
