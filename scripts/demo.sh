#!/usr/bin/env bash
# Installs what is missing, builds the panel application and runs the sample form on the simulated
# controller. Without a display it renders the panel to build/demo.png instead.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/setup.sh"
build="$root/build/qt6"
cmake -S "$root" -B "$build" -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build "$build" --target hmi-panel -j"$(nproc)"
panel="$build/examples/hmi-panel/hmi-panel"
form="${1:-$root/examples/forms/demo.ui}"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
  exec "$panel" "$form"
fi
exec "$panel" "$form" --screenshot "$root/build/demo.png"
