#!/usr/bin/env bash
# preview.sh [--dpi N] MODULE... [PREVIEW ARGUMENTS...]
#
# Builds QkPreview and runs it under Wine, from nothing but a Debian 12 with apt and root: lists the
# dialogs of programs and DLLs, takes pictures of them, checks them (see docs/preview.md). Files are
# named as usual on this machine, or by a Windows path such as 'C:\windows\system32\shell32.dll'.
# A dialog that is to stay open for the user needs a display. --dpi takes 96 to 480.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

folder=$PWD
program=$BUILD/mingw64/bin/QkPreview.exe
dpi=96
interactive=
arguments=()
while (($#)); do
    case $1 in
        --dpi)
            (($# > 1)) || fail "$1 needs a value"
            dpi=$2
            shift
            ;;
        --dialog) interactive=${interactive:-yes} arguments+=("$1") ;;
        --png | --all | --check) interactive=no arguments+=("$1") ;;
        *) arguments+=("$1") ;;
    esac
    shift
done
[[ $dpi =~ ^[1-9][0-9]{1,2}$ && $dpi -ge 96 && $dpi -le 480 ]] || fail "--dpi takes 96 to 480, not '$dpi'"
[[ $interactive != yes || -n ${DISPLAY:-} ]] || fail "to show a dialog takes a display; --png saves a picture"

# In a shell of its own: a failure must not keep the rest of the clean-up from running.
restore_settings() { (change_settings 96 on unframed); }

# The report goes to a file first: a helper of Wine that got hold of a pipe would keep its reader
# waiting. What is written is handed on at once.
run_preview() {
    local log=$LOGS/preview.log status=0
    : >"$log"
    tail -n +1 -s 0.1 -f "$log" 7>&- 8>&- 9>&- &
    local reader=$!
    cd "$folder"
    run_job wine "$program" "${arguments[@]}" >>"$log" 2>&1 || status=$?
    sleep 0.3
    kill "$reader" 2>/dev/null
    return "$status"
}

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
configure mingw64
build mingw64 --target QkPreview

export WINEPREFIX=$BUILD/wine
frames=framed
if [[ $interactive != yes ]]; then
    frames=unframed
    unset DISPLAY XAUTHORITY
fi
# Room for large dialogs at any DPI.
start_session $((2560 * dpi / 96)) $((1600 * dpi / 96))
change_settings "$dpi" on "$frames"
on_exit restore_settings
run_preview
