#!/usr/bin/env bash
# check-natvis.sh: the debugger's views are well-formed, and the types and members that they name
# exist in the headers.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"

clean_environment
arm_cleanup
mkdir -p "$LOGS"
need_packages "${BUILD_PACKAGES[@]}" python3
run_job python3 "$ROOT/scripts/lib/natvis.py" "$ROOT/debugger/QkDlg.natvis" >"$BUILD/natvis.cpp" ||
    fail "debugger/QkDlg.natvis cannot be read (above)"
# The debugger sees private members.
run_logged natvis "compiling the expressions of debugger/QkDlg.natvis" \
    x86_64-w64-mingw32-g++-posix -std=c++20 -fsyntax-only -fno-access-control -I"$ROOT/include" \
    -x c++ "$BUILD/natvis.cpp"
say "the debugger's views fit the headers"
