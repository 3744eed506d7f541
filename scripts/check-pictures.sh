#!/usr/bin/env bash
# check-pictures.sh
#
# Draws the pictures of the documents again and fails when one of them looks different by now, when
# a document shows one that is not there or that no command draws, when one that no document shows
# lies in docs/pictures, or when one is too large.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"
# shellcheck source=lib/pictures.sh
source "$ROOT/scripts/lib/pictures.sh"

MAX_PICTURE_BYTES=$((300 * 1000))
MAX_BYTES=$((2500 * 1000))
fresh=$BUILD/pictures
faults=()

fault() { faults+=("$(shown "$PICTURES")/$*"); }

check_files() {
    local file name total=0 bytes
    for file in "$PICTURES"/*; do
        name=$(basename -- "$file" .png)
        [[ " ${names[*]} ${PLOTS[*]} " == *" $name "* ]] ||
            fault "$name.png is shown by no document"
        bytes=$(stat --format=%s -- "$file")
        ((bytes <= MAX_PICTURE_BYTES)) || fault "$name.png has $bytes bytes"
        ((total += bytes)) || true
    done
    ((total <= MAX_BYTES)) || fault " has $total bytes in all"
}

check_pictures() {
    local name difference drawn=()
    for name in "${names[@]}"; do
        if [[ ! -f $PICTURES/$name.png ]]; then
            fault "$name.png is not there, but a document shows it"
        elif [[ ! -f $fresh/$name.png ]]; then
            fault "$name.png is drawn by no command"
        else
            drawn+=("$name")
        fi
    done
    different_pictures "$fresh" "${drawn[@]}"
    while read -r name difference; do
        fault "$name.png is stale: ${difference%$'\r'}"
    done <"$LOGS/pictures-different.log"
}

clean_environment
unset DISPLAY XAUTHORITY
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}" git
build_picture_programs
mapfile -t names < <(shown_pictures)
check_files

export WINEPREFIX=$BUILD/wine
start_session
rm -rf "$fresh"
say "drawing ${#names[@]} pictures"
draw_pictures "$fresh" "${names[@]}"
check_pictures
((${#faults[@]} == 0)) ||
    fail "$(printf '%s; ' "${faults[@]}")scripts/pictures.sh --documents draws them again"
say "the pictures are fresh"
