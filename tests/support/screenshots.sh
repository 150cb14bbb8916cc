#!/usr/bin/env bash
# Pictures of all example programs, in docs/images.
set -euo pipefail
cd "$(dirname "$0")/../.."

folder=$PWD/build/screenshots
export ORVANE_TEST_PREFIX=$PWD/build/wineprefix
. tests/support/wine.sh
. tests/support/product.sh
. tests/support/gallery.sh

build_product
rm -rf "$folder"
mkdir -p "$folder" docs/images
xvfb_up
trap xvfb_down EXIT
wine_up x11
take_pictures "$folder"
wine_down
cp "$folder"/*.png docs/images/
ls -s --block-size=1 docs/images/*.png
