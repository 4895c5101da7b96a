#!/usr/bin/env bash
# install_test.sh BUILD PYTHON: the installed module finds its worker, wherever the files are moved together.
set -euo pipefail
build=$1
python=$2
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
cmake --install "$build" --prefix "$scratch/prefix" --component python >"$scratch/log"
# The worker belongs to another component.
mkdir -p "$scratch/prefix/libexec/quillow"
cp "$build/bin/quillow-worker" "$scratch/prefix/libexec/quillow/"
mv "$scratch/prefix" "$scratch/moved"
cd "$scratch"
PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=$(echo "$scratch"/moved/lib/python3*/dist-packages) "$python" - <<'PROGRAM'
import os, quillow
assert os.getcwd() in quillow.__file__, quillow.__file__
with quillow.Pool(workers=1) as pool:
    assert pool.extract(b"{\\rtf1 one}").text == "one\n"
assert os.path.exists(os.path.join(os.path.dirname(quillow.__file__), "py.typed"))
PROGRAM
