#!/usr/bin/env bash
# make-packages.sh: both archives and their checksums, in build/packages.
#
# The Windows archive carries the C++ compiler that ORVANE_WINDOWS_TOOLCHAIN names, a folder or an
# archive; without it, the one that windows-toolchain/build.sh makes.
set -euo pipefail
cd "$(dirname "$0")/.."

folder=$PWD/build/packages
toolchain=${ORVANE_WINDOWS_TOOLCHAIN:-}
built_toolchain=$PWD/build/windows-toolchain/toolchain.tar.xz

if [ -z "$toolchain" ]; then
    if [ ! -f "$built_toolchain" ]; then
        echo "Building the C++ compiler for Windows first (a quarter of an hour)"
        packaging/windows-toolchain/build.sh
    fi
    toolchain=$built_toolchain
fi
toolchain=$(realpath "$toolchain")

package() { # package SYSTEM [CMAKE OPTIONS]
    local build=build/package-$1 log=build/package-$1/package.log
    mkdir -p "$build"
    if ! { cmake --preset "package-$1" "${@:2}" &&
        cmake --build --preset "package-$1" ${JOBS:+-j"$JOBS"} &&
        (cd "$build" && cpack); } > "$log" 2>&1; then
        tail -n 30 "$log" >&2
        return 1
    fi
    find "$build/packages" -maxdepth 1 -name 'orvane-*-x64.*' ! -name '*.json' -exec cp {} "$folder/" \;
}

rm -rf "$folder" build/package-*/packages
mkdir -p "$folder"
package linux
package windows -DORVANE_WINDOWS_TOOLCHAIN="$toolchain"
(cd "$folder" && sha256sum -c --quiet ./*.sha256)
cd "$folder"
ls -l ./*.zip ./*.tar.gz | awk '{ printf "build/packages/%s %d bytes\n", substr($NF, 3), $5 }'
