#!/usr/bin/env bash
# Installs the Debian 12 packages needed to build, test and run HmiWidgets on Qt 6 and Qt 5.15, and
# clang with its sanitizer and fuzzer runtimes for the sanitizer pass and the fuzz targets.
set -euo pipefail

packages=(
  build-essential cmake pkg-config git zlib1g-dev
  qt6-base-dev qt6-base-dev-tools qt6-tools-dev qt6-tools-dev-tools designer-qt6
  libqt6opengl6-dev qt6-tools-private-dev qt6-base-private-dev
  qtbase5-dev qttools5-dev qttools5-dev-tools qttools5-private-dev qtbase5-private-dev libqt5designercomponents5
  xvfb xauth clang libclang-rt-14-dev fonts-dejavu-core
  libmodbus-dev python3-pymodbus python3-serial python3-serial-asyncio socat
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  SUDO=""
  if [ "$(id -u)" != 0 ]; then SUDO="sudo"; fi
  export DEBIAN_FRONTEND=noninteractive
  log=$(mktemp)
  { $SUDO apt-get update -qq && $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"; } >"$log" 2>&1 \
    || { tail -30 "$log"; rm -f "$log"; exit 1; }
  rm -f "$log"
fi
