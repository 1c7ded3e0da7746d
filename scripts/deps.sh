#!/usr/bin/env bash
# Installs what building, testing and the demo need, from the distribution's packages.
# Only runs apt-get when something is missing.
set -euo pipefail
packages=(cmake g++ make pkg-config libgtest-dev libbenchmark-dev libopencv-dev libstb-dev
          libpugixml-dev opencv-data opencv-doc binutils)
missing=()
for p in "${packages[@]}"; do
  dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ ${#missing[@]} -gt 0 ]; then
  echo "installing: ${missing[*]}"
  SUDO=""
  [ "$(id -u)" -eq 0 ] || SUDO=sudo
  $SUDO apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
