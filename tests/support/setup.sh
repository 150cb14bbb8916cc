#!/usr/bin/env bash
# Installs what a job needs and the machine lacks, on Debian 12, Ubuntu 22.04 and later:
#
#   tests/support/setup.sh build windows tests
#
# As root, or with a sudo that asks for no password, through apt; otherwise it prints the command to
# run and ends with status 1. With nothing missing it prints nothing.
set -eu

log=build/setup.log
missing=()      # packages without which the job cannot run
wanted=()       # packages that only make its result better

has_command() { command -v "$1" > /dev/null; }
has_file() { compgen -G "$1" > /dev/null; }

need() { # need PACKAGE TEST...: the package is missing when the test fails
    local package=$1
    shift
    "$@" || missing+=("$package")
}

want() {
    local package=$1
    shift
    "$@" || wanted+=("$package")
}

add_group() {
    case "$1" in
        build)
            need g++ has_command g++
            need cmake has_command cmake
            need ninja-build has_command ninja
            need nlohmann-json3-dev has_file /usr/include/nlohmann/json.hpp
            ;;
        windows)
            need g++-mingw-w64-x86-64-posix has_command x86_64-w64-mingw32-g++-posix
            need wine64 has_file '/usr/lib/wine/wine64*'
            need wine has_command wineserver
            ;;
        tests)
            need libgtest-dev has_file /usr/include/gtest/gtest.h
            need diffutils has_command diff
            need python3 has_command python3
            need strace has_command strace
            ;;
        fuzz) need clang has_command clang++ ;;
        static)
            need clang has_command clang++
            need clang-tidy has_command clang-tidy
            need cppcheck has_command cppcheck
            ;;
        coverage) need gcovr has_command gcovr ;;
        packages) need python3 has_command python3 ;;
        toolchain)
            need build-essential has_command dpkg-buildpackage
            need xz-utils has_command xz
            ;;
        bench)
            need libbenchmark-dev has_file /usr/include/benchmark/benchmark.h
            need valgrind has_command valgrind
            need python3 has_command python3
            need lua5.4 has_command lua5.4
            ;;
        format) need clang-format has_command clang-format ;;
        screen)
            want xvfb has_command Xvfb
            want imagemagick has_command import
            want fonts-wine has_file /usr/share/wine/fonts/marlett.ttf
            want fonts-lxgw-wenkai has_file '/usr/share/fonts/*/lxgw-wenkai'
            want fonts-wqy-zenhei has_file '/usr/share/fonts/*/wqy'
            ;;
        *)
            echo "setup.sh: unknown group '$1'" >&2
            exit 2
            ;;
    esac
}

find_root() { # sets the prefix of the commands that change the system
    if [ "$(id -u)" = 0 ]; then
        as_root=(env)
    elif has_command sudo && sudo -n true 2> /dev/null; then
        as_root=(sudo -n)
    else
        return 1
    fi
    has_command apt-get
}

apt() {
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -qq -o Acquire::Retries=3 \
        -o Dpkg::Use-Pty=0 "$@" < /dev/null >> "$log" 2>&1
}

explain_and_stop() {
    echo "Some packages are missing. On Debian or Ubuntu:" >&2
    echo "    sudo apt-get install --no-install-recommends ${missing[*]}" >&2
    exit 1
}

install_packages() {
    if ! find_root; then
        if [ ${#missing[@]} -gt 0 ]; then explain_and_stop; fi
        echo "Not installed, so there will be no screenshots: ${wanted[*]}"
        return
    fi
    echo "Installing: ${missing[*]} ${wanted[*]} (log: $log)"
    mkdir -p "$(dirname "$log")"
    : > "$log"
    apt update || true # an old package list may still serve
    if [ ${#missing[@]} -gt 0 ] && ! apt install --no-install-recommends "${missing[@]}"; then
        tail -n 5 "$log" >&2
        explain_and_stop
    fi
    for package in "${wanted[@]}"; do # one by one: not every release has each of them
        apt install --no-install-recommends "$package" || echo "Not available: $package"
    done
}

for group in "$@"; do add_group "$group"; done
if [ ${#missing[@]} -gt 0 ] || [ ${#wanted[@]} -gt 0 ]; then install_packages; fi
