#!/usr/bin/env bash
# Installs a built tree into an empty directory: install.sh CMAKE BUILD_DIRECTORY PREFIX
set -euo pipefail
cmake=$1 build=$2 prefix=$3

rm -rf "$prefix"
"$cmake" --install "$build" --prefix "$prefix" > "$build/install.log"

# Nothing that was installed may lead back to where it was built.
source=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$build/CMakeCache.txt")
if grep -rIlF -e "$source" "$prefix"; then
    echo "the files above name the source directory" >&2
    exit 1
fi
find "$prefix" -type f -o -type l | sort
