#!/usr/bin/env bash
# instructions.sh FILE...: instructions a byte that quillow-convert spends on each file (callgrind), its start-up and the reading of
# an empty document subtracted, so that only the engine's own work remains.
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
convert=$top/build/release/bin/quillow-convert
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

count() { # FILE: instructions of one whole run
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$convert" -j 1 "$1" 2>&1 >/dev/null |
        awk '/Collected/ {print $NF}'
}
printf '{\\rtf1 x}' >"$scratch/empty.rtf"
printf '<p>x' >"$scratch/empty.html"
declare -A start
for kind in rtf html; do start[$kind]=$(count "$scratch/empty.$kind"); done
for file in "$@"; do
    kind=${file##*.}
    [ "$kind" = htm ] && kind=html
    if [ -z "${start[$kind]:-}" ]; then echo "$file: no start-up figure for .$kind" >&2; continue; fi
    bytes=$(stat -c %s "$file")
    awk -v n="$(count "$file")" -v s="${start[$kind]}" -v b="$bytes" -v f="$(basename "$file")" \
        'BEGIN {printf "%-40s %10d bytes %8.2f instructions a byte\n", f, b, (n - s) / b}'
done
