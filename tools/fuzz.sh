#!/usr/bin/env bash
# Builds the fuzz targets with clang's libFuzzer and the sanitizers, and runs each for so many
# seconds (60) over its corpus. What they find lies in build/fuzz/found; new inputs that reach new
# branches lie in build/fuzz/corpus, not in the repository.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds="${1:-60}"

cmake -S . -B build/fuzz -G Ninja -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo \
    -DTAVIX_FUZZ=ON -DTAVIX_SANITIZE=address,undefined -DTAVIX_BUILD_UI=OFF \
    -DTAVIX_BUILD_TESTS=OFF >/dev/null
cmake --build build/fuzz --target fuzzers
mkdir -p build/fuzz/found
for seeds in fuzz/corpus/*/; do
    name="$(basename "$seeds")"
    mkdir -p "build/fuzz/corpus/$name"
    echo "== $name"
    # Long answers of scripts on standard output would bury the fuzzer's own lines.
    "build/fuzz/fuzz/tavix_${name}_fuzz" -max_total_time="$seconds" -timeout=20 \
        -rss_limit_mb=4096 -artifact_prefix="build/fuzz/found/$name-" \
        "build/fuzz/corpus/$name" "$seeds" 2>&1 >/dev/null | tail -3
done
