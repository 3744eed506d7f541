#!/usr/bin/env bash
# wine-run.sh [--dpi N] [--theme on|off] PROGRAM.exe [ARGUMENTS...]
#
# Runs a Windows program under Wine and ends with its exit code (its low eight bits, as a shell has
# no more). DPI is 96 and the theme on unless told otherwise. Within scripts/test.sh it uses the
# session of that script. On its own it opens a session for this one program, which costs some
# seconds and waits for other sessions to end.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"
say() { :; }

dpi=96
theme=on
while (($#)); do
    case $1 in
        --dpi) dpi=${2:-} ;;
        --theme) theme=${2:-} ;;
        *) break ;;
    esac
    shift 2 || fail "$1 needs a value"
done
(($#)) || fail "usage: wine-run.sh [--dpi N] [--theme on|off] PROGRAM.exe [ARGUMENTS...]"
[[ $dpi =~ ^[0-9]{2,3}$ ]] || fail "--dpi takes a number, not '$dpi'"
[[ $theme == on || $theme == off ]] || fail "--theme takes on or off, not '$theme'"
[[ -f $1 ]] || fail "no such program: $1"

arm_cleanup
if [[ -z ${WINEPREFIX:-} || -z ${DISPLAY:-} ]]; then
    export WINEPREFIX=${WINEPREFIX:-$BUILD/wine}
    mkdir -p "$LOGS" "$(dirname -- "$WINEPREFIX")"
    start_session
else
    wine_environment
fi

# Programs with like settings may run side by side. Whoever needs other settings waits until it is
# alone, and stays so.
exec 7>"$WINEPREFIX/.qkdlg-run.lock"
flock -s 7
if ! settings_are "$dpi" "$theme" unframed; then
    flock -u 7
    flock -x 7
    settings_are "$dpi" "$theme" unframed || change_settings "$dpi" "$theme" unframed
fi

# The program writes to files: a helper that Wine starts along with it inherits them, lives on, and
# would keep the reader of a pipe waiting. What is written is handed on at once.
out=$(mktemp -d)
remove_output() { rm -rf "$out"; }
on_exit remove_output
: >"$out/1"
: >"$out/2"
on_one_core wine "$@" </dev/null >"$out/1" 2>"$out/2" 7>&- 8>&- 9>&- &
program=$!
stop_program() { [[ -z $program ]] || kill -KILL "$program" 2>/dev/null; }
on_exit stop_program
tail -n +1 -s 0.02 --pid="$program" -f "$out/1" 7>&- 8>&- 9>&- &
tails=($!)
tail -n +1 -s 0.02 --pid="$program" -f "$out/2" >&2 7>&- 8>&- 9>&- &
tails+=($!)
status=0
wait "$program" || status=$?
program=
wait "${tails[@]}"
exit "$status"
