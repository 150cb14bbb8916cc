# compile STAGE SOURCE OPTIONS...: runs the compiler of an installation tree, or the one that
# ORVANE_UI_COMPILER names; an .exe runs under Wine. Source this file in bash, after wine.sh.
compile() {
    local compiler=${ORVANE_UI_COMPILER:-$1/orvanec} source=$2
    shift 2
    case "$compiler" in
        *.exe) wine_run "$compiler" "$(wine_path "$source")" "$@" ;;
        *) "$compiler" "$source" "$@" ;;
    esac < /dev/null
}
