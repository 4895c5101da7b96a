#!/usr/bin/env bash
# bench.sh [ARGUMENTS]: the engines' benchmarks on the samples (bytes a second), then instructions a byte under callgrind, which
# do not depend on what else the machine is doing. Arguments go to Google Benchmark (--benchmark_filter=rtf).
set -euo pipefail
top=$(dirname "$(dirname "$(readlink -f "$0")")")
"$top/tools/install-packages.sh" run bench
"$top/tools/build.sh" release -DQUILLOW_BENCH=ON quillow-convert engines_bench
"$top/build/release/bin/engines_bench" "$@"
"$top/tools/instructions.sh" "$top"/samples/*.rtf "$top"/samples/*.html
