#!/usr/bin/env bash
# Installs the Debian packages the project builds and tests with, and nothing when all are there,
# then the npm test tools of tests/exports when they are missing or out of date.
# Runs apt-get as root directly, through sudo otherwise.
set -euo pipefail

packages=(
  cmake ninja-build g++ pkg-config binutils dpkg-dev locales
  libtinyxml2-dev
  libgtest-dev libgmock-dev libbenchmark-dev valgrind gcovr
  clang libclang-rt-14-dev
  libcli11-dev nlohmann-json3-dev
  qt6-base-dev qt6-base-dev-tools qt6-qpa-plugins libgl-dev qt6-translations-l10n
  python3-xmlschema lintian
)
# The export tests read IFC files with web-ifc under Node.js. A machine that already has node and
# npm (Debian's or another vendor's package) keeps them; Debian's are installed otherwise.
command -v node >/dev/null && command -v npm >/dev/null || packages+=(nodejs npm)

# web-ifc, pinned by tests/exports/package-lock.json, once the packages are there.
install_test_tools() {
  local dir
  dir="$(dirname "${BASH_SOURCE[0]}")/../tests/exports"
  [[ -f $dir/node_modules/.package-lock.json && ! $dir/package-lock.json -nt $dir/node_modules/.package-lock.json ]] && return 0
  echo "Installing the export tests' tools (npm ci in tests/exports)"
  (cd "$dir" && npm ci --no-audit --no-fund --loglevel=error)
}

missing=()
for p in "${packages[@]}"; do
  status=$(dpkg-query -W -f='${Status}' "$p" 2>/dev/null || true)
  [[ $status == "install ok installed" ]] || missing+=("$p")
done
if [[ ${#missing[@]} -gt 0 ]]; then
  echo "Installing: ${missing[*]}"
  as_root=()
  [[ $(id -u) -eq 0 ]] || as_root=(sudo)
  export DEBIAN_FRONTEND=noninteractive
  "${as_root[@]}" apt-get update -qq
  "${as_root[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
install_test_tools
