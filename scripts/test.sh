#!/usr/bin/env bash
# test.sh [CTEST ARGUMENTS...]
#
# Builds everything and runs all tests, from nothing but a Debian 12 with apt and root: the portable
# parts natively with sanitizers, the fuzz targets of the XML library (their corpus, then some
# seconds of search), the 64-bit library under Wine on a display of its own, and the 32-bit library
# where 32-bit Wine can be installed. The arguments go to ctest: -R NAME, say.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

failed=()
ran=0

# A preset that fails does not hide what the next one has to say.
test_preset() {
    if (($# > 1)) && ! has_tests "$@"; then
        say "no test of $1 fits"
        return
    fi
    ran=$((ran + 1))
    run_tests "$1" --no-tests=error "${@:2}" || failed+=("$1")
}

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}" \
    "${WINE_PACKAGES[@]}" "${RUST_PACKAGES[@]}"
decide_wine32

configure native-sanitize
build native-sanitize
test_preset native-sanitize "$@"

configure fuzz
build fuzz
test_preset fuzz "$@"

# Tests move the mouse and rely on the screen: they never run on the display of a person.
unset DISPLAY XAUTHORITY
export WINEPREFIX=$BUILD/wine
start_session

configure mingw64
build mingw64
test_preset mingw64 "$@"

configure mingw32
build mingw32
if has_wine32; then
    test_preset mingw32 "$@"
else
    say "the 32-bit tests were built but did NOT run: $(why_no_wine32) (to try again, delete build/wine32)"
fi

((ran)) || fail "no test fits: $*"
((${#failed[@]} == 0)) || fail "tests of ${failed[*]}, see$(printf " build/logs/test-%s.log" "${failed[@]}")"
say "all tests that could run passed"
