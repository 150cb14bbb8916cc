#!/usr/bin/env bash
# demo.sh [EXAMPLE.vorla]: from the sources to a running Windows program. Builds the compiler, makes
# an installation tree, compiles an example, starts it under Wine without a screen and, where there is
# an X server to start, leaves a picture of its window. All results lie below build/.
set -euo pipefail
cd "$(dirname "$0")/../.."

example=${1:-examples/calculator.vorla}
name=$(basename "$example" .vorla)
folder=$PWD/build/demo
export ORVANE_TEST_PREFIX=$PWD/build/wineprefix
. tests/support/wine.sh
. tests/support/product.sh

echo "1. Building the compiler"
build_product
echo "   installed in build/stage"

echo "2. Compiling $example"
rm -rf "$folder"
compile_copy "$example" "$folder"
echo "   build/demo/$name.exe ($(stat -c %s "$folder/$name.exe") bytes; log: build/demo/$name.log)"

title=$(title_of "$example")
echo "3. Starting it under Wine"
wine_up null
printf 'window %s\ncontrols\nclose\nexit\n' "$title" | drive "$folder/$name.exe" | sed 's/^/   /'
wine_down

if ! command -v Xvfb > /dev/null || ! command -v import > /dev/null; then
    echo "4. No picture: Xvfb or ImageMagick is not installed"
    exit 0
fi
echo "4. Taking a picture of its window"
xvfb_up
trap xvfb_down EXIT
wine_up x11
echo "window $title" | picture "$folder/$name.exe" "$folder/$name.png"
wine_down
echo "   build/demo/$name.png"
