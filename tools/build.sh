#!/usr/bin/env bash
# build.sh PRESET [-DNAME=VALUE...] [TARGET...]: configures the preset if needed and builds the targets, or all
# targets if none is given. Writes to standard error only; prints nothing if everything is up to date.
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
preset=$1
shift
definitions=()
while [ $# -gt 0 ] && [[ $1 == -D* ]]; do
    definitions+=("$1")
    shift
done
build=$top/build/$preset
cd "$top"
if [ ! -f "$build/build.ninja" ] || [ ${#definitions[@]} -gt 0 ]; then
    mkdir -p "$build"
    if ! cmake --preset "$preset" "${definitions[@]}" >"$build/configure.log" 2>&1; then
        cat "$build/configure.log" >&2
        exit 1
    fi
fi
if ! ninja -C "$build" -n "$@" 2>/dev/null | grep -q 'no work to do'; then
    echo "Building ($preset)..." >&2
    ninja -C "$build" "$@" >&2
fi
