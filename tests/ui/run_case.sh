#!/usr/bin/env bash
# run_case.sh CASE STAGE UI_DRIVER WORK
#
# Compiles CASE/app.vorla with the compiler of the installation tree STAGE, starts the program under
# Wine without a screen, works it by the commands in CASE/steps and compares what ui_driver prints
# with CASE/expected. CASE/options may hold a line of compiler options. WORK is emptied first.
set -euo pipefail

case_folder=$1 stage=$2 ui_driver=$3 work=$4
. "$(dirname "$0")/../support/wine.sh"

rm -rf "$work"
mkdir -p "$work"
cp "$case_folder/app.vorla" "$work/"
options=()
if [ -f "$case_folder/options" ]; then read -ra options < "$case_folder/options"; fi
if ! "$stage/orvanec" "$work/app.vorla" "${options[@]}" > "$work/compile.log" 2>&1; then
    cat "$work/compile.log"
    exit 1
fi

wine_up null
status=0
wine_run "$ui_driver" "$(wine_path "$work/app.exe")" < "$case_folder/steps" \
    | tr -d '\r' > "$work/actual" || status=$?
diff -u --label expected --label actual "$case_folder/expected" "$work/actual" || status=1
exit "$status"
