# shellcheck shell=bash disable=SC2034
# Debian packages: looked for by dpkg-query, fetched only when something is missing. Sourced.

BUILD_PACKAGES=(cmake ninja-build libboost-dev g++-mingw-w64-x86-64-posix)
# The X libraries are those that Wine looks for at run time; without them it draws differently.
WINE_PACKAGES=(wine wine64 xvfb fonts-liberation fonts-open-sans fonts-wine libxcomposite1
    libxcursor1 libxfixes3 libxi6 libxinerama1 libxrandr2 libxrender1)
TEST_PACKAGES=(g++ g++-mingw-w64-i686-posix googletest)
# The example in Rust.
RUST_PACKAGES=(rustc libstd-rust-dev-windows)
# The fuzz targets, and the parser that one of them compares with.
FUZZ_PACKAGES=(clang libclang-rt-dev libexpat1-dev)
CLANG_PACKAGES=(clang clang-tidy clang-format binutils python3 git)
DOCS_PACKAGES=(doxygen g++-mingw-w64-x86-64-posix git python3)
BENCH_PACKAGES=(g++ libbenchmark-dev libpugixml-dev libxml2-dev)
PLOT_PACKAGES=(python3 python3-matplotlib)

is_installed() {
    [[ $(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null) == installed ]]
}

apt_get() {
    DEBIAN_FRONTEND=noninteractive apt-get -q -y -o DPkg::Lock::Timeout=300 "$@"
}

need_packages() {
    local package missing=()
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    ((EUID == 0)) || fail "packages are missing, install them as root: ${missing[*]}"
    say "installing ${missing[*]}"
    # One unreachable source need not stop the installation: whether it matters, the next step tells.
    run_job apt_get update >"$LOGS/apt-update.log" 2>&1 || true
    run_logged apt-install "installing ${missing[*]}" apt_get install --no-install-recommends "${missing[@]}"
}

# 32-bit Wine comes from a second package architecture, which not every machine can use. The
# answer is kept in build/wine32: "yes", or "no: REASON".
decide_wine32() {
    local answer=$BUILD/wine32
    if is_installed wine32:i386; then
        echo yes >"$answer"
    elif [[ -f $answer && $(<"$answer") == no:* ]]; then
        return 0
    elif ((EUID == 0)); then
        say "trying to install 32-bit Wine"
        rm -f "$LOGS/wine32.log"
        try_wine32 >>"$LOGS/wine32.log" 2>&1
    else
        echo "no: wine32 is not installed, and only root can install it" >"$answer"
    fi
}

has_wine32() { [[ -f $BUILD/wine32 && $(<"$BUILD/wine32") == yes ]]; }

why_no_wine32() { sed 's/^no: //' "$BUILD/wine32"; }

try_wine32() {
    if ! add_i386 || ! run_job apt_get update; then
        echo "no: the package lists for i386 cannot be fetched" >"$BUILD/wine32"
    elif ! run_job apt_get install --simulate --no-install-recommends wine32:i386; then
        echo "no: wine32:i386 does not fit the packages of this machine" >"$BUILD/wine32"
    elif ! run_job apt_get install --no-install-recommends wine32:i386; then
        echo "no: installing wine32:i386 failed" >"$BUILD/wine32"
    else
        ADDED_I386=
        echo yes >"$BUILD/wine32"
    fi
    forget_i386
}

add_i386() {
    dpkg --print-foreign-architectures | grep -qx i386 && return
    on_exit forget_i386
    ADDED_I386=1
    dpkg --add-architecture i386
}

# Leaves the machine's package architectures as they were found.
forget_i386() {
    [[ -n ${ADDED_I386:-} ]] || return 0
    dpkg --remove-architecture i386
    apt_get update || true
    ADDED_I386=
} >>"$LOGS/wine32.log" 2>&1
