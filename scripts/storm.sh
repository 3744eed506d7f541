#!/usr/bin/env bash
# storm.sh [--dpi N] [--v5] [STORM ARGUMENTS...]
#
# Builds the storm (tests/storm) and lets it go over each class of flat control with 1,000,000
# messages, for hours. --v5 takes common controls 5.8. Everything else goes to the storm:
#   --messages N   so many for each class
#   --class NAME   only one class, "mixed" or "dialog"
#   --seed S       other numbers than those of seed 1
#   --round N      only one round, as a failure names it
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"

program=StormTests6
dpi=96
arguments=(--messages 1000000)
while (($#)); do
    case $1 in
        --v5) program=StormTests5 ;;
        --dpi)
            (($# > 1)) || fail "$1 needs a value"
            dpi=$2
            shift
            ;;
        *) arguments+=("$1") ;;
    esac
    shift
done

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
configure mingw64
build mingw64 --target "$program"
unset DISPLAY XAUTHORITY
run_job "$ROOT/scripts/wine-run.sh" --dpi "$dpi" "$BUILD/mingw64/bin/$program.exe" "${arguments[@]}"
