#!/usr/bin/env python3
"""generated_tables_test.py ROOT GENERATOR: checks that the generator reproduces the tables in engines/pdf/fonts. Exits with 77
(skipped) if the generator's sources are not installed."""
import pathlib
import subprocess
import sys
import tempfile

SKIPPED = 77

root = pathlib.Path(sys.argv[1])
folder = pathlib.Path("engines/pdf/fonts")
failed = 0
with tempfile.TemporaryDirectory() as made:
    code = subprocess.run([sys.executable, "-B", root / "tools" / sys.argv[2], made]).returncode
    if code != 0:
        sys.exit(SKIPPED if code == SKIPPED else 1)
    for file in sorted((pathlib.Path(made) / folder).iterdir()):
        if file.read_bytes() != (root / folder / file.name).read_bytes():
            print(f"{file.name}: differs from what the generator writes")
            failed += 1
sys.exit(1 if failed else 0)
