#!/usr/bin/env bash
# fuzz.sh SECONDS [TARGET...]: runs every libFuzzer target, or the given ones, for SECONDS each on all cores,
# starting from the seeds in fuzz/seeds. Keeps finds in build/fuzz/finds/TARGET and exits with 1 if there are any.
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
seconds=${1:?usage: fuzz.sh SECONDS [TARGET...]}
shift
"$top/tools/install-packages.sh" run fuzz
"$top/tools/build.sh" fuzz
targets=("$@")
[ ${#targets[@]} -gt 0 ] || mapfile -t targets < <(cd "$top/fuzz/seeds" && ls)
status=0
for target in "${targets[@]}"; do
    corpus=$top/build/fuzz/corpus/$target
    finds=$top/build/fuzz/finds/$target
    mkdir -p "$corpus" "$finds"
    echo "== $target, $seconds s"
    (cd "$finds" && "$top/build/fuzz/bin/$target" -max_total_time="$seconds" -fork="$(nproc)" -ignore_crashes=1 -timeout=10 \
        -rss_limit_mb=2048 -artifact_prefix="$finds/" "$corpus" "$top/fuzz/seeds/$target" 2>&1 | tail -n 3)
    [ -z "$(ls -A "$finds")" ] || { echo "finds in $finds:"; ls "$finds"; status=1; }
done
exit $status
