#!/usr/bin/env bash
# Builds the buffer fuzzer with clang and runs it: scripts/fuzz.sh [seconds] (default 60).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
WITH_FUZZ=1 "$root/scripts/setup.sh"
build="$root/build/fuzz"
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DHMI_BUILD_FUZZ=ON -DHMI_BUILD_TESTS=OFF \
  -DHMI_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --target fuzz_buffers -j"$(nproc)"
corpus="$build/corpus"
mkdir -p "$corpus"
cp -n "$root"/fuzz/corpus/* "$corpus"/ 2>/dev/null || true
QT_QPA_PLATFORM=offscreen "$build/fuzz/fuzz_buffers" -max_total_time="${1:-60}" -rss_limit_mb=2048 "$corpus"
