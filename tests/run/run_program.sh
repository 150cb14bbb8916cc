#!/bin/sh
# run_program.sh PROGRAM FOLDER [ARGUMENTS]: runs a Windows program under Wine, without a screen, in an
# empty FOLDER.
. "$(dirname "$0")/../support/wine.sh"
wine_up null || exit 1
rm -rf "$2"
mkdir -p "$2"
cd "$2" || exit 1
program=$1
shift 2
wine_run "$program" "$@"
