#!/usr/bin/env python3
"""generated_tables_test.py ROOT: checks that the generator reproduces the charset tables in text/."""
import pathlib
import subprocess
import sys
import tempfile

root = pathlib.Path(sys.argv[1])
failed = 0
with tempfile.TemporaryDirectory() as folder:
    subprocess.run([sys.executable, "-B", root / "tools/generate_charset_tables.py", folder], check=True)
    for made in sorted((pathlib.Path(folder) / "text").iterdir()):
        if made.read_bytes() != (root / "text" / made.name).read_bytes():
            print(f"{made.name}: differs from what the generator writes")
            failed += 1
sys.exit(1 if failed else 0)
