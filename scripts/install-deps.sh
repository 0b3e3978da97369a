#!/usr/bin/env bash
# Installs the Debian packages the project builds and tests with, and nothing when all are there.
# Runs apt-get as root directly, through sudo otherwise.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config binutils dpkg-dev locales
  libtinyxml2-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  libcli11-dev nlohmann-json3-dev
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev
  lintian
)

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ $status == "install ok installed" ]] || missing+=("$p")
done
[[ ${#missing[@]} -eq 0 ]] && exit 0

echo "Installing: ${missing[*]}"
as_root=()
[[ $(id -u) -eq 0 ]] || as_root=(sudo)
export DEBIAN_FRONTEND=noninteractive
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
