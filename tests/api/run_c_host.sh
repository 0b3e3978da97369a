#!/usr/bin/env bash
# Installs the library into a scratch prefix, builds the C host against the installed header and
# library only, and runs it. The header must also pass a C11 compiler (where its checks become
# _Static_assert). Usage:
#   run_c_host.sh <cmake> <build dir> <C compiler> <c_host.c> <library dir name> [extra C flags...]
set -euo pipefail
cmake_tool=$1 build=$2 cc=$3 source=$4 libdir=$5
shift 5
extra_flags=("$@")

prefix=$(mktemp -d)
trap 'rm -rf "$prefix"' EXIT

"$cmake_tool" --install "$build" --prefix "$prefix" >/dev/null
strict=(-Wall -Wextra -pedantic -Werror -I"$prefix/include")
"$cc" -std=c11 "${strict[@]}" -fsyntax-only -x c - <<<'#include <orvane/orvane.h>'
"$cc" -std=c99 "${strict[@]}" "${extra_flags[@]}" "$source" -o "$prefix/c_host" \
      -L"$prefix/$libdir" -lorvane -Wl,-rpath,"$prefix/$libdir"
mkdir "$prefix/files"
"$prefix/c_host" "$prefix/files" "$prefix/share/orvane/samples/proyecto-psets.xml"
