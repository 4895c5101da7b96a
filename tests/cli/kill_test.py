#!/usr/bin/env python3
"""kill_test.py QUILLOW_CONVERT SOURCE_FOLDER [--kills N] [--documents N] [--seed N] [--folder FOLDER]

Nothing is lost. A run over many documents is killed by SIGKILL at random moments and resumed, again and again, until it
ends by itself. After every kill each text is whole and no process is left; at the end every document has exactly one
result, every text is what an undisturbed run gives, and there is no other file. Then the next round begins, with other
options, until there were N kills."""

import argparse
import base64
import json
import os
import random
import shutil
import signal
import subprocess
import sys
import tempfile
import time

TEMPORARY = (".quillow-convert.", ".tmp")
PATIENCE = 30  # seconds until something counts as never happening
ROUNDS = [  # the options, and whether the texts of an earlier run are there already
    (["--if-exists", "overwrite"], True),
    (["--if-exists", "overwrite", "--mirror", "documents"], False),
    (["--if-exists", "rename"], False),
    (["--if-exists", "error", "--mirror", "documents"], False),
    (["--if-exists", "overwrite", "--mirror", "documents", "--retry-failed"], True),
]


def is_temporary(name):
    return name.startswith(TEMPORARY[0]) and name.endswith(TEMPORARY[1])


def make_documents(source, folder, count, chance):
    """Documents of every kind in a tree, among them some that have no text, and some whose texts want the same name."""
    originals = []
    for kind in ("rtf", "html", "pdf"):
        data = os.path.join(source, "tests/data", kind)
        names = sorted(name for name in os.listdir(data) if name.endswith(".in"))
        originals += [(os.path.join(data, name), kind) for name in chance.sample(names, min(25, len(names)))]
    samples = os.path.join(source, "samples")
    originals += [(os.path.join(samples, name), name.rsplit(".", 1)[1]) for name in sorted(os.listdir(samples))
                  if name.endswith((".rtf", ".html", ".pdf"))]
    for number in range(count):
        original, kind = chance.choice(originals)
        below = os.path.join(folder, f"folder{number % 7}", "deeper" if number % 3 == 0 else "")
        os.makedirs(below, exist_ok=True)
        name = chance.choice([f"document {number // 2}", f"it's \"{number}\"", f"line\n{number}"]).encode()
        if number % 20 == 0:
            name += b" caf\xe9"
        path = os.path.join(below.encode(), name + b"." + kind.encode())
        if number % 25 == 0:
            with open(path, "wb") as out:
                out.write(b"%PDF-1.7 torn" if kind == "pdf" else b"")
        elif number % 11 == 0 and kind == "rtf":  # a text that takes some writing
            with open(path, "wb") as out:
                out.write(b"{\\rtf1 " + b"words and words \\par " * 30000 + b"}")
        else:
            shutil.copyfile(original, path)


def files_below(folder):
    """The files with their bytes, by their path."""
    found = {}
    for below, _, names in os.walk(folder.encode()):
        for name in names:
            path = os.path.join(below, name)
            with open(path, "rb") as file:
                found[os.path.relpath(path, folder.encode())] = file.read()
    return found


def processes_of(group):
    """The living processes of the group. A zombie is dead: only nobody has looked at it yet."""
    found = []
    for entry in os.listdir("/proc"):
        if not entry.isdigit():
            continue
        try:
            with open(f"/proc/{entry}/stat") as file:
                state, _, process_group = file.read().rsplit(")", 1)[1].split()[:3]
        except (FileNotFoundError, ProcessLookupError):
            continue
        if int(process_group) == group and state not in "ZX":
            found.append(int(entry))
    return found


def path_of(result):
    return base64.b64decode(result["path_b64"]) if "path_b64" in result else result["path"].encode()


def results_in(path, may_be_torn):
    with open(path, "rb") as file:
        lines = file.read().split(b"\n")
    assert may_be_torn or lines[-1] == b"", f"the results end with {lines[-1]!r}"
    return [json.loads(line) for line in lines[:-1]]


class KillTest:
    def __init__(self, convert, folder, chance):
        self.convert = os.path.abspath(convert)
        self.folder = folder
        self.chance = chance
        self.kills = 0
        self.rounds = 0
        self.runs = 0
        self.left_over = 0  # temporary files that killed runs left, and that a resumed run has to remove

    def at(self, name):
        return os.path.join(self.folder, name)

    def start(self, options, results="results.jsonl", output="texts"):
        self.runs += 1
        arguments = [self.convert, "-q", "-r", "-j", "2", "-o", output, "--resume", results, *options, "documents"]
        return subprocess.Popen(arguments, cwd=self.folder, start_new_session=True)

    def round(self, options, has_texts, kills):
        expected, exit_code, duration = self.undisturbed(options)
        shutil.rmtree(self.at("texts"), ignore_errors=True)
        if has_texts:
            shutil.copytree(self.at("expected"), self.at("texts"))
            for path in files_below(self.at("texts")):
                with open(os.path.join(self.at("texts").encode(), path), "wb") as out:
                    out.write(b"old\n")
        if os.path.exists(self.at("results.jsonl")):
            os.remove(self.at("results.jsonl"))
        while True:
            process = self.start(options)
            delay = self.chance.uniform(0, duration * self.chance.choice([0.1, 0.3, 0.6]))
            try:
                if self.kills == kills:
                    delay = None
                code = process.wait(delay)
                break
            except subprocess.TimeoutExpired:
                self.kill(process)
                self.check_after_kill(expected)
        assert code == exit_code, f"exit code {code}, not {exit_code}"
        self.check_the_end(expected)
        self.rounds += 1

    def undisturbed(self, options):
        for name in ("expected", "expected.jsonl"):
            shutil.rmtree(self.at(name), ignore_errors=True)
            if os.path.isfile(self.at(name)):
                os.remove(self.at(name))
        begin = time.monotonic()
        code = self.start(options, "expected.jsonl", "expected").wait()
        duration = time.monotonic() - begin
        self.expected_results = results_in(self.at("expected.jsonl"), False)
        return files_below(self.at("expected")), code, duration

    def kill(self, process):
        """Kills the whole group, or the program alone: its workers must not outlive it."""
        if self.chance.random() < 0.75:
            os.killpg(process.pid, signal.SIGKILL)
        else:
            process.kill()
        process.wait()
        self.kills += 1
        begin = time.monotonic()
        while processes_of(process.pid):
            assert time.monotonic() - begin < PATIENCE, "a worker lives on"
            time.sleep(0.002)

    def check_after_kill(self, expected):
        if os.path.exists(self.at("results.jsonl")):
            results_in(self.at("results.jsonl"), True)
        for path, content in files_below(self.at("texts")).items():
            if is_temporary(os.path.basename(path).decode(errors="replace")):
                self.left_over += 1
                continue
            assert content == expected.get(path) or content == b"old\n", f"{path!r} is torn or not expected"

    def check_the_end(self, expected):
        texts = files_below(self.at("texts"))
        assert texts == expected, f"{set(texts) ^ set(expected)} are too many or missing"
        results = results_in(self.at("results.jsonl"), False)
        paths = [path_of(result) for result in results]
        assert len(paths) == len(set(paths)), "a document has two results"
        told = {path_of(result): self.gist(result) for result in results}
        should = {path_of(result): self.gist(result) for result in self.expected_results}
        assert told == should, [(path, told.get(path), should.get(path)) for path in should
                                if told.get(path) != should[path]][:3]
        left = [name for name in os.listdir(self.folder) if is_temporary(name)]
        assert not left, f"{left} are left"

    @staticmethod
    def gist(result):
        output = result["output"] and result["output"].split("/", 1)[1]
        return output, result["status"], result["document_sha256"], result["text_sha256"], result["characters"]


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("convert")
    parser.add_argument("source")
    parser.add_argument("--kills", type=int, default=40)
    parser.add_argument("--documents", type=int, default=300)
    parser.add_argument("--seed", type=int, default=1)
    parser.add_argument("--folder", help="where the files are made; another file system may behave in another way")
    arguments = parser.parse_args()
    chance = random.Random(arguments.seed)
    with tempfile.TemporaryDirectory(dir=arguments.folder) as folder:
        make_documents(arguments.source, os.path.join(folder, "documents"), arguments.documents, chance)
        test = KillTest(arguments.convert, folder, chance)
        while test.kills < arguments.kills:
            options, has_texts = ROUNDS[test.rounds % len(ROUNDS)]
            test.round(options, has_texts, arguments.kills)
        print(f"{test.kills} kills in {test.runs} runs, {test.rounds} rounds of {len(test.expected_results)} documents; "
              f"{test.left_over} temporary files were left and removed")


if __name__ == "__main__":
    sys.exit(main())
