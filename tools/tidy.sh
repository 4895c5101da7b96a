#!/usr/bin/env bash
# tidy.sh [FILE...]: runs clang-tidy 14 on the given sources, or on all sources of the project (takes some minutes).
set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "$0")")")"
tools/build.sh dev
if [ $# -eq 0 ]; then mapfile -t files < <(git ls-files -- '*.cpp' ':!tests' ':!fuzz' ':!bench' ':!*Tables.cpp'); else files=("$@"); fi
printf '%s\n' "${files[@]}" | xargs -P "$(nproc)" -n 4 clang-tidy-14 -p build/dev --quiet --extra-arg=-Wno-unknown-warning-option
