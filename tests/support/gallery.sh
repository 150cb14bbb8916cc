# The pictures of the example programs. Source this file in bash, in the root of the sources, after
# wine.sh and product.sh.

# take_pictures FOLDER: compiles every example and leaves NAME.png in the folder, with the program in
# the state to which tests/ui/gallery/NAME.steps brings it. Needs $DISPLAY and a Wine prefix on it.
take_pictures() {
    local example name
    for example in examples/*.vorla; do
        name=$(basename "$example" .vorla)
        compile_copy "$example" "$1" || return 1
        picture "$1/$name.exe" "$1/$name.png" < "tests/ui/gallery/$name.steps" || return 1
        # A palette and the best compression: the pictures are kept with the sources.
        convert "$1/$name.png" -strip -colors 128 -define png:compression-level=9 \
            "PNG8:$1/$name.small.png"
        mv "$1/$name.small.png" "$1/$name.png"
    done
}

# difference A.png B.png: from 0 (equal) to 1, of the two pictures as small grey ones.
difference() {
    local small='-resize 64x64! -colorspace Gray -depth 8'
    convert "$1" $small "$work/first.png"
    convert "$2" $small "$work/second.png"
    compare -metric RMSE "$work/first.png" "$work/second.png" null: 2>&1 | sed 's/.*(\(.*\))/\1/'
}
