#!/usr/bin/env bash
# check_format.sh: every source file is as clang-format 14 writes it (generated tables apart). "check_format.sh --fix" rewrites.
set -euo pipefail
cd "$(dirname "$(dirname "$(readlink -f "$0")")")"
mode=(--dry-run -Werror)
[ "${1:-}" = --fix ] && mode=(-i)
git ls-files -z -- '*.cpp' '*.h' ':!*Tables.cpp' | xargs -0 -r clang-format-14 "${mode[@]}"
