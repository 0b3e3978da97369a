#!/usr/bin/env bash
# Installs Orvane into a scratch prefix and builds the consumer project against it twice: with
# find_package(Orvane) and with pkg-config. Then checks the installed tool and samples. Usage:
#   run_consumer.sh <cmake> <build dir> <C++ compiler> <consumer dir> <library dir name> [extra flags]
set -euo pipefail
cmake_tool=$1 build=$2 cxx=$3 source=$4 libdir=$5
extra_flags=${6:-}

scratch=$(mktemp -d)
trap 'rm -rf "$scratch"' EXIT
prefix=$scratch/prefix
"$cmake_tool" --install "$build" --prefix "$prefix" >/dev/null

echo "== find_package(Orvane)"
"$cmake_tool" -S "$source" -B "$scratch/build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$cxx" \
              -DCMAKE_CXX_FLAGS="$extra_flags" -DCMAKE_EXE_LINKER_FLAGS="$extra_flags" \
              -DCMAKE_BUILD_RPATH="$prefix/$libdir" >/dev/null
"$cmake_tool" --build "$scratch/build" >/dev/null
mkdir "$scratch/files-cmake"
"$scratch/build/consumer" "$scratch/files-cmake"

echo "== pkg-config orvane"
export PKG_CONFIG_PATH=$prefix/$libdir/pkgconfig
# shellcheck disable=SC2046,SC2086
"$cxx" -std=c++17 $extra_flags "$source/consumer.cpp" -o "$scratch/consumer-pc" \
       $(pkg-config --cflags --libs orvane) -Wl,-rpath,"$(pkg-config --variable=libdir orvane)"
mkdir "$scratch/files-pc"
"$scratch/consumer-pc" "$scratch/files-pc"
[[ $(pkg-config --modversion orvane) == "$(sed -n 's/^Version: //p' "$prefix/$libdir/pkgconfig/orvane.pc")" ]]
# Canonical paths, which pkg-config can recognise as system folders: no "..", no pcfiledir.
[[ $(pkg-config --cflags orvane | xargs) == "-I$prefix/include" ]]
[[ $(pkg-config --libs orvane | xargs) == "-L$prefix/$libdir -lorvane" ]]

echo "== installed tool and samples"
test -x "$prefix/bin/orvane"
test -f "$prefix/share/orvane/samples/ifc4/README.md"
"$prefix/bin/orvane" psets list "$prefix/share/orvane/samples/ifc4/ifc4-psets.xml" --format csv >"$scratch/list.csv"
grep -q '^Pset_WallCommon,Status,Enumerated,,,PEnum_ElementStatus$' "$scratch/list.csv"
echo "installed Orvane works for hosts"
