# shellcheck shell=bash
# What every script shares: where things lie, a clean environment, logs, locks, clean-up.
# Sourced, not run.

ROOT=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." >/dev/null && pwd -P)
BUILD=$ROOT/build
LOGS=$BUILD/logs
SCRIPT_NAME=${0##*/}
JOB=
# How long a job that is told to end may take for its own clean-up.
STOP_SECONDS=4
CLEANUPS=()

say() { printf '%s: %s\n' "$SCRIPT_NAME" "$*"; }

fail() {
    printf '%s: FAILED: %s\n' "$SCRIPT_NAME" "$*" >&2
    exit 1
}

# A path as the reader knows it: from the top of the repository if it lies inside.
shown() { printf '%s' "${1#"$ROOT"/}"; }

# The caller's compiler flags, Wine settings and the like must not change what is built or seen.
clean_environment() {
    local name
    for name in $(compgen -e); do
        case $name in
            HOME | TERM | TMPDIR | USER | CI | DISPLAY | XAUTHORITY) ;;
            http_proxy | https_proxy | no_proxy | HTTP_PROXY | HTTPS_PROXY | NO_PROXY) ;;
            *) unset "$name" 2>/dev/null || true ;;
        esac
    done
    export PATH=/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin LC_ALL=C.UTF-8
}

# Whatever happens, the job in the foreground and everything registered with on_exit end.
arm_cleanup() {
    trap run_cleanups EXIT
    trap 'exit 129' HUP
    trap 'exit 130' INT
    trap 'exit 143' TERM
}

on_exit() { CLEANUPS=("$1" "${CLEANUPS[@]}"); }

run_cleanups() {
    local status=$? step
    trap - EXIT
    trap '' HUP INT TERM
    set +e
    stop_job
    for step in "${CLEANUPS[@]}"; do
        "$step"
    done
    exit "$status"
}

stop_job() {
    [[ -n $JOB ]] || return 0
    kill -TERM -- "-$JOB" 2>/dev/null
    local tries
    for ((tries = 0; tries < 10 * STOP_SECONDS; ++tries)); do
        kill -0 -- "-$JOB" 2>/dev/null || break
        sleep 0.1
    done
    kill -KILL -- "-$JOB" 2>/dev/null
    JOB=
}

# Runs a command in a process group of its own, so that a signal to the script is acted on at
# once and reaches the whole group. Locks (descriptors 8 and 9) are not handed on.
run_job() {
    local status=0
    set -m
    "$@" </dev/null 8>&- 9>&- &
    JOB=$!
    set +m
    wait "$JOB" || status=$?
    JOB=
    return "$status"
}

# run_logged LOG WHAT COMMAND...: the output goes to build/logs/LOG.log, a failure ends the script.
run_logged() {
    local log=$LOGS/$1.log what=$2
    shift 2
    run_job "$@" >"$log" 2>&1 || fail_with_log "$what failed" "$log"
}

# Nobody can open a log of a CI machine afterwards: there its end is shown as well.
fail_with_log() {
    [[ -z ${CI:-} ]] || tail -n 40 -- "$2" >&2
    fail "$1, see $(shown "$2")"
}

# Two runs must not build in the same folder at once. The lock ends with the script.
lock_build() {
    mkdir -p "$LOGS"
    exec 9>"$BUILD/.lock"
    flock -n 9 && return
    say "waiting for another run in $(shown "$BUILD") to end"
    wait_for_lock 9
}

# In the background, because a signal would have to wait for a plain child to end.
wait_for_lock() {
    set -m
    flock "$1" </dev/null &
    JOB=$!
    set +m
    wait "$JOB" || fail "the lock could not be taken"
    JOB=
}

# The C and C++ files under the given folders that git tracks or would track.
source_files() {
    local folder
    for folder in "$@"; do
        git ls-files --cached --others --exclude-standard -- "$folder/*.cpp" "$folder/*.h" "$folder/*.c"
    done
}
