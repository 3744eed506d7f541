#!/usr/bin/env bash
# check-lint.sh: clang-tidy over all sources. The portable ones are read as this machine compiles
# them, the rest as clang compiles them for Windows. A source is looked at again only when it, a
# header it includes or the rules have changed.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${FUZZ_PACKAGES[@]}" \
    "${CLANG_PACKAGES[@]}"
for preset in native-sanitize fuzz clang-mingw64; do
    configure "$preset"
    # Building leaves Ninja's record of the headers that each source includes.
    build "$preset"
done
say "linting"
run_job python3 "$ROOT/scripts/lib/lint.py" "$ROOT" native-sanitize fuzz clang-mingw64 ||
    fail "clang-tidy found faults (above)"
