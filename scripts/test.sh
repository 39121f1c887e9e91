#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test: on Qt 6, on Qt 5.15, and on Qt 6 built
# with clang's AddressSanitizer and UndefinedBehaviorSanitizer (leak detection on, halting on the first
# undefined behaviour). Prints how long each pass took.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"

jobs=$(nproc)
status=0
summary=()

# pass NAME BUILD-DIR [cmake args...]: configure, build, run ctest; env for ctest comes from the caller.
pass() {
  local name=$1 build=$2
  shift 2
  local start=$SECONDS
  echo "== $name: configure and build"
  mkdir -p "$build"
  cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo "$@" >"$build/configure.log" 2>&1 \
    || { tail -30 "$build/configure.log"; exit 1; }
  cmake --build "$build" -j"$jobs" >"$build/build.log" 2>&1 || { tail -50 "$build/build.log"; exit 1; }
  echo "== $name: tests"
  local result=passed
  (cd "$build" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$jobs") || { result=FAILED; status=1; }
  summary+=("$name: $result in $((SECONDS - start)) s")
  echo "== $name: $result in $((SECONDS - start)) s"
}

pass "Qt 6" "$root/build/qt6"
pass "Qt 5" "$root/build/qt5" -DQT_DIR=/usr/lib/x86_64-linux-gnu/cmake/Qt5

# Designer's own leaks are suppressed (see the file); full stacks so the suppressions can match.
export ASAN_OPTIONS="detect_leaks=1:fast_unwind_on_malloc=0:malloc_context_size=30:strict_string_checks=1:detect_stack_use_after_return=1"
export LSAN_OPTIONS="suppressions=$root/tests/sanitizer/lsan.supp:print_suppressions=0"
export UBSAN_OPTIONS="halt_on_error=1:print_stacktrace=1"
CC=clang CXX=clang++ pass "Qt 6 with ASan and UBSan" "$root/build/asan" -DHMI_SANITIZE=ON -DHMI_BUILD_BENCH=OFF

printf '%s\n' "${summary[@]}"
exit $status
