# Functions for scripts that show the finished product: the compiler in an installation tree, and its
# programs under Wine. Source this file in bash, in the root of the sources, after wine.sh.

stage=$PWD/build/stage
ui_driver=$PWD/build/product/ui_driver.exe

# Builds the compiler without tests and installs it into build/stage.
build_product() {
    mkdir -p build/product
    local log=build/product/build.log
    if ! { cmake -S . -B build/product -DCMAKE_BUILD_TYPE=Release &&
        cmake --build build/product &&
        cmake --install build/product --prefix "$stage" &&
        tests/ui/build_driver.sh x86_64-w64-mingw32-g++-posix "$ui_driver"; } > "$log" 2>&1; then
        tail -n 30 "$log" >&2
        return 1
    fi
}

# compile_copy SOURCE FOLDER: compiles a copy of a source; the program lands beside the copy.
compile_copy() {
    mkdir -p "$2"
    cp "$1" "$2/"
    local copy
    copy=$2/$(basename "$1")
    if ! "$stage/orvanec" "$copy" > "${copy%.vorla}.log" 2>&1; then
        cat "${copy%.vorla}.log" >&2
        return 1
    fi
}

# The window title that a source gives its program (the compiler's own when it gives none).
title_of() {
    local title
    title=$(sed -n 's/^ *title *= *"\([^"\\]*\).*/\1/p' "$1" | head -n 1)
    printf '%s' "${title:-Orvane Application}"
}

# drive PROGRAM < COMMANDS, with full paths.
drive() {
    wine_run "$ui_driver" "$(wine_path "$1")" | tr -d '\r'
}

# picture PROGRAM TITLE FILE.png: starts the program on $DISPLAY, takes a picture when its window is
# there and painted, closes it. The commands wait in a pipe until then.
picture() {
    local log=${3%.png}.window.log
    rm -f "$log"
    {
        echo "window $2"
        local tries=0
        until grep -q '^window:\|^FAILED' "$log" 2> /dev/null || [ "$tries" -ge 300 ]; do
            sleep 0.1
            tries=$((tries + 1))
        done
        sleep 1
        screenshot "$3" || true
        printf 'close\nexit\n'
    } | drive "$1" > "$log"
    [ -s "$3" ]
}
