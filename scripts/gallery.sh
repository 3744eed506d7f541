#!/usr/bin/env bash
# gallery.sh [--dpi N] [--png FILE] [GALLERY ARGUMENTS...]
#
# Builds the gallery and shows it under Wine, from nothing but a Debian 12 with apt and root. Without
# a display, or with --png, it draws to a picture instead: FILE, or else out/gallery.png. --dpi takes
# 96 to 480. Everything else goes to the gallery.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

program=$BUILD/mingw64/bin/Gallery.exe
dpi=96
picture=
arguments=()
while (($#)); do
    case $1 in
        --dpi | --png)
            (($# > 1)) || fail "$1 needs a value"
            if [[ $1 == --dpi ]]; then dpi=$2; else picture=$(realpath -m -- "$2"); fi
            shift 2
            ;;
        *)
            arguments+=("$1")
            shift
            ;;
    esac
done
[[ $dpi =~ ^[1-9][0-9]{1,2}$ && $dpi -ge 96 && $dpi -le 480 ]] || fail "--dpi takes 96 to 480, not '$dpi'"

# In a shell of its own: a failure must not keep the rest of the clean-up from running.
restore_settings() { (change_settings 96 on unframed); }

# What the gallery says in a failure is short, and meant for whoever typed its arguments.
run_gallery() {
    local log=$LOGS/gallery.log limit=120
    # A person may look at the window for long; a picture that takes minutes never comes.
    [[ -n $picture ]] || limit=0
    run_job timeout "$limit" wine "$program" "$@" >"$log" 2>&1 && return
    cat "$log" >&2
    fail "running the gallery, see $(shown "$log")"
}

show_window() {
    change_settings "$dpi" on framed
    on_exit restore_settings
    say "the gallery is open"
    run_gallery "${arguments[@]}"
}

draw_picture() {
    mkdir -p "$(dirname -- "$picture")"
    rm -f -- "$picture"
    change_settings "$dpi" on unframed
    on_exit restore_settings
    say "drawing the gallery at $dpi DPI"
    run_gallery "${arguments[@]}" --png "Z:${picture//\//\\}"
    [[ -s $picture ]] || fail "the gallery drew no picture, see $(shown "$LOGS/gallery.log")"
    say "picture: $(shown "$picture")"
}

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
configure mingw64
build mingw64 --target Gallery

export WINEPREFIX=$BUILD/wine
if [[ -n ${DISPLAY:-} && -z $picture ]]; then
    start_session
    show_window
else
    picture=${picture:-$ROOT/out/gallery.png}
    unset DISPLAY XAUTHORITY
    # Room for the window at any DPI.
    start_session $((1920 * dpi / 96)) $((1200 * dpi / 96))
    draw_picture
fi
