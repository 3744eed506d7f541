#!/usr/bin/env bash
# check-install.sh: a small host outside the source tree builds against the installed class library
# and runs flat.
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
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
configure mingw64
build mingw64 --target QkDlg

work=$(mktemp -d)
remove_work() { rm -rf "$work"; }
on_exit remove_work
cp -r "$ROOT/tests/installed_host" "$work/source"
run_logged install "installing" cmake --install "$BUILD/mingw64" --prefix "$work/prefix"
say "building a host of the installed library"
run_logged configure-host "configuring the host" cmake -G Ninja -S "$work/source" -B "$work/build" \
    --toolchain "$ROOT/cmake/toolchains/mingw64.cmake" -DQkDlg_DIR="$work/prefix/lib/cmake/QkDlg"
run_logged build-host "building the host" cmake --build "$work/build"
# The input must not go to a person's display.
unset DISPLAY
run_logged host "running the host" timeout 120 "$ROOT/scripts/wine-run.sh" "$work/build/InstalledHost.exe"
say "the host runs flat"
