#!/usr/bin/env bash
# bench.sh [ARGUMENTS]: runs the engines' benchmarks (bytes per second), then counts instructions per byte on the
# samples with callgrind. Those counts do not depend on the load of the machine. Passes ARGUMENTS to Google
# Benchmark, such as --benchmark_filter=rtf.
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
"$top/tools/install-packages.sh" run bench
"$top/tools/build.sh" release -DQUILLOW_BENCH=ON quillow-convert engines_bench worker_bench
"$top/build/release/bin/engines_bench" "$@"
"$top/build/release/bin/worker_bench"
"$top/tools/instructions.sh" "$top"/samples/*.rtf "$top"/samples/*.html
