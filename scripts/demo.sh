#!/usr/bin/env bash
# Installs what is missing, builds the panel application and runs the operator screen on the simulated
# controller. Without a display it renders the panel to build/demo.png instead. One line per step;
# the build log is kept in build/qt6/demo-build.log and shown only when the build fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
echo "demo: checking the packages it needs"
"$root/scripts/setup.sh"
build="$root/build/qt6"
mkdir -p "$build"
echo "demo: configuring $build"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >"$build/demo-configure.log" 2>&1 \
  || { tail -30 "$build/demo-configure.log"; exit 1; }
echo "demo: building hmi-panel"
cmake --build "$build" --target hmi-panel -j"$(nproc)" >"$build/demo-build.log" 2>&1 \
  || { tail -50 "$build/demo-build.log"; exit 1; }
if [ -z "${XDG_RUNTIME_DIR:-}" ]; then
  export XDG_RUNTIME_DIR="$build/xdg-runtime"
  mkdir -p "$XDG_RUNTIME_DIR"
  chmod 700 "$XDG_RUNTIME_DIR"
fi
panel="$build/examples/hmi-panel/hmi-panel"
form="${1:-$root/examples/forms/operator.ui}"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  echo "demo: running $form"
  exec "$panel" "$form"
fi
echo "demo: no display; rendering $form"
exec "$panel" "$form" --screenshot "$root/build/demo.png"
