#!/usr/bin/env bash
# screen.sh [--minutes N] [--pages NAME,...] [--dpi N] [--theme on|off] [--seed N] [GALLERY ARGUMENTS...]
#
# Plays a session of real mouse and keyboard over the pages of the gallery, on a display of its own,
# watches the screen meanwhile and prints how many frames were seen and how many showed a standard
# control, an area that nobody painted or a flash. Pictures of these lie in out/screen afterwards.
# All pages share the minutes (2). Everything else goes to the gallery: --rtl, or --plain, which
# shows the standard controls and must be found out.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

minutes=2
pages=
dpi=96
theme=on
seed=1
arguments=()
while (($#)); do
    case $1 in
        --minutes | --pages | --dpi | --theme | --seed)
            (($# > 1)) || fail "$1 needs a value"
            declare "${1#--}=$2"
            shift 2
            ;;
        *)
            arguments+=("$1")
            shift
            ;;
    esac
done
[[ $minutes =~ ^[1-9][0-9]*$ ]] || fail "--minutes takes a number, not '$minutes'"

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
configure mingw64
build mingw64 --target ScreenTest

unset DISPLAY XAUTHORITY
export WINEPREFIX=$BUILD/wine
start_session $((1024 * dpi / 96)) $((768 * dpi / 96))
run="$ROOT/scripts/wine-run.sh --dpi $dpi --theme $theme"
[[ -n $pages ]] || pages=$($run "$BUILD/mingw64/bin/Gallery.exe" --list | tr -d '\r' | paste -sd,)
count=$(tr ',' '\n' <<<"$pages" | wc -l)
pictures=$ROOT/out/screen
rm -rf "$pictures"
mkdir -p "$pictures"
say "watching $count pages for $minutes minutes at $dpi DPI"
status=0
run_job $run "$BUILD/mingw64/bin/ScreenTest.exe" "$pages" $((minutes * 60 / count)) "$seed" \
    "$pictures" "${arguments[@]}" || status=$?
((status == 0)) || fail "see the pictures in $(shown "$pictures")"
say "all frames were as they must be"
