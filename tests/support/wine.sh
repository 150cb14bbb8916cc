# Functions for scripts that run Windows programs. Source this file; plain POSIX sh.
#
#   . tests/support/wine.sh
#   wine_up null                  # a private prefix without a screen (x11: on $DISPLAY)
#   wine_run build/demo/app.exe   # with a time limit; gives back the program's exit code
#   wine_down
#
# The prefix is "$ORVANE_TEST_PREFIX-null" or "-x11" (default: build/wineprefix in the working
# directory); it is made once, in 5 to 10 seconds, and reused. Nothing outside it is touched, so runs
# with different prefixes go on side by side. Programs are ended after ORVANE_TEST_TIMEOUT seconds (60).
#
# Wine's server, by itself, ends with the last program. A program that connects in that moment is lost:
# its connection is reset, or it gives up after five seconds of trying, and nothing of it runs. So the
# server here is one that stays, and the programs of all scripts that use a prefix, one after the other
# or side by side, have the same. It goes, with all that belongs to it, about a minute after the last of
# these scripts. Until then each script holds a shared lock, descriptor 8, which is closed for programs.

: "${ORVANE_TEST_PREFIX:=$PWD/build/wineprefix}"
: "${ORVANE_TEST_TIMEOUT:=60}"

# Debian's /usr/bin/wine is a script that looks for a 32-bit Wine first; the 64-bit loader is asked
# for directly where there is one.
wine_find() {
    for WINE in /usr/lib/wine/wine64 /usr/lib/x86_64-linux-gnu/wine/wine64; do
        if [ -x "$WINE" ]; then return 0; fi
    done
    WINE=$(command -v wine64 || command -v wine) || {
        echo "Wine is not installed." >&2
        return 1
    }
}

# Under LANG=C Wine garbles arguments and file names that are not ASCII. The two empty overrides keep
# Wine from offering to download its .NET and HTML engines; winemenubuilder would write into $HOME.
wine_environment() {
    export WINEPREFIX="$ORVANE_TEST_PREFIX-$1"
    export WINEARCH=win64 WINEDEBUG=-all LANG=C.UTF-8
    export WINEDLLOVERRIDES="mscoree,mshtml=;winemenubuilder.exe=d"
    unset LC_ALL
    if [ "$1" = null ]; then unset DISPLAY; fi
}

wine_settings() {
    cat <<'REG'
REGEDIT4

[HKEY_CURRENT_USER\Software\Wine\X11 Driver]
"Managed"="N"

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"LXGW WenKai Mono Medium"="LXGW WenKai Mono"

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\FontLink\SystemLink]
"DejaVu Sans"=hex(7):77,71,79,2d,7a,65,6e,68,65,69,2e,74,74,63,2c,57,65,6e,51,75,61,6e,59,69,20,5a,65,6e,20,48,65,69,00,00
"DejaVu Sans Bold"=hex(7):77,71,79,2d,7a,65,6e,68,65,69,2e,74,74,63,2c,57,65,6e,51,75,61,6e,59,69,20,5a,65,6e,20,48,65,69,00,00
REG
    if [ "$1" = null ]; then
        printf '\n[HKEY_CURRENT_USER\\Software\\Wine\\Drivers]\n"Graphics"="null"\n'
    fi
}

# Without a window manager every window that Wine manages costs two seconds at closing, hence
# Managed=N. Of Wine's own fonts only Marlett (the drawn symbols) is taken: its Tahoma breaks font links.
wine_create_prefix() {
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    wine_settings "$1" > "$WINEPREFIX/settings.reg"
    (
        unset DISPLAY
        wineserver -p600
        "$WINE" wineboot -i
        if [ -f /usr/share/wine/fonts/marlett.ttf ]; then
            cp /usr/share/wine/fonts/marlett.ttf "$WINEPREFIX/drive_c/windows/Fonts/"
        fi
        cp "$WINEPREFIX/settings.reg" "$WINEPREFIX/drive_c/settings.reg"
        "$WINE" regedit /S 'C:\settings.reg'
    ) < /dev/null > "$WINEPREFIX/setup.log" 2>&1
    wine_down
    : > "$WINEPREFIX/.ready"
}

# Starts the server and Wine's services, unless they run. Whatever starts the services leaves its output
# to them, and who reads that output would wait for its end, hence the program without any. The server's
# own limit of ten minutes counts only when wine_end_later was ended.
wine_start_server() {
    if wineserver -p600; then
        "$WINE" cmd /c rem || true
        wine_end_later
    fi < /dev/null > /dev/null 2>&1
}

# A process on its own: a minute after the start, or later when no script uses the prefix any more, it
# ends the server. Nobody can come in between, as a newcomer waits for the lock. It is a shell of its
# own because a copy of this one would keep the locks.
wine_end_later() {
    ( sh -c '
        cd /
        sleep 60
        while [ -d "$WINEPREFIX" ] &&
            ! flock -n "$WINEPREFIX.users" sh -c "wineserver -k; wineserver -w; true"; do
            sleep 20
        done' & )
}

# wine_up null|x11: makes the prefix or takes the one that is there, with the server running. Two scripts
# may ask at once: the second waits.
wine_up() {
    case "$1" in
        null | x11) ;;
        *) echo "wine_up: null or x11, not '$1'" >&2; return 2 ;;
    esac
    wine_find || return 1
    wine_environment "$1"
    mkdir -p "$(dirname "$WINEPREFIX")"
    exec 8> "$WINEPREFIX.users"
    flock -s 8
    (
        flock 9
        if [ ! -f "$WINEPREFIX/.ready" ]; then wine_create_prefix "$1" 8>&- 9>&-; fi
        if [ -f "$WINEPREFIX/.ready" ]; then wine_start_server 8>&- 9>&-; fi
    ) 9> "$WINEPREFIX.lock"
    if [ ! -f "$WINEPREFIX/.ready" ]; then
        echo "Wine could not make its prefix; see $WINEPREFIX/setup.log" >&2
        return 1
    fi
}

# wine_run PROGRAM ARGUMENTS...: the program's exit code, 124 when it had to be ended.
#
# The errors come at the end, by way of a file: the first program that needs Wine's desktop starts it with
# its own error stream, and the desktop stays as long as any program of the prefix has a window. Who reads
# that stream to its end would wait for all of them.
wine_run() {
    wine_errors=$(mktemp)
    wine_status=0
    timeout -k 5 "$ORVANE_TEST_TIMEOUT" "$WINE" "$@" 8>&- 2> "$wine_errors" || wine_status=$?
    cat "$wine_errors" >&2
    rm -f "$wine_errors"
    return "$wine_status"
}

# Ends what still runs in this prefix, and only there.
wine_down() {
    wineserver -k || true
    wineserver -w
}

# A Windows path for an absolute path of this machine.
wine_path() {
    printf 'Z:%s' "$1" | tr / '\\'
}

# A screen of its own on a free display number, for screenshots and for reading pixels.
xvfb_up() {
    xvfb_number=$(mktemp)
    Xvfb -displayfd 3 -screen 0 1024x768x24 -nolisten tcp -noreset 3> "$xvfb_number" > /dev/null 2>&1 &
    XVFB_PID=$!
    xvfb_tries=0
    while [ ! -s "$xvfb_number" ] && [ "$xvfb_tries" -lt 200 ]; do
        sleep 0.05
        xvfb_tries=$((xvfb_tries + 1))
    done
    DISPLAY=:$(cat "$xvfb_number")
    rm -f "$xvfb_number"
    export DISPLAY
    if [ "$DISPLAY" = : ]; then
        echo "Xvfb did not start." >&2
        return 1
    fi
}

xvfb_down() {
    kill "$XVFB_PID" 2> /dev/null || true
    wait "$XVFB_PID" 2> /dev/null || true
}

# screenshot FILE.png: the whole screen of $DISPLAY, without the empty margin around the windows.
screenshot() {
    import -window root -trim +repage "$1"
}
