#!/usr/bin/env bash
# instructions.sh [--together] FILE...: prints the instructions per byte that quillow-convert needs for each file
# (callgrind). Subtracts start-up and the reading of a minimal document, so that only the engine's own work
# remains. With --together, all files must be of one kind; they are read in one run and give one figure.
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
convert=$top/build/release/bin/quillow-convert
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT

together=false
if [ "${1:-}" = --together ]; then
    together=true
    shift
fi
count() { # FILE...: instructions of one whole run
    valgrind --tool=callgrind --callgrind-out-file=/dev/null "$convert" --in-process -q -j 1 "$@" 2>&1 >/dev/null |
        awk '/Collected/ {print $NF}'
}
printf '{\\rtf1 x}' >"$scratch/empty.rtf"
printf '<p>x' >"$scratch/empty.html"
declare -A start
for kind in rtf html; do start[$kind]=$(count "$scratch/empty.$kind"); done
if $together; then
    kind=${1##*.}
    awk -v n="$(count "$@")" -v s="${start[$kind]}" -v b="$(cat "$@" | wc -c)" -v f="$# files" \
        'BEGIN {printf "%-40s %10d bytes %8.2f instructions a byte\n", f, b, (n - s) / b}'
    exit
fi
for file in "$@"; do
    kind=${file##*.}
    [ "$kind" = htm ] && kind=html
    if [ -z "${start[$kind]:-}" ]; then echo "$file: no start-up figure for .$kind" >&2; continue; fi
    bytes=$(stat -c %s "$file")
    awk -v n="$(count "$file")" -v s="${start[$kind]}" -v b="$bytes" -v f="$(basename "$file")" \
        'BEGIN {printf "%-40s %10d bytes %8.2f instructions a byte\n", f, b, (n - s) / b}'
done
