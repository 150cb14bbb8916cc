#!/usr/bin/env bash
# check_gallery.sh STAGE UI_DRIVER WORK
#
# Compiles all examples with the compiler of the installation tree STAGE, works them by the commands in
# gallery/ and compares what the screen shows with the pictures in docs/images. Fails when an example
# does not compile, does not start, does not do what its commands expect, has no picture or looks
# entirely different from it.
#
# The limit of 0.14: the same program in another font comes to 0.10 at most; a program with its controls
# missing to 0.18 at least, and any two different examples to 0.21.
set -euo pipefail

work=$3
limit=0.14
cd "$(dirname "$0")/../.."
. tests/support/wine.sh
. tests/support/product.sh
. tests/support/gallery.sh
stage=$1 ui_driver=$2

rm -rf "$work"
mkdir -p "$work"
xvfb_up
trap 'wine_down; xvfb_down' EXIT
wine_up x11
take_pictures "$work"

status=0
for example in examples/*.vorla; do
    name=$(basename "$example" .vorla)
    if [ ! -f "docs/images/$name.png" ]; then
        echo "docs/images/$name.png is missing: make screenshots"
        status=1
        continue
    fi
    value=$(difference "docs/images/$name.png" "$work/$name.png" "$work")
    echo "$name: $value"
    if ! awk -v value="$value" -v limit="$limit" 'BEGIN { exit !(value ~ /^[0-9]/ && value + 0 < limit) }'; then
        echo "$name looks different: compare docs/images/$name.png with $work/$name.png"
        status=1
    fi
    if ! grep -q "images/$name.png" docs/gallery.md; then
        echo "docs/gallery.md does not show $name"
        status=1
    fi
done
exit "$status"
