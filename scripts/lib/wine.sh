# shellcheck shell=bash
# A Wine session: prefix, X display, server. Sourced after common.sh.
#
# The prefix is made once and again whenever its set-up changes (see prefix_stamp). Three settings
# vary from program to program: DPI, theme, and whether a window manager frames the windows. Their
# current values stand in a file of the prefix, so that nothing is written while they fit.

WINE_FONTS=/usr/share/wine/fonts

# Without Mono, Gecko and menu entries: none is used, and each would ask or write elsewhere.
wine_environment() {
    export WINEDEBUG=-all WINEARCH=win64 WINEDLLOVERRIDES="mscoree=;mshtml=;winemenubuilder.exe="
}

# Runs a Windows program of the set-up itself. A first program starts helpers that inherit what it
# holds, so it must hold neither pipes nor locks.
quiet_wine() { run_job timeout 120 wine "$@" >/dev/null 2>&1 7>&-; }

# Crashing tests must end instead of waiting for a debugger; text must look alike on any machine;
# a leaving mouse must be noticed at once.
prefix_registry() {
    cat <<'REG'
Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\Software\Microsoft\Windows NT\CurrentVersion\AeDebug]
"Debugger"="false"

[HKEY_CURRENT_USER\Software\Wine\WineDbg]
"ShowCrashDialog"=dword:00000000

[HKEY_CURRENT_USER\Software\Wine\Fonts\Replacements]
"Segoe UI"="Open Sans"

[HKEY_CURRENT_USER\Control Panel\Desktop]
"FontSmoothing"="2"
"FontSmoothingType"=dword:00000001

[HKEY_CURRENT_USER\Control Panel\Mouse]
"MouseHoverTime"="10"
REG
}

prefix_stamp() {
    prefix_registry
    dpkg-query -W -f='${Package}:${Architecture} ${Version}\n' wine64 wine32 fonts-wine 2>/dev/null || true
}

ensure_prefix() {
    local stamp=$WINEPREFIX/.qkdlg-stamp mark=$WINEPREFIX/.qkdlg-prefix
    [[ -f $stamp && $(<"$stamp") == "$(prefix_stamp)" ]] && return
    # Somebody's own prefix must not be made anew.
    [[ ! -e $WINEPREFIX || -f $mark ]] || fail "$WINEPREFIX is not a prefix that these scripts made"
    say "making the Wine prefix $(shown "$WINEPREFIX")"
    rm -rf "$WINEPREFIX"
    mkdir -p "$WINEPREFIX"
    : >"$mark"
    run_logged wine-prefix "making the Wine prefix" timeout 300 wineboot -i
    cp "$WINE_FONTS"/*.ttf "$WINEPREFIX/drive_c/windows/Fonts/" || fail "copying Wine's fonts failed"
    import_registry prefix_registry || fail "setting up the Wine prefix failed"
    stop_wine
    prefix_stamp >"$stamp"
}

# import_registry FUNCTION [ARGUMENTS...]: the function writes the registry file.
import_registry() {
    local file=$WINEPREFIX/drive_c/qkdlg-import.reg
    "$@" >"$file"
    quiet_wine reg import 'C:\qkdlg-import.reg'
}

# settings_registry DPI THEME FRAMES
settings_registry() {
    local theme=0 managed=N
    [[ $2 == on ]] && theme=1
    [[ $3 == framed ]] && managed=Y
    cat <<REG
Windows Registry Editor Version 5.00

[HKEY_CURRENT_USER\\Control Panel\\Desktop]
"LogPixels"=dword:$(printf '%08x' "$1")

[HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\ThemeManager]
"ThemeActive"="$theme"

[HKEY_CURRENT_USER\\Software\\Wine\\X11 Driver]
"Managed"="$managed"
REG
}

settings_are() { [[ -f $WINEPREFIX/.qkdlg-settings && $(<"$WINEPREFIX/.qkdlg-settings") == "$*" ]]; }

# change_settings DPI THEME FRAMES: for programs that start later.
change_settings() {
    rm -f "$WINEPREFIX/.qkdlg-settings"
    import_registry settings_registry "$@" || fail "setting DPI, theme and frames in the Wine prefix failed"
    echo "$*" >"$WINEPREFIX/.qkdlg-settings"
}

# start_session [WIDTH HEIGHT]: prefix ready, display there, server warm. Ends with the script.
start_session() {
    wine_environment
    exec 8>"$WINEPREFIX.lock"
    flock -n 8 || {
        say "waiting for another Wine session to end"
        wait_for_lock 8
    }
    # A server left over by a killed run would go on with its old display.
    timeout 20 wineserver -k 2>/dev/null || true
    [[ -n ${DISPLAY:-} ]] || start_display "${1:-2560}" "${2:-1600}"
    on_exit stop_wine
    ensure_prefix
    warm_server
}

# A Wine program talks to its server all the time, and waking another core costs more than the work
# itself: on one core both are several times as fast.
on_one_core() { taskset -c "$(taskset -pc $$ | sed 's/.*: *//; s/[,-].*//')" "$@"; }

# The server stays up between programs, and the helpers of the first window are started here, by a
# program nobody listens to.
warm_server() {
    on_one_core wineserver -p </dev/null >/dev/null 2>&1 7>&- 8>&- 9>&- || fail "the Wine server did not start"
    change_settings 96 on unframed
    quiet_wine rundll32 user32.dll,GetDesktopWindow || fail "Wine cannot open a window on display $DISPLAY"
}

stop_wine() { timeout 20 wineserver -k 2>/dev/null || true; }

start_display() {
    local number=$BUILD/.display.$$ tries
    say "starting Xvfb"
    : >"$number"
    # Ends with this script even if that is killed.
    # What it shows lies in a file, for tests that watch the screen without asking for it.
    SCREEN_FOLDER=$(mktemp -d -p /dev/shm 2>/dev/null || mktemp -d)
    export QKDLG_SCREEN=$SCREEN_FOLDER/Xvfb_screen0
    setpriv --pdeathsig TERM Xvfb -displayfd 6 -screen 0 "$1x$2x24" -nolisten tcp -noreset -s 0 -fbdir "$SCREEN_FOLDER" \
        6>"$number" </dev/null >"$LOGS/xvfb.log" 2>&1 7>&- 8>&- 9>&- &
    XVFB=$!
    on_exit stop_display
    for ((tries = 0; tries < 200; ++tries)); do
        # The number is complete when its line is.
        if read -r DISPLAY <"$number"; then
            export DISPLAY=:$DISPLAY
            rm -f "$number"
            return
        fi
        kill -0 "$XVFB" 2>/dev/null || break
        sleep 0.05
    done
    rm -f "$number"
    DISPLAY=
    fail_with_log "starting Xvfb failed" "$LOGS/xvfb.log"
}

stop_display() {
    kill -TERM "$XVFB" 2>/dev/null
    wait "$XVFB" 2>/dev/null
    rm -rf "$SCREEN_FOLDER"
}
