#!/usr/bin/env bash
# The window tests with programs that the Windows archive builds: its orvanec.exe and its own g++,
# under Wine. Needs a development build and the packages.
set -euo pipefail
cd "$(dirname "$0")/../.."

folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
python3 -m zipfile -e build/packages/orvane-*-windows-x64.zip "$folder"
ORVANE_UI_COMPILER=$(echo "$folder"/orvane-*/orvanec.exe) ORVANE_TEST_TIMEOUT=120 \
    ctest --preset dev -L '^ui$' --no-tests=error --output-on-failure < /dev/null
