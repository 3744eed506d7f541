# shellcheck shell=bash
# Configuring, building and testing by preset. Sourced.

configure() {
    say "configuring $1"
    cd "$ROOT" || exit
    run_logged "configure-$1" "configuring preset $1" cmake --preset "$1"
}

# build PRESET [BUILD ARGUMENTS...]
build() {
    say "building $1"
    cd "$ROOT" || exit
    run_logged "build-$1" "building preset $1" cmake --build --preset "$@"
}

# What ctest and its programs said, without what passed or merely started: a case that failed or hung
# stands out.
without_passes() {
    awk '/^ *Start +[0-9]+: / || /Test .* Passed +[0-9.]+ sec *$/ || /^\[-+\]/ || /^$/ { next }
         /^\[       OK \]/ { if (held != "") { held = ""; next } }
         { if (held != "") print held; held = "" }
         /^\[ RUN      \]/ { held = $0; next }
         { print }
         END { if (held != "") print held }' "$1"
}

# run_tests PRESET [CTEST ARGUMENTS...]: the log has everything; failures and the summary show.
run_tests() {
    local log=$LOGS/test-$1.log status=0
    say "testing $1, log in $(shown "$log")"
    cd "$ROOT" || exit
    # ctest writes to a file, never to a pipe: a helper process of Wine that got hold of a pipe
    # would keep its reader waiting.
    run_job ctest --preset "$1" "${@:2}" >"$log" 2>&1 || status=$?
    without_passes "$log"
    return "$status"
}

# Whether the CTest arguments (a filter, say) leave any test of the preset.
has_tests() {
    cd "$ROOT" || exit
    run_job ctest --preset "$1" -N "${@:2}" >"$LOGS/list-$1.log" 2>&1 ||
        fail_with_log "listing the tests of preset $1 failed" "$LOGS/list-$1.log"
    ! grep -q '^Total Tests: 0$' "$LOGS/list-$1.log"
}
