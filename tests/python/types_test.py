#!/usr/bin/env python3
"""types_test.py BUILD: mypy checks the stubs against the module, and programs against the stubs."""
import os
import pathlib
import subprocess
import sys
import tempfile
import unittest

PACKAGE = pathlib.Path(sys.argv[1]) / "python"

RIGHT = """
import pathlib
import quillow
from typing import Iterator

extraction: quillow.Extraction = quillow.extract(b"", "html", links=True)
text: str = extraction.text or ""
lost: int = extraction.loss.parts_skipped
with quillow.Pool(workers=2, timeout=1.5) as pool:
    answers: Iterator[quillow.Extraction] = pool.map([pathlib.Path("a.pdf"), b"{"], reflow=True)
    one = pool.extract("a.rtf", pages="1")
    if one.reason == "timeout":
        print(one.detail)
"""
WRONG = """
import quillow
quillow.extract("a.rtf", "docx")
quillow.extract("a.rtf", colour=True)
quillow.extract(3)
n: int = quillow.extract("a.rtf").text
quillow.Pool(workers="2")
quillow.Pool().map("a.rtf", links=1).reason
"""


class Types(unittest.TestCase):
    def mypy(self, program):
        with tempfile.TemporaryDirectory() as folder:
            path = pathlib.Path(folder, "program.py")
            path.write_text(program)
            return subprocess.run([sys.executable, "-m", "mypy", "--strict", "--cache-dir", folder, path], capture_output=True,
                                  text=True, env={**os.environ, "MYPYPATH": str(PACKAGE)})

    def test_the_stubs_say_what_the_module_does(self):
        with tempfile.TemporaryDirectory() as folder:
            allowed = pathlib.Path(folder, "allowed")
            # The class of pybind11's classes, and mypy 1.0's mistake with names for types.
            allowed.write_text("quillow._engine.Workers\nquillow(\\._types)?\\.(Kind|Reason)\n")
            done = subprocess.run([sys.executable, "-m", "mypy.stubtest", "quillow", "--allowlist", allowed], cwd=folder,
                                  capture_output=True, text=True, env={**os.environ, "MYPYPATH": str(PACKAGE)})
        self.assertEqual(done.returncode, 0, done.stdout + done.stderr)

    def test_a_right_program_has_right_types(self):
        done = self.mypy(RIGHT)
        self.assertEqual(done.returncode, 0, done.stdout)

    def test_each_wrong_line_is_found(self):
        done = self.mypy(WRONG)
        lines = {line.split(":")[1] for line in done.stdout.splitlines() if ": error:" in line}
        self.assertEqual(lines, {"3", "4", "5", "6", "7", "8"}, done.stdout)


if __name__ == "__main__":
    unittest.main(argv=sys.argv[:1])
