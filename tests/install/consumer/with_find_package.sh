#!/usr/bin/env bash
# Configures, builds and runs the consumer project, which finds the library by find_package:
#   with_find_package.sh CMAKE COMPILER PREFIX BUILD_DIRECTORY
set -euo pipefail
cmake=$1 compiler=$2 prefix=$3 build=$4
here=$(cd "$(dirname "$0")" && pwd)

rm -rf "$build"
"$cmake" -S "$here" -B "$build" -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
    -DCMAKE_CXX_FLAGS="-Wall -Wextra -Wpedantic -Werror" -DCMAKE_FIND_USE_PACKAGE_REGISTRY=OFF
"$cmake" --build "$build" --verbose

found=$(sed -n 's/^TibXml_DIR:PATH=//p' "$build/CMakeCache.txt")
[[ $found == "$prefix"/* ]] || { echo "found another installation: $found" >&2; exit 1; }
"$build/consumer"
