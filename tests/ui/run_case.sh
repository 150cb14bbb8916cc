#!/usr/bin/env bash
# run_case.sh CASE STAGE UI_DRIVER WORK [screen]
#
# Compiles CASE/app.vorla with the compiler of the installation tree STAGE, starts the program under
# Wine without a screen (or, with the last argument, on a screen of its own), works it by the commands
# in CASE/steps and compares what ui_driver prints with CASE/expected. CASE/options may hold a line of
# compiler options. WORK is emptied first; it is the working directory of the compiler and of the program.
#
# ORVANE_UI_COMPILER=/path/to/orvanec puts another compiler in the place of STAGE's: a Linux program,
# or an .exe, which runs under Wine.
set -euo pipefail

case_folder=$1 stage=$2 ui_driver=$3 work=$4
here=$(cd "$(dirname "$0")" && pwd)
. "$here/../support/wine.sh"

rm -rf "$work"
mkdir -p "$work"
cp -r "$case_folder/." "$here/probe.orlib" "$work/"
options=()
if [ -f "$case_folder/options" ]; then read -ra options < "$case_folder/options"; fi

. "$here/compile.sh"
# Side by side the programs of a prefix would take the focus from each other, hence --alone; what is to
# be seen on the screen cannot stand on such a desktop.
alone=--alone display=null
if [ "${5:-}" = screen ]; then
    alone='' display=x11
    xvfb_up
    trap 'wine_down; xvfb_down' EXIT
fi
wine_up "$display"
cd "$work"
if ! compile "$stage" "$work/app.vorla" "${options[@]}" > compile.log 2>&1 || [ ! -f app.exe ]; then
    cat compile.log
    exit 1
fi

status=0
wine_run "$ui_driver" ${alone:+"$alone"} "$(wine_path "$work/app.exe")" \
    < "$case_folder/steps" > output 2> errors || status=$?
tr -d '\r' < output > actual
tr -d '\r' < errors >&2
diff -u --label expected --label actual "$case_folder/expected" actual || status=1
exit "$status"
