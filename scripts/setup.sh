#!/usr/bin/env bash
# Installs the Debian packages the project needs (only the missing ones), then configures and
# builds. Usage: scripts/setup.sh [BUILD_DIR] [extra cmake arguments...]
set -euo pipefail
top=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$top/build}
shift || true

packages=(
  cmake ninja-build g++ clang pkg-config
  libgtest-dev libgmock-dev libbenchmark-dev
  libcli11-dev libboost-dev
  libgeos-dev libdxflib-dev python3-ezdxf
  libfreetype-dev libfontconfig-dev fonts-dejavu-core libcairo2-dev
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  sudo=""
  [ "$(id -u)" -eq 0 ] || sudo="sudo"
  echo "Installing: ${missing[*]}"
  $sudo apt-get update -qq
  DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# CI treats warnings as errors.
werror=()
[ "${CI:-}" = "true" ] && werror=(-DTDUTILW_WERROR=ON)
cmake -S "$top" -B "$build" -G Ninja "${werror[@]}" "$@" >/dev/null
cmake --build "$build"
