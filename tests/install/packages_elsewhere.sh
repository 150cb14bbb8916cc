#!/usr/bin/env bash
# The archives depend on the sources alone: a copy of them in a folder of another name and length gives
# the same bytes, compiled anew. Needs the packages.
set -euo pipefail
cd "$(dirname "$0")/../.."

parent=$(mktemp -d)
trap 'rm -rf "$parent"' EXIT
copy="$parent/a copy with a longer name than the sources have"
mkdir "$copy"
git ls-files -z | tar -c --null -T - | tar -x -C "$copy"
toolchain=${ORVANE_WINDOWS_TOOLCHAIN:-build/windows-toolchain/toolchain.tar.xz}
CCACHE_DISABLE=1 ORVANE_WINDOWS_TOOLCHAIN=$(realpath "$toolchain") "$copy/packaging/make-packages.sh"

status=0
for archive in build/packages/orvane-*-x64.*; do
    if cmp "$archive" "$copy/$archive"; then
        echo "the same: $(basename "$archive")"
    else
        status=1
    fi
done
exit "$status"
