#!/bin/sh
# An installation on Linux has this file as tools/bin/g++.exe: the MinGW cross compiler, with what a
# program needs to run on a machine that has nothing but Windows.
#
#   * -static: without it a program asks for libstdc++-6.dll and two more.
#   * -s, unless -g is given: a quarter of the size.
#   * For the command with which orvanec builds a program: the precompiled header of the includes that
#     all programs share, the compiled functions of their type of values, and an executable that comes
#     into its place only when it is complete.
#
#   g++.exe --orvane-make-pch     makes that header now and says so when it cannot
#
# The header lies in tools/fast or, where that cannot be written, in the user's cache, and the functions
# beside it. They are made by the first build and made anew when the compiler or one of the headers in
# them changes. Nothing ever depends on them: without them, and whenever a compile with them fails, the
# plain command runs. Programs with debug information have a header of their own in a folder "symbols"
# there, made by the first of them; they compile all functions themselves, so that one can step into
# them.
set -u

# A native toolchain's settings would lead the cross compiler astray.
unset CPATH C_INCLUDE_PATH CPLUS_INCLUDE_PATH LIBRARY_PATH GCC_EXEC_PREFIX COMPILER_PATH \
    DEPENDENCIES_OUTPUT SUNPRO_DEPENDENCIES

directory=${0%/*}
tools=${directory%/*}

say() {
    printf 'g++.exe: %s\n' "$1" >&2
}

find_compiler() { # sets compiler
    for compiler in x86_64-w64-mingw32-g++-posix x86_64-w64-mingw32-g++; do
        compiler=$(command -v "$compiler") && return
    done
    say "the MinGW cross compiler x86_64-w64-mingw32-g++-posix is missing; on Debian and Ubuntu it comes with the package g++-mingw-w64-x86-64-posix."
    exit 1
}

find_symbols() { # sets symbols from the arguments, and strip to the contrary
    strip=-s symbols=
    for argument in "$@"; do
        case "$argument" in
            -g | -g[0-9] | -ggdb*) strip='' symbols=-g ;;
        esac
    done
}

# Whether the arguments are orvanec's command for a program, with this installation's headers and
# nothing else in it. Sets output.
is_program_build() {
    output="" own_headers=no source=no
    while [ $# -gt 0 ]; do
        case "$1" in
            -std=c++17 | -Og | -g | -finput-charset=UTF-8 | -mwindows | -l*) ;;
            "-I$tools/include") own_headers=yes ;;
            "-I$tools/orlib" | "-I$tools/parameter") ;;
            -o)
                [ $# -gt 1 ] || return 1
                output=$2
                shift
                ;;
            -*) return 1 ;;
            */main.cpp) source=yes ;;
            *.o) ;;
            *) return 1 ;;
        esac
        shift
    done
    case "$output" in
        */*) ;;
        *) return 1 ;;
    esac
    [ "$own_headers$source" = yesyes ] && { [ -f "$output" ] || [ ! -e "$output" ]; }
}

# The precompiled header. A folder of it holds
#   includes.h       the text, used when the compiler does not take the next, and what it includes
#   includes.h.gch   the header itself
#   runtime.o        the functions that programs do not compile themselves, from tools/fast/runtime.cpp
#   names            the files that went in and the compiler proper, each with a zero byte behind it
#   made             state() of the moment when the header was complete

# Every build asks: as few programs as possible do the work.
state() { # state FOLDER: name, size and time of all that the header in FOLDER is made of, and its own
    names=$1/names
    set -- "$0" "$compiler" "$tools/fast/includes.h" "$1/includes.h.gch"
    if [ -z "$symbols" ]; then
        for file in runtime.cpp runtime.options memory.h texts.h entries.h lists.h value.h; do
            set -- "$@" "$tools/fast/$file"
        done
        set -- "$@" "${names%/*}/runtime.o"
    fi
    for folder in include orlib parameter; do
        if [ -d "$tools/$folder" ]; then set -- "$@" "$tools/$folder"; fi
    done
    xargs -0 stat -L -c '%n %s %Y' "$@" < "$names" 2> /dev/null
}

is_usable() { # is_usable FOLDER
    [ -f "$1/made" ] && [ -f "$1/includes.h.gch" ] && [ -f "$1/names" ] &&
        state "$1" | cmp -s - "$1/made"
}

# With -g it would serve programs without debug information, too, but where a function has options of
# its own, as in the type of values, the compiler then follows all variables in vain: a tenth of a
# second for each build.
precompile() { # precompile FOLDER
    values=
    if [ -z "$symbols" ]; then values=-DORVANE_VALUE_COMPILED; fi
    "$compiler" -std=c++17 -Og "${symbols:--g0}" ${values:+"$values"} -finput-charset=UTF-8 \
        -mwindows -I"$tools/include" -I"$tools/orlib" -I"$tools/parameter" \
        -H -x c++-header "$1/includes.h" -o "$1/new.gch" 2> "$1/new.log" || return 1
    if [ -z "$symbols" ]; then compile_runtime "$1" || return 1; fi
    {
        "$compiler" -print-prog-name=cc1plus
        sed -n 's/^\.\.* //p' "$1/new.log"
    } | tr '\n' '\0' > "$1/names" && mv -f "$1/new.gch" "$1/includes.h.gch"
}

compile_runtime() { # compile_runtime FOLDER
    "$compiler" "@$tools/fast/runtime.options" -I"$tools/include" \
        -c "$tools/fast/runtime.cpp" -o "$1/new.o" && mv -f "$1/new.o" "$1/runtime.o"
}

# A build that finds the folder locked goes on without the header, and one failure (no room, say) is
# not repeated within the hour. The header comes into its place complete, "made" behind it.
make_header() { # make_header FOLDER
    (
        flock -n 9 || exit 1
        if is_usable "$1"; then exit 0; fi
        if [ -n "$(find "$1/failed" -mmin -60 2> /dev/null)" ]; then exit 1; fi
        rm -f "$1/made"
        if [ "$1" != "$tools/fast" ]; then
            for file in includes.h entries.h lists.h; do
                cp "$tools/fast/$file" "$1/$file" || exit 1
            done
        fi
        if precompile "$1" && state "$1" > "$1/made.new" && mv -f "$1/made.new" "$1/made"; then
            rm -f "$1/new.log"
            exit 0
        fi
        rm -f "$1/new.gch" "$1/new.o" "$1/made.new"
        : > "$1/failed"
        exit 1
    ) 9> "$1/lock" 2> /dev/null
}

find_cache() { # sets cache to the user's folder for this installation, empty without a home
    cache=${XDG_CACHE_HOME:-${HOME:+$HOME/.cache}}
    if [ -n "$cache" ]; then
        cache=$cache/orvane/$(printf '%s' "$tools" | cksum | tr ' ' -)${symbols:+/symbols}
    fi
}

find_header() { # sets header to the folder of a usable header, empty when there is none
    header=
    [ -f "$tools/fast/includes.h" ] || return
    own=$tools/fast${symbols:+/symbols}
    header=$own
    if is_usable "$header"; then return; fi
    find_cache
    header=$cache
    if [ -n "$header" ] && is_usable "$header"; then return; fi
    for header in "$own" "$cache"; do
        if [ -n "$header" ] && mkdir -p "$header" 2> /dev/null && [ -w "$header" ]; then
            make_header "$header" && return
            break
        fi
    done
    header=
}

make_header_now() {
    rm -f "$tools/fast/failed" 2> /dev/null
    find_cache
    if [ -n "$cache" ]; then rm -f "$cache/failed" 2> /dev/null; fi
    find_header
    if [ -n "$header" ]; then return 0; fi
    say "the precompiled header could not be made in '$tools/fast' nor in '${cache:-a cache (HOME is not set)}'; builds work without it, only slower."
    return 1
}

compile_with_header() {
    if [ -z "$symbols" ]; then set -- -DORVANE_VALUE_COMPILED "$header/runtime.o" "$@"; fi
    "$compiler" -include "$header/includes.h" "$@"
}

# A failed compile is repeated without the header, so that its messages, and whether it fails at all,
# never come from a damaged one. If it was that, the next build makes another.
compile() {
    find_header
    if [ -n "$header" ]; then
        if messages=$(compile_with_header "$@" 2>&1); then
            if [ -n "$messages" ]; then printf '%s\n' "$messages" >&2; fi
            return 0
        fi
        "$compiler" "$@" || return
        rm -f "$header/made" 2> /dev/null
        return 0
    fi
    "$compiler" "$@"
}

find_compiler
find_symbols "$@"
if [ "$*" = --orvane-make-pch ]; then
    make_header_now
    exit
fi
if ! is_program_build "$@"; then
    exec "$compiler" "$@" -static ${strip:+"$strip"}
fi

# The same arguments with another name behind -o, in the folder of the executable.
finished=${output%/*}/.orvane-$$.exe
trap 'if [ -e "$finished" ]; then rm -f "$finished"; fi' EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM
left=$# previous=
while [ "$left" -gt 0 ]; do
    argument=$1
    shift
    if [ "$previous" = -o ]; then set -- "$@" "$finished"; else set -- "$@" "$argument"; fi
    previous=$argument
    left=$((left - 1))
done

compile "$@" -static ${strip:+"$strip"} || exit
mv -fT "$finished" "$output" || exit 1
