#!/usr/bin/env bash
# Builds the engine's tests with the address and undefined-behaviour sanitizers and runs them.
set -euo pipefail
cd "$(dirname "$0")/.."

tools/setup.sh tests
cmake -S . -B build/asan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTAVIX_BUILD_UI=OFF \
    -DTAVIX_SANITIZE=address,undefined -DTAVIX_WARNINGS_AS_ERRORS=ON >/dev/null
cmake --build build/asan
ctest --test-dir build/asan --output-on-failure --parallel "$(nproc)"
