#!/usr/bin/env bash
# bench.sh [BENCHMARK ARGUMENTS...]
# bench.sh --controls [--plot FILE] [ControlBench ARGUMENTS...]
#
# Builds the benchmark of the XML library and runs it beside two other libraries, pinned to one
# core. The arguments go to the benchmark: --benchmark_filter=parse, say.
#
# With --controls: builds ControlBench and runs it under Wine on a display of its own, program and
# Wine server on one core. It compares flat controls with standard ones (docs/performance.md). Its
# arguments choose what to measure: --only repaint,attach --kinds push,edit --rounds 15, say. The
# figures also go to out/bench.json; --plot draws how costs grow with the size of dialogs and lists.
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
    local figures=$ROOT/out/bench.json picture=
    if [[ ${1:-} == --plot ]]; then
        (($# > 1)) || fail "--plot needs a file"
        picture=$(realpath -m -- "$2")
        shift 2
        need_packages "${PLOT_PACKAGES[@]}"
    fi
    need_packages "${BUILD_PACKAGES[@]}" "${WINE_PACKAGES[@]}"
    configure mingw64
    build mingw64 --target ControlBench
    # The mouse is moved, and nothing else may paint meanwhile: never on the display of a person.
    unset DISPLAY XAUTHORITY
    export WINEPREFIX=$BUILD/wine
    start_session
    mkdir -p "${figures%/*}"
    run_job "$ROOT/scripts/wine-run.sh" "$BUILD/mingw64/bin/ControlBench.exe" \
        --json "Z:${figures//\//\\}" "$@"
    say "figures: $(shown "$figures")"
    [[ -n $picture ]] || return 0
    run_logged plot "drawing the plot" python3 "$ROOT/scripts/lib/plot_bench.py" "$figures" "$picture"
    say "plot: $(shown "$picture")"
}

clean_environment
arm_cleanup
lock_build
if [[ ${1:-} == --controls ]]; then
    bench_controls "${@:2}"
else
    bench_xml "$@"
fi
