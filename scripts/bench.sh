#!/usr/bin/env bash
# bench.sh [BENCHMARK ARGUMENTS...]
# bench.sh --controls [ControlBench ARGUMENTS...]
#
# Builds the benchmark of the XML library and runs it beside two other libraries, pinned to one
# core. The arguments go to the benchmark: --benchmark_filter=parse, say.
#
# With --controls: builds ControlBench and runs it under Wine on a display of its own, program and
# Wine server on one core. It compares flat controls with standard ones (docs/performance.md) and
# takes the parts and classes to measure: --only repaint,attach --kinds push,edit --rounds 15, say.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

bench_xml() {
    need_packages "${BUILD_PACKAGES[@]}" "${BENCH_PACKAGES[@]}"
    configure bench
    build bench
    run_job taskset -c 0 "$BUILD/bench/bin/XmlBench" "$@"
}

bench_controls() {
    need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
    configure mingw64
    build mingw64 --target ControlBench
    # The mouse is moved, and nothing else may paint meanwhile: never on the display of a person.
    unset DISPLAY XAUTHORITY
    export WINEPREFIX=$BUILD/wine
    start_session
    run_job "$ROOT/scripts/wine-run.sh" "$BUILD/mingw64/bin/ControlBench.exe" "$@"
}

clean_environment
arm_cleanup
lock_build
if [[ ${1:-} == --controls ]]; then
    bench_controls "${@:2}"
else
    bench_xml "$@"
fi
