#!/usr/bin/env bash
# Counts the instructions of a translation, stage by stage, under callgrind:
#
#   bench/check_instructions.sh BIN            fails when a stage takes over 5% more than recorded
#   bench/check_instructions.sh BIN record     records today's figures
#   bench/check_instructions.sh BIN linear     fails when ten times the lines take over eleven times
#                                              the instructions
#
# BIN is the directory with generate_source and translate_once of a release build. The figures in
# instructions.txt are instructions per line of a source of 11,000 lines; unlike times they are the
# same on a busy machine, and nearly the same on another one with the same compiler.
set -euo pipefail

bin=$1
task=${2:-check}
recorded=$(dirname "$0")/instructions.txt
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

count() { # count STAGE LINES: instructions from the start of the process to the end of the stage
    [ -f "$work/$2.vorla" ] || "$bin/generate_source" "$2" > "$work/$2.vorla"
    valgrind --tool=callgrind --callgrind-out-file=/dev/null \
        "$bin/translate_once" "$1" "$work/$2.vorla" "$work" 2>&1 |
        awk '/Collected/ { found = $NF } END { if (!found) exit 1; print found }'
}

list_stages() { # one line per stage: its name and its own instructions per line
    local lines=11000 before=0 total
    for stage in read lex parse generate write; do
        total=$(count "$stage" $lines)
        echo "$stage $(((total - before) / lines))"
        before=$total
    done
    echo "all $((before / lines))"
}

check() {
    list_stages | awk -v recorded="$recorded" '
        BEGIN { while ((getline line < recorded) > 0) { split(line, word, " "); limit[word[1]] = word[2] } }
        !($1 in limit) { print $1 ": no figure recorded"; bad = 1; next }
        # Single instructions do not count: `write` has next to none per line.
        { verdict = $2 > limit[$1] * 1.05 + 2 ? "TOO MANY" : "ok"; if (verdict != "ok") bad = 1
          printf "%-9s %6d instructions per line, recorded %6d: %s\n", $1, $2, limit[$1], verdict }
        END { exit bad }'
}

check_linear() {
    local small large
    small=$(count generate 110000)
    large=$(count generate 1100000)
    echo "110,000 lines: $small instructions; 1,100,000 lines: $large"
    [ "$large" -le $((small * 11)) ]
}

case $task in
    check) check ;;
    record)
        list_stages > "$work/figures"
        cp "$work/figures" "$recorded"
        cat "$recorded"
        ;;
    linear) check_linear ;;
    *)
        echo "check_instructions.sh: unknown task '$task'" >&2
        exit 2
        ;;
esac
