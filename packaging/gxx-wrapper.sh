#!/bin/sh
# An installation on Linux has this file as tools/bin/g++.exe: the MinGW cross compiler, with what a
# program needs to run on a machine that has nothing but Windows. Without -static it would ask for
# libstdc++-6.dll and two more; -s keeps the symbols out (a quarter of the size) unless -g asks for them.
set -eu

for compiler in x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++ ""; do
    if [ -n "$compiler" ] && command -v "$compiler" > /dev/null; then break; fi
done
if [ -z "$compiler" ]; then
    echo "g++.exe: the MinGW cross compiler x86_64-w64-mingw32-g++-posix is missing; on Debian and Ubuntu it comes with the package g++-mingw-w64-x86-64-posix." >&2
    exit 1
fi

strip=-s
for argument in "$@"; do
    case "$argument" in
        -g | -g[0-9] | -ggdb*) strip= ;;
    esac
done
exec "$compiler" "$@" -static ${strip:+"$strip"}
