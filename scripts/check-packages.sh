#!/usr/bin/env bash
# Checks the three Debian packages `make package` builds: lintian finds no error, each package
# holds what it should and nothing of another, and the metadata ties them together (shlibs,
# ldconfig trigger, exact-version dependencies). Usage: check-packages.sh <package build dir>
set -euo pipefail
dir=$1
arch=$(dpkg --print-architecture)
triplet=$(dpkg-architecture -qDEB_HOST_MULTIARCH)
version=$(sed -n '1s/^orvane (\(.*\)).*/\1/p' "$(dirname "$0")/../packaging/changelog")
fail() { echo "package check: $*" >&2; exit 1; }

deb() { echo "$dir/$1_${version}_${arch}.deb"; }
for p in liborvane0 liborvane-dev orvane; do [[ -f $(deb $p) ]] || fail "$(deb $p) was not built"; done

paths() { dpkg-deb -c "$(deb "$1")" | awk '{print $6}'; }
# contents PACKAGE PATH...: each path is in the package.
contents() {
  local p=$1; shift
  local listing; listing=$(paths "$p")
  for path in "$@"; do grep -qx "./$path" <<<"$listing" || fail "$p lacks $path"; done
}
# field PACKAGE FIELD PATTERN: the control field matches the extended regular expression.
field() {
  local value; value=$(dpkg-deb -f "$(deb "$1")" "$2")
  grep -Eq "$3" <<<"$value" || fail "$1: $2 is \"$value\", expected /$3/"
}

lib=usr/lib/$triplet
contents liborvane0 "$lib/liborvane.so.0" "$lib/liborvane.so.0.1.0" usr/share/doc/liborvane0/copyright \
         usr/share/doc/liborvane0/changelog.Debian.gz
contents liborvane-dev "$lib/liborvane.so" usr/include/orvane/orvane.h "$lib/pkgconfig/orvane.pc" \
         "$lib/cmake/Orvane/OrvaneConfig.cmake" "$lib/cmake/Orvane/OrvaneTargets.cmake" \
         usr/share/doc/liborvane-dev/copyright
contents orvane usr/bin/orvane usr/share/man/man1/orvane.1.gz usr/share/orvane/samples/ifc4/ifc4-psets.xml \
         usr/share/orvane/samples/mensajes.txt usr/share/doc/orvane/copyright
# The library only in liborvane0, the link only in -dev, no source file or build path anywhere.
[[ $(paths liborvane-dev) == *liborvane.so.0* ]] && fail "liborvane-dev holds the library itself"
[[ $(paths orvane) == */samples/host* ]] && fail "orvane ships the sample host's sources"

field liborvane0 Section '^libs$'
field liborvane-dev Depends "^liborvane0 \(= $version\)$"
field orvane Depends "liborvane0 \(= $version\)"
field orvane Depends 'libtinyxml2'
scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
dpkg-deb -e "$(deb liborvane0)" "$scratch/control"
grep -qx "liborvane 0 liborvane0 (>= $version)" "$scratch/control/shlibs" || fail "liborvane0 has no shlibs entry"
grep -qx 'activate-noawait ldconfig' "$scratch/control/triggers" || fail "liborvane0 lacks the ldconfig trigger"
dpkg-deb -x "$(deb liborvane0)" "$scratch/root"
strings "$scratch/root/$lib/liborvane.so.0.1.0" | grep -q "$(cd "$(dirname "$0")/.." && pwd)" &&
  fail "liborvane.so holds the source folder's path"
dpkg-deb -x "$(deb liborvane-dev)" "$scratch/root"
grep -qx 'prefix=/usr' "$scratch/root/$lib/pkgconfig/orvane.pc" || fail "orvane.pc has another prefix than /usr"

echo "== lintian"
command -v lintian >/dev/null || fail "lintian is not installed (scripts/install-deps.sh installs it)"
# Errors fail the check; the warnings left are explained in docs/packaging.md.
lintian --fail-on error "$(deb liborvane0)" "$(deb liborvane-dev)" "$(deb orvane)"
echo "packages $version: contents, metadata and lintian are right"
