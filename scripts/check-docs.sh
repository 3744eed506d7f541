#!/usr/bin/env bash
# check-docs.sh: makes the API reference (build/docs/html/index.html) without a warning, and checks
# the documents: links, pictures, code samples, and the names in them (scripts/lib/docs.py).
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"

clean_environment
arm_cleanup
mkdir -p "$LOGS"
need_packages "${DOCS_PACKAGES[@]}"
cd "$ROOT"

say "making the API reference"
rm -rf "$BUILD/docs"
mkdir -p "$BUILD/docs"
QKDLG_VERSION=$(sed -nE 's/^project\(QkDlg VERSION ([0-9.]+).*/\1/p' CMakeLists.txt)
[[ -n $QKDLG_VERSION ]] || fail "no version number in CMakeLists.txt"
export QKDLG_VERSION
# A warning is an error. What is not described is one.
run_logged doxygen "Doxygen has warnings, which" doxygen Doxyfile
[[ -s $BUILD/docs/html/index.html ]] || fail "no reference was made"

say "checking the documents"
run_job python3 "$ROOT/scripts/lib/docs.py" "$ROOT" || fail "the documents have faults (above)"
