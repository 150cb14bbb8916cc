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
        convert "$1/$name.png" -strip +dither -colors 128 -define png:compression-level=9 \
            "PNG8:$1/palette"
        mv "$1/palette" "$1/$name.png"
    done
}

# difference A.png B.png FOLDER: from 0 (equal) to 1. What is compared is where the pictures have edges,
# blurred and small: another font or another state of the program changes that little, other or missing
# controls much. FOLDER takes the two small pictures.
difference() {
    local shape=(-colorspace Gray -edge 1 -blur 0x4 -resize '32x32!' -normalize -depth 8)
    convert "$1" "${shape[@]}" "$3/first.small.png"
    convert "$2" "${shape[@]}" "$3/second.small.png"
    # compare ends with 1 for pictures that differ at all.
    { compare -metric RMSE "$3/first.small.png" "$3/second.small.png" null: 2>&1 || true; } | sed 's/.*(\(.*\))/\1/'
}
