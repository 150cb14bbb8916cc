#!/bin/sh
# wine_run.sh PROGRAM ARGUMENTS...: runs a Windows program in the prefix of the test run, without a screen.
. "$(dirname "$0")/../support/wine.sh"
wine_up null || exit 1
wine_run "$@"
