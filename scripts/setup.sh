#!/usr/bin/env bash
# Installs every Debian package the project builds, tests and fuzzes with.
# Safe to run again: packages already present are left alone.
set -euo pipefail

packages=(
  g++ cmake ninja-build pkg-config
  qt6-base-dev qt6-serialport-dev qt6-svg-dev libgl-dev
  libzip-dev libpugixml-dev libxlsxwriter-dev libfmt-dev
  libgtest-dev libgmock-dev googletest libbenchmark-dev
  clang-14 libclang-rt-14-dev
  fonts-liberation
)

missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done

if [ ${#missing[@]} -gt 0 ]; then
  sudo=""
  [ "$(id -u)" -ne 0 ] && sudo="sudo"
  export DEBIAN_FRONTEND=noninteractive
  $sudo apt-get update -qq
  $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
