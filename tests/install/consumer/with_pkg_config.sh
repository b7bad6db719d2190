#!/usr/bin/env bash
# Builds and runs the consumer with what pkg-config tells:
#   with_pkg_config.sh COMPILER LIBRARY_DIRECTORY BUILD_DIRECTORY
set -euo pipefail
compiler=$1 libraries=$2 build=$3
here=$(cd "$(dirname "$0")" && pwd)
export PKG_CONFIG_LIBDIR=$libraries/pkgconfig

rm -rf "$build"
mkdir -p "$build"
read -ra flags <<< "$(pkg-config --cflags --libs TibXml)"
"$compiler" -std=c++20 -Wall -Wextra -Wpedantic -Werror "$here/main.cpp" -o "$build/consumer" \
    "${flags[@]}"
LD_LIBRARY_PATH=$libraries "$build/consumer"
