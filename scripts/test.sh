#!/usr/bin/env bash
# Installs what is missing, then builds and runs every test on Qt 6 and on Qt 5.15.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"

jobs=$(nproc)
status=0
for major in 6 5; do
  build="$root/build/qt$major"
  args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
  if [ "$major" = 5 ]; then
    args+=(-DQT_DIR=/usr/lib/x86_64-linux-gnu/cmake/Qt5)
  fi
  echo "== Qt $major: configure and build"
  cmake -S "$root" -B "$build" "${args[@]}" >/dev/null
  cmake --build "$build" -j"$jobs" >"$build/build.log" 2>&1 || { tail -50 "$build/build.log"; exit 1; }
  echo "== Qt $major: tests"
  (cd "$build" && QT_QPA_PLATFORM=offscreen ctest --output-on-failure -j"$jobs") || status=1
done
exit $status
