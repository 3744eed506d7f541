#!/usr/bin/env bash
# bench.sh [BENCHMARK ARGUMENTS...]
#
# Builds the benchmark of the XML library and runs it beside two other libraries, pinned to one
# core. The arguments go to the benchmark: --benchmark_filter=parse, say.
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
need_packages "${BUILD_PACKAGES[@]}" "${BENCH_PACKAGES[@]}"
configure bench
build bench
run_job taskset -c 0 "$BUILD/bench/bin/XmlBench" "$@"
