#!/usr/bin/env python3
"""run.py [--ours PROGRAM] [--runs N] [--together] FILE...: compares quillow-convert with converters packaged by Debian.

Every program runs N times, in turns, on every file that it can read. The result is the least user and system CPU
time of the runs and the memory of that run (at least about 10 MiB, because a child process starts as a copy of
this one). Prints our time in milliseconds, each peer's time as a multiple of ours (2.00x: the peer takes twice as
long), and the memory in MiB. Peers that are not installed are listed and left out. A program that fails on a file
has no ratio. Ours reads documents in its own process, as the others do.

With --together, the files are of one kind and form one collection. Our program reads them all in one run on one
core; a peer reads one file per run. Prints the sums, and the sums without the start of every run (measured with a
document of one letter).
"""
import argparse
import math
import os
import pathlib
import shutil
import signal
import subprocess
import sys
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
PEERS = {
    "pdf": ["pdftotext {} -", "pdftotext -raw {} -", "mutool draw -q -F txt {}"],
    "html": ["w3m -dump -cols 10000 -T text/html -O UTF-8 {}",
             "lynx -dump -nolist -force_html -width=1000 -display_charset=utf-8 {}",
             "html2text -utf8 -width 10000 {}", "pandoc -f html -t plain {}", f"{ROOT}/build/release/bin/libxml2_text {{}}"],
    "rtf": ["unrtf --text --quiet --nopict {}", "catdoc -d utf-8 {}", "pandoc -f rtf -t plain {}",
            # A profile of its own, so that it does not connect to a running LibreOffice.
            f"soffice -env:UserInstallation=file://{tempfile.gettempdir()}/quillow-peers --headless --cat {{}}"],
}
KINDS = {".pdf": "pdf", ".html": "html", ".htm": "html", ".rtf": "rtf"}
LETTERS = {"html": b"<p>x", "rtf": b"{\\rtf1 x}"}
LEAST_CPU = 1e-4  # seconds: the least that the system can measure


def measure(command, paths, timeout):
    """(CPU seconds, MiB) of one run on a path, or on a list of paths after the command; None if it failed or took
    too long."""
    words = [word.replace("{}", paths) for word in command.split()] if isinstance(paths, str) else command.split() + paths
    process = subprocess.Popen(words, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               start_new_session=True)
    end = time.monotonic() + timeout
    while True:
        pid, status, usage = os.wait4(process.pid, os.WNOHANG)
        if pid:
            process.returncode = os.waitstatus_to_exitcode(status)
            break
        if time.monotonic() > end:
            os.killpg(process.pid, signal.SIGKILL)
            os.wait4(process.pid, 0)
            process.returncode = -signal.SIGKILL
            return None
        time.sleep(0.0005)
    if process.returncode != 0:
        return None
    return max(usage.ru_utime + usage.ru_stime, LEAST_CPU), usage.ru_maxrss / 1024


def best_of(commands, path, runs, timeout):
    best = {}
    failed = set()
    for _ in range(runs):
        for command in commands:
            if command in failed:
                continue
            outcome = measure(command, path, timeout)
            if outcome is None:
                failed.add(command)
                best.pop(command, None)
            else:
                best[command] = min(best.get(command, outcome), outcome)
    return best


def sum_of(command, paths, runs, timeout):
    """The least CPU seconds of `runs` rounds over all paths; None if a run failed."""
    rounds = []
    for _ in range(runs):
        outcomes = [measure(command, path, timeout) for path in paths]
        if None in outcomes:
            return None
        rounds.append(sum(cpu for cpu, _ in outcomes))
    return min(rounds)


def compare_collection(program, kind, paths, peers, runs, timeout):
    with tempfile.TemporaryDirectory() as folder:
        letter = os.path.join(folder, "letter." + kind)
        pathlib.Path(letter).write_bytes(LETTERS[kind])
        ours = measure_together(program, paths, runs, timeout)
        start = sum_of(program + " --in-process -q {}", [letter] * 50, 1, timeout) / 50
        if ours is None:
            print("ours failed")
            return 1
        megabytes = sum(map(os.path.getsize, paths)) / 1e6
        print(f"{len(paths)} files, {megabytes:.1f} MB: ours {ours * 1000:.0f} ms, {start * 1000:.2f} of them start")
        for peer in peers:
            theirs = sum_of(peer, paths, 1 if "pandoc" in peer or "soffice" in peer else runs, timeout)
            if theirs is None:
                print(f"{label(peer)}: failed on one of them")
                continue
            begin = sum_of(peer, [letter] * 20, 1, timeout) / 20
            print(f"{label(peer)}: {theirs * 1000:.0f} ms, {begin * 1000:.2f} of each run start: {theirs / ours:.1f} times ours; "
                  f"starts subtracted {(theirs - begin * len(paths)) / (ours - start):.1f} times", flush=True)
    return 0


def measure_together(program, paths, runs, timeout):
    outcomes = [measure(program + " --in-process -q -j 1", paths, timeout) for _ in range(runs)]
    return None if None in outcomes else min(cpu for cpu, _ in outcomes)


def label(command):
    words = command.split()
    return os.path.basename(words[0]) + (" -raw" if "-raw" in words else "")


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("files", nargs="+")
    parser.add_argument("--ours", default=str(ROOT / "build/release/bin/quillow-convert"))
    parser.add_argument("--runs", type=int, default=5)
    parser.add_argument("--timeout", type=float, default=120)
    parser.add_argument("--together", action="store_true")
    arguments = parser.parse_args()
    if not shutil.which(arguments.ours):
        sys.exit(f"{arguments.ours} is not there: build it (cmake --preset release && cmake --build build/release) or name it")

    missing = sorted({c.split()[0] for cs in PEERS.values() for c in cs if not shutil.which(c.split()[0])})
    if missing:
        print("not installed, left out:", ", ".join(missing))
    if arguments.together:
        kinds = {KINDS.get(pathlib.Path(path).suffix.lower()) for path in arguments.files}
        if len(kinds) != 1 or kinds & {None, "pdf"}:
            sys.exit("--together takes HTML files or RTF files")
        kind = kinds.pop()
        peers = [c for c in PEERS[kind] if c.split()[0] not in missing]
        return compare_collection(arguments.ours, kind, arguments.files, peers, arguments.runs, arguments.timeout)
    ours = arguments.ours + " --in-process -q {}"
    ratios = {}
    failures = 0
    for path in arguments.files:
        kind = KINDS.get(pathlib.Path(path).suffix.lower())
        if kind is None or not os.path.isfile(path):
            print(f"{path}: neither a PDF nor HTML nor RTF file, left out")
            continue
        peers = [c for c in PEERS[kind] if c.split()[0] not in missing]
        best = best_of([ours] + peers, path, arguments.runs, arguments.timeout)
        if ours not in best:
            failures += 1
            print(f"{os.path.basename(path):32} ours failed")
            continue
        cpu, memory = best[ours]
        line = f"{os.path.basename(path):32} ours {cpu * 1000:8.1f} ms {memory:6.1f} MiB"
        for peer in peers:
            if peer not in best:
                line += f"   {label(peer)} failed"
                continue
            ratios.setdefault((kind, label(peer)), []).append((best[peer][0] / cpu, best[peer][1] / memory))
            line += f"   {label(peer)} {best[peer][0] / cpu:.2f}x {best[peer][1]:.1f} MiB"
        print(line, flush=True)
    for (kind, peer), values in sorted(ratios.items()):
        mean = [math.exp(sum(math.log(v[i]) for v in values) / len(values)) for i in (0, 1)]
        print(f"{kind}, {peer}, {len(values)} files: {mean[0]:.2f} times our CPU, {mean[1]:.2f} times our memory (geometric means)")
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
