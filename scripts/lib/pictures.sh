# shellcheck shell=bash disable=SC2034
# Drawing the pictures of the documents. Sourced after common.sh, presets.sh and wine.sh.

PICTURES=$ROOT/docs/pictures
BIN=$BUILD/mingw64/bin

# The pages of the gallery that documents may show, by the name of the picture: those that stand
# still.
GALLERY_PAGES=(push toggles switches compound labels edits passwords combos list columns rows
    scrollbars holders dialog)

# Plots of measurements, which differ from run to run: scripts/bench.sh draws them.
PLOTS=(growth)

# As a Windows program knows a path of this machine.
windows_path() { printf 'Z:%s' "${1//\//\\}"; }

# run_quietly LOG WHAT PROGRAM [ARGUMENTS...]
run_quietly() {
    local log=$1 what=$2
    shift 2
    run_logged "$log" "$what" on_one_core timeout 300 wine "$BIN/$1" "${@:2}"
}

# The names of the pictures that the documents show, without ".png", plots left out.
shown_pictures() {
    cd "$ROOT" || exit
    git ls-files --cached --others --exclude-standard -- '*.md' |
        while IFS= read -r document; do
            [[ ! -f $document ]] || grep -o 'pictures/[A-Za-z0-9_-]*\.png' -- "$document" || true
        done | sed 's|.*/||; s|\.png$||' | sort -u | grep -vxF "$(printf '%s\n' "${PLOTS[@]}")"
}

build_picture_programs() {
    configure mingw64
    build mingw64 --target Gallery --target QkPictures --target QkPreview
}

# draw_pictures FOLDER NAME...: the documents' pictures of these names, at 96 DPI, into an empty
# folder. Names that no command draws are left out.
draw_pictures() {
    local folder=$1 name
    shift
    mkdir -p "$folder"
    change_settings 96 on unframed
    [[ " $* " != *" states-"* ]] ||
        run_quietly pictures "drawing the states" QkPictures.exe "$(windows_path "$folder")"
    for name in "$@"; do
        [[ " ${GALLERY_PAGES[*]} " != *" $name "* ]] ||
            run_quietly pictures-gallery "drawing the page $name" Gallery.exe \
                --page "$name" --png "$(windows_path "$folder/$name.png")"
    done
    # A dialog, plain beside flat, and the sheet that such a picture stands on.
    [[ " $* " != *" plain-and-flat "* ]] || draw_preview 221 Gallery.exe-221-0409 plain-and-flat
    [[ " $* " != *" preview "* ]] || draw_preview 220 sheet-001 preview
}

# draw_preview DIALOG PICTURE NAME
draw_preview() {
    local all=$BUILD/previews
    rm -rf "$all"
    run_quietly pictures-preview "drawing the preview of a dialog" QkPreview.exe \
        "$(windows_path "$BIN/Gallery.exe")" --dialog "$1" --all "$(windows_path "$all")"
    cp "$all/$2.png" "$folder/$3.png"
}

# different_pictures FOLDER NAME...: writes which of the fresh pictures look different from those of
# the documents, and how, to pictures-different.log.
different_pictures() {
    run_quietly pictures-different "comparing the pictures" QkPictures.exe --compare \
        "$(windows_path "$1")" "$(windows_path "$PICTURES")" "${@:2}"
}
