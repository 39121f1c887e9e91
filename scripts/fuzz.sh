#!/usr/bin/env bash
# Builds the fuzz targets with clang and runs them one after another:
#   scripts/fuzz.sh [seconds per target, default 60] [target...]
# Targets: fuzz_buffers (stored text and font buffers), fuzz_buttons (buffers applied to the bit and
# function buttons), fuzz_parsers (caption table, colour text, keypad entry, value formatting, table
# binding text, hmi-table's cell file), fuzz_pictures (picture files shown by the dynamic image),
# fuzz_formcheck (forms given to hmi-panel --check, and its word library file), fuzz_modbusmap (the
# Modbus map file).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
build="$root/build/fuzz"
seconds=${1:-60}
shift || true
targets=("$@")
[ ${#targets[@]} -gt 0 ] || targets=(fuzz_buffers fuzz_buttons fuzz_formcheck fuzz_modbusmap fuzz_parsers fuzz_pictures)
CC=clang CXX=clang++ cmake -S "$root" -B "$build" -DHMI_BUILD_FUZZ=ON -DHMI_BUILD_TESTS=OFF \
  -DHMI_BUILD_BENCH=OFF -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --target "${targets[@]}" -j"$(nproc)" >"$build/build.log" 2>&1 || { tail -30 "$build/build.log"; exit 1; }
export LSAN_OPTIONS="suppressions=$root/fuzz/lsan.supp:print_suppressions=0"
# A finding of UBSan ends the run like a crash: libFuzzer then writes the input as crash-* beside it.
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
for target in "${targets[@]}"; do
  corpus="$build/corpus/$target"
  mkdir -p "$corpus"
  cp -n "$root"/fuzz/corpus/* "$corpus"/ 2>/dev/null || true
  echo "== $target for $seconds s"
  dict=()
  [ -f "$root/fuzz/$target.dict" ] && dict=(-dict="$root/fuzz/$target.dict")
  QT_QPA_PLATFORM=offscreen "$build/fuzz/$target" -max_total_time="$seconds" -max_len=1048576 \
    -rss_limit_mb=2048 -timeout=10 -print_final_stats=1 "${dict[@]}" "$corpus"
done
