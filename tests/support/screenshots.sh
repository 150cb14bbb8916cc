#!/usr/bin/env bash
# Pictures of all example programs, in build/screenshots.
set -euo pipefail
cd "$(dirname "$0")/../.."

folder=$PWD/build/screenshots
export ORVANE_TEST_PREFIX=$PWD/build/wineprefix
. tests/support/wine.sh
. tests/support/product.sh

build_product
rm -rf "$folder"
xvfb_up
trap xvfb_down EXIT
wine_up x11
for example in examples/*.vorla; do
    name=$(basename "$example" .vorla)
    compile_copy "$example" "$folder"
    picture "$folder/$name.exe" "$(title_of "$example")" "$folder/$name.png"
    echo "build/screenshots/$name.png"
done
wine_down
