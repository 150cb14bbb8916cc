#!/usr/bin/env bash
# make-corpus.sh FOLDER
#
# Writes the first inputs of each fuzzing target to FOLDER/TARGET, out of what the checkout holds:
# golden sources, examples, library files, and the inputs that once found something.
set -euo pipefail
cd "$(dirname "$0")/../.."
folder=$1
largest=20000 # bytes; larger inputs slow every run down

mapfile -t sources < <(find tests/golden examples tests/ui -name '*.vorla' -size -"$largest"c | sort)
mapfile -t libraries < <(find tests/golden orlib -name '*.orlib' -size -"$largest"c | sort)

rm -rf "$folder"
for target in lexer parser recovery scanner loader texts translation structured; do
    mkdir -p "$folder/$target"
    if [ -d "tests/fuzz/regressions/$target" ]; then
        find "tests/fuzz/regressions/$target" -type f -exec cp -t "$folder/$target" {} +
    fi
done

number=0
for file in "${sources[@]}"; do
    number=$((number + 1))
    for target in lexer parser recovery translation; do cp "$file" "$folder/$target/source$number"; done
    # As choices, any bytes are as good as others; these are at hand and always the same.
    head -c 600 "$file" > "$folder/structured/source$number"
done
for file in "${libraries[@]}"; do
    number=$((number + 1))
    cp "$file" "$folder/scanner/library$number"
    cp "$file" "$folder/lexer/library$number"
    { echo "@@@ a"; head -c 3000 "$file"; echo; echo '@@@ d'; echo 'import "a.orlib"'; } \
        > "$folder/loader/library$number"
done
printf '@@@ `\nimport "b.orlib"\n@@@ a\nimport "a.orlib" import "c.orlib"\n@@@ b\nint f() { }\n@@@ c\n' \
    > "$folder/loader/chain"
printf '@@@ h\nimport "../sub/e.orlib"\n@@@ f\nimport "f"\n@@@ g\nimport "../Lib/d"\nusing a "b";\n@@@ e\nint g(int a) { f() }\n' \
    > "$folder/loader/folders"
for text in '#3366CC' '#12345G' '#FFF' red 'Arial, 12' 'Arial,' ', -5' 'A, 99999999999' '#-1-1-1'; do
    number=$((number + 1))
    printf '%s' "$text" > "$folder/texts/text$number"
done
