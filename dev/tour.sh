# Sourced by run and dev/screenshots: the catalogue of a library, and the tour.

# catalogue FOLDER DIR...: settings in FOLDER with these folders, each under its own name with a capital. Settings that
# are there already stay.
catalogue() {
    local file=$1/tessaro35.ini dir name number=0
    shift
    [ ! -f "$file" ] || return 0
    {
        echo "[Paths]"
        echo "NumPaths=$#"
        for dir in "$@"; do
            number=$((number + 1))
            echo "Path$number=$dir"
        done
        for dir in "$@"; do
            name=$(basename "$dir")
            name=${name//-/ }
            printf '[%s]\nDescription=%s\nScale=1-to-1\nRotation=0\nView=3\nSortStyle=Name\nCurrentScheme=<None>\n' \
                "$dir" "${name^}"
        done
    } >"$file"
}

# play_tour BIN PLACE [DIR...]: plays the tour afresh in PLACE, or the short one of these folders, and leaves there the
# transcript and what it makes. The user of the tour lives in its folder, so that nothing of it goes to yours.
play_tour() {
    local bin=$1 place=$2 script=$PWD/samples/own-library.scr
    shift 2
    rm -rf "$place"
    mkdir -p "$place"
    if [ $# -eq 0 ]; then
        "$bin/tessaro-samples" "$place/library"
        script=$PWD/samples/tour.scr
        set -- "$place"/library/{doors,electrical,furniture,mechanical,sanitary,title-blocks,windows}
    else
        "$bin/tessaro-samples" "$place/library" furniture >/dev/null
    fi
    catalogue "$place/library" "$@"
    (cd "$place" && env -u XDG_DATA_HOME -u XDG_DOCUMENTS_DIR HOME="$place" QT_QPA_PLATFORM=offscreen \
        "$bin/tessaro-editor" --batch --script "$script" library/Flat.dwg) >"$place/transcript.txt" 2>&1
}
