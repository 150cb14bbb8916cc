#!/bin/sh
# wine_run gives a program's output, errors and exit code, and does not wait for what the program left
# behind with its error stream. A script stands for Wine here, and a sleep for Wine's desktop.
set -eu
. "$(dirname "$0")/wine.sh"
folder=$(mktemp -d)
trap 'kill "$(cat "$folder/desktop")"; rm -rf "$folder"' EXIT
cat > "$folder/wine" <<EOF
#!/bin/sh
sleep 50 > /dev/null &
echo \$! > "$folder/desktop"
echo "output of \$1"
echo "errors of \$1" >&2
exit 3
EOF
chmod +x "$folder/wine"
WINE=$folder/wine

fail() {
    echo "$1"
    exit 1
}

start=$(date +%s)
result=$( { wine_run program 3>&- || echo "status $?" >&3; } 3> "$folder/status" 2>&1)
[ $(($(date +%s) - start)) -lt 20 ] || fail "The reader waited for what the program had left behind."
[ "$result" = "output of program
errors of program" ] || fail "Came out: $result"
[ "$(cat "$folder/status")" = "status 3" ] || fail "The exit code got lost: $(cat "$folder/status")"
kill -0 "$(cat "$folder/desktop")" || fail "Nothing was left behind, so nothing was tested."
