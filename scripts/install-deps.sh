#!/usr/bin/env bash
# Installs the Debian packages that building, testing, the demo and the benchmarks need.
# Idempotent: packages already present are left alone, and apt is not touched at all
# when nothing is missing.
set -euo pipefail

PACKAGES=(
  build-essential cmake pkg-config
  qt6-base-dev qt6-serialport-dev libqt6serialport6 zlib1g-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  xvfb xauth xclip xdotool socat poppler-utils icewm
  fonts-liberation2 gnuplot-nox python3-matplotlib imagemagick hyperfine gcovr
  enscript ghostscript
  clang libfuzzer-14-dev
)

missing=()
for p in "${PACKAGES[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed"; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -eq 0 ]; then
  echo "install-deps: everything is installed"
  exit 0
fi

SUDO=""
if [ "$(id -u)" -ne 0 ]; then SUDO="sudo"; fi
echo "install-deps: installing ${missing[*]}"
$SUDO apt-get update -qq
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
