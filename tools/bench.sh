#!/usr/bin/env bash
# Builds the benchmarks and prints all their figures. Arguments go to each program, for example
# --benchmark_filter=divide.
set -euo pipefail
cd "$(dirname "$0")/.."

cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DTAVIX_BUILD_BENCH=ON \
    -DTAVIX_BUILD_TESTS=OFF -DTAVIX_BUILD_UI=OFF >/dev/null
cmake --build build/bench
for program in build/bench/bench/tavix_*_bench; do
    echo "== $(basename "$program")"
    "$program" "$@"
done
