#!/bin/sh
# wine_run.sh PROGRAM ARGUMENTS...: runs a Windows program in the prefix that the test run has made.
. "$(dirname "$0")/../support/wine.sh"
wine_find
wine_environment null
wine_run "$@"
