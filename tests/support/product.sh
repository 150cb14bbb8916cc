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

# compile_copy SOURCE FOLDER: compiles a copy of a source in the folder (a full path), away from the
# libraries of the sources; the program lands beside the copy.
compile_copy() {
    mkdir -p "$2"
    cp "$1" "$2/"
    local copy
    copy=$2/$(basename "$1")
    if ! (cd "$2" && "$stage/orvanec" "$copy") > "${copy%.vorla}.log" 2>&1; then
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
    wine_run "$ui_driver" "$(wine_path "$1")" | sed -u 's/\r$//'
}

# settled_screenshot FILE.png: a picture of $DISPLAY as soon as two of them in a row are equal.
settled_screenshot() {
    local former='' now tries=0
    while [ "$tries" -lt 40 ]; do
        tries=$((tries + 1))
        screenshot "$1" 2> /dev/null || { sleep 0.1; continue; }
        now=$(identify -format '%w %#' "$1")
        # An empty screen is trimmed to nothing.
        if [ "$now" = "$former" ] && [ "${now%% *}" -gt 50 ]; then return 0; fi
        former=$now
        sleep 0.1
    done
    [ -s "$1" ]
}

# picture PROGRAM FILE.png < COMMANDS: starts the program on $DISPLAY, works it by the commands, the
# first of which waits for its window, takes a picture and closes it. The driver gets the last two
# commands through its pipe only when the picture is there.
picture() {
    local log=${2%.png}.window.log commands status=0
    commands=$(cat)
    rm -f "$log" "$2"
    {
        printf '%s\nsay ready\n' "$commands"
        local tries=0
        until grep -q '^ready\|^FAILED' "$log" 2> /dev/null || [ "$tries" -ge 600 ]; do
            sleep 0.1
            tries=$((tries + 1))
        done
        if grep -q '^ready' "$log"; then settled_screenshot "$2" || true; fi
        printf 'close\nexit\n'
    } | drive "$1" > "$log" || status=$?
    if [ "$status" -ne 0 ] || [ ! -s "$2" ] || ! grep -q '^exit code: 0' "$log"; then
        cat "$log" >&2
        return 1
    fi
}
