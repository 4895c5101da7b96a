#!/usr/bin/env python3
"""bash_completion_test.py SCRIPT: types command lines into a real bash, presses the tab key, and checks which words the
program would get."""

import os
import pty
import re
import select
import sys
import tempfile

CASES = [  # what is typed before the tab key, and the words of the command line after it
    ("--retry", ["--retry-failed"]),
    ("--no-cl", ["--no-clobber"]),
    ("--files", ["--files-from="]),
    ("--if-exists sk", ["--if-exists", "skip"]),
    ("--if-exists=ne", ["--if-exists=newer"]),
    ("-t ht", ["-t", "html"]),
    ("--mirror d", ["--mirror", "docs/"]),
    ("-o lo", ["-o", "log.jsonl"]),
    ("--results=lo", ["--results=log.jsonl"]),
    ("two", ["two words.rtf"]),  # and not the text "two words.txt"
    ("UP", ["UPPER.PDF"]),
    ("docs/in", ["docs/inner.html"]),
    ("-- -da", ["--", "-dash.rtf"]),
    ("-j 4 two", ["-j", "4", "two words.rtf"]),
    ("--shard 1", ["--shard", "1"]),
]


class Bash:
    def __init__(self, folder):
        process, self.terminal = pty.fork()
        if process == 0:
            os.chdir(folder)
            os.environ.update(PS1="", TERM="dumb", INPUTRC="/dev/null", COLUMNS="1000")
            os.execvp("bash", ["bash", "--norc", "--noprofile", "-i"])
        self.process = process

    def type(self, text):
        os.write(self.terminal, text.encode())

    def read_to(self, end):
        """What bash prints, up to the expression. Waits for it half a minute, which is for a broken test only."""
        seen = ""
        while not re.search(end, seen):
            if not select.select([self.terminal], [], [], 30)[0]:
                raise SystemExit(f"bash did not print {end!r} but {seen!r}")
            seen += os.read(self.terminal, 65536).decode(errors="replace")
        return seen


def main():
    script = os.path.abspath(sys.argv[1])
    with tempfile.TemporaryDirectory() as folder:
        os.mkdir(os.path.join(folder, "docs"))
        for name in ["two words.rtf", "two words.txt", "UPPER.PDF", "docs/inner.html", "docs/inner.txt", "-dash.rtf",
                     "log.jsonl", "1"]:
            open(os.path.join(folder, name), "w").close()
        bash = Bash(folder)
        bash.type("bind 'set bell-style none'; bind 'set enable-bracketed-paste off'\n")
        bash.type(f"source '{script}'\n")
        bash.type("quillow-convert() { printf '{%s}' \"$@\"; echo '{end''}'; }\n")
        failures = 0
        for typed, expected in CASES:
            bash.type(f"quillow-convert {typed}\t\n")
            words = re.findall(r"\{([^{}]*)\}", re.search(r"(?:\{[^{}]*\})*\{end\}", bash.read_to(r"\{end\}")).group())[:-1]
            if words != expected:
                failures += 1
                print(f"{typed!r} gives {words}, not {expected}")
        bash.type("exit\n")
        os.waitpid(bash.process, 0)
    sys.exit(1 if failures else 0)


main()
