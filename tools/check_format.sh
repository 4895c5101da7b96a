#!/usr/bin/env bash
# check_format.sh [--fix]: checks the format of every source file except generated tables with clang-format 14. --fix
# reformats the files instead.
set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "$0")")")"
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
find . -path ./build -prune -o -path './.*' -prune -o \( -name '*.cpp' -o -name '*.h' -o -name '*.c' \) ! -name '*Tables.cpp' -print0 |
    xargs -0 -r clang-format-14 "${mode[@]}"
