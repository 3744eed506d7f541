#!/usr/bin/env bash
# check-format.sh: all C and C++ files of the repository are formatted as .clang-format says.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"

clean_environment
arm_cleanup
mkdir -p "$LOGS"
need_packages clang-format git
cd "$ROOT"
mapfile -t files < <(source_files src lib include tests examples xml bench tools)
((${#files[@]})) || fail "no source files found"
say "checking the format of ${#files[@]} files"
run_logged format "the format check (clang-format -i mends it)" clang-format --dry-run -Werror "${files[@]}"
