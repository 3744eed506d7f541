#!/usr/bin/env bash
# pictures.sh [--documents | --sheets] [--dpi N]...
#
# Draws every control in every state, from nothing but a Debian 12 with apt and root: a contact sheet
# for each control type at each DPI, normal and in high contrast, into out/pictures (index.html shows
# them all), and refreshes the pictures that the documents show (docs/pictures). --documents does the
# last alone, --sheets all but it; --dpi takes 96 to 480 and draws sheets of that DPI only.
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

SHEETS=$ROOT/out/pictures
what=everything
dpis=()
while (($#)); do
    case $1 in
        --documents | --sheets) what=${1#--} ;;
        --dpi)
            [[ ${2:-} =~ ^[1-9][0-9]{1,2}$ && $2 -ge 96 && $2 -le 480 ]] ||
                fail "--dpi takes 96 to 480, not '${2:-}'"
            dpis+=("$2")
            shift
            ;;
        *) fail "usage: pictures.sh [--documents | --sheets] [--dpi N]..." ;;
    esac
    shift
done
((${#dpis[@]})) || dpis=(96 120 144 192 240 288 384 480)

restore_settings() { (change_settings 96 on unframed); }

draw_sheets() {
    local dpi
    mkdir -p "$SHEETS"
    for dpi in "${dpis[@]}"; do
        say "drawing the states at $dpi DPI"
        change_settings "$dpi" on unframed
        run_quietly pictures "drawing the states at $dpi DPI" QkPictures.exe \
            "$(windows_path "$SHEETS")" --suffix "-$dpi"
        # As in high contrast on Windows, the theme draws nothing in colours of its own.
        change_settings "$dpi" off unframed
        run_quietly pictures "drawing the states at $dpi DPI in high contrast" QkPictures.exe \
            "$(windows_path "$SHEETS")" --suffix "-$dpi-hc" --high-contrast
    done
    write_index
}

write_index() {
    local name
    cd "$SHEETS" || exit
    for name in *.png; do
        printf '<h2>%s</h2>\n<img src="%s" alt="">\n' "${name%.png}" "$name"
    done >index.html
    say "sheets: $(shown "$SHEETS/index.html")"
}

# A picture that looks as it did stays the file that it is.
refresh_documents() {
    local fresh=$BUILD/pictures name names
    mapfile -t names < <(shown_pictures)
    say "drawing ${#names[@]} pictures of the documents"
    rm -rf "$fresh"
    draw_pictures "$fresh" "${names[@]}"
    for name in "${names[@]}"; do
        [[ -f $fresh/$name.png ]] || fail "no command draws $(shown "$PICTURES/$name.png")"
    done
    mkdir -p "$PICTURES"
    different_pictures "$fresh" "${names[@]}"
    while read -r name _; do
        cp "$fresh/$name.png" "$PICTURES/$name.png"
        say "refreshed $(shown "$PICTURES/$name.png")"
    done <"$LOGS/pictures-different.log"
}

clean_environment
unset DISPLAY XAUTHORITY
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}" git
build_picture_programs

export WINEPREFIX=$BUILD/wine
start_session 2560 1600
on_exit restore_settings
[[ $what == documents ]] || draw_sheets
[[ $what == sheets ]] || refresh_documents
