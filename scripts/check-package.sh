#!/usr/bin/env bash
# check-package.sh: what host developers get is complete and works where they put it. The tree that
# is installed, and the zip of each architecture, lie somewhere else than they were made for; hosts
# outside the source tree build against them, and the 64-bit ones run: the classes, the DLL through
# its import library in C and C++, the examples. No version number and no file of the package
# differs from what the project says, and no folder of this machine is named in any.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"
# shellcheck source=lib/packages.sh
source "$ROOT/scripts/lib/packages.sh"
# shellcheck source=lib/presets.sh
source "$ROOT/scripts/lib/presets.sh"
# shellcheck source=lib/wine.sh
source "$ROOT/scripts/lib/wine.sh"

# The one place of the number.
version=$(sed -nE 's/^project\(QkDlg VERSION ([0-9.]+) .*/\1/p' "$ROOT/CMakeLists.txt")
[[ $version =~ ^[0-9]+\.[0-9]+\.[0-9]+$ ]] || fail "no version in CMakeLists.txt"

# build_hosts BITS PACKAGE: all hosts against the package, in work/BITS-*.
build_hosts() {
    local bits=$1 config=$2/lib/cmake/QkDlg host source
    local -A settings=([installed_host]="-DQKDLG_VERSION=$version \
        -DQKDLG_NEXT_MAJOR=$((${version%%.*} + 1)) -DQKDLG_OTHER_POINTER=$((bits == 64 ? 4 : 8))")
    say "building hosts of the $bits-bit package"
    for host in installed_host c_host cpp_host rust_host; do
        # Rust's Windows target is there for 64 bits only.
        [[ $host != rust_host || $bits == 64 ]] || continue
        source=$2/share/doc/QkDlg/examples/$host
        [[ $host != installed_host ]] || source=$work/$host
        # shellcheck disable=SC2086
        run_logged "package-$host$bits" "configuring $host for $bits bits" cmake -G Ninja \
            -S "$source" -B "$work/$bits-$host" -DCMAKE_BUILD_TYPE=Release "-DQkDlg_DIR=$config" \
            --toolchain "$ROOT/cmake/toolchains/mingw$bits.cmake" ${settings[$host]:-}
        run_logged "package-$host$bits" "building $host for $bits bits" \
            cmake --build "$work/$bits-$host"
    done
}

# The fixed part of the version resource, and its texts.
check_version() {
    local file=$1 numbers=${version//./,},0
    python3 - "$file" "$numbers" <<'PYTHON' || fail "${file##*/} has another version than $version"
import struct, sys
data, numbers = open(sys.argv[1], "rb").read(), [int(n) for n in sys.argv[2].split(",")]
fixed = struct.unpack_from("<4H4H", data, data.index(b"\xbd\x04\xef\xfe") + 8)
wanted = [numbers[1], numbers[0], numbers[3], numbers[2]] * 2
texts = [(name + "\0").encode("utf-16-le") for name in ("FileVersion", "ProductVersion")]
text = (".".join(map(str, numbers)) + "\0").encode("utf-16-le")
near = [data[data.index(t) :][: len(t) + len(text) + 4] for t in texts]
sys.exit(list(fixed) != wanted or not all(text in n for n in near))
PYTHON
}

# check_tree BITS FOLDER
check_tree() {
    local bits=$1 file named
    check_version "$2/bin/QkDlg$bits.dll"
    grep -q "PACKAGE_VERSION \"$version\"" "$2/lib/cmake/QkDlg/QkDlgConfigVersion.cmake" ||
        fail "the CMake package has another version than $version"
    grep -m1 '^## ' "$2/share/doc/QkDlg/CHANGELOG.md" | grep -qxF "## $version" ||
        fail "the newest entry of CHANGELOG.md is not $version"
    for file in "bin/QkPreview.exe" "lib/libQkDlgStatic$bits.a" "lib/libQkDlg$bits.dll.a" \
        include/QkDlg/QkDlg.h share/QkDlg/{QkDlg.natvis,QkDlg.rc,dlg_xml.xsd} \
        share/doc/QkDlg/{README.md,docs/controls.md,examples/c_host/README.md}; do
        [[ -s $2/$file ]] || fail "the $bits-bit package lacks $file"
    done
    named=$(grep -rlaF -e "$ROOT" -e "$work" "$2") || true
    [[ -z $named ]] || fail "folders of this machine are named in ${named//$'\n'/, }"
    check_symbols "$2/bin" "QkDlg$bits.dll"
}

# The DLL names its symbol file, which knows the sources by their place in the project.
check_symbols() {
    local address
    x86_64-w64-mingw32-objdump -s -j .gnu_debuglink "$1/$2" >"$LOGS/debuglink.log" ||
        fail "$2 names no symbol file"
    [[ $(x86_64-w64-mingw32-nm "$1/$2" 2>&1) == *"no symbols"* ]] || fail "$2 is not stripped"
    address=$(x86_64-w64-mingw32-nm "$1/$2.debug" | sed -nE 's/ T _?CreateQkCustomControl$//p')
    [[ $(x86_64-w64-mingw32-addr2line -e "$1/$2.debug" "$address") =~ ^QkDlg/.*Exports\.cpp:[1-9] ]] ||
        fail "$2.debug does not know where CreateQkCustomControl is"
}

# listing FOLDER: its files.
listing() { (cd "$1" && find . -type f | sort); }

clean_environment
arm_cleanup
lock_build
need_packages "${BUILD_PACKAGES[@]}" "${TEST_PACKAGES[@]}" "${WINE_PACKAGES[@]}" \
    "${RUST_PACKAGES[@]}" binutils python3
work=$(mktemp -d)
remove_work() { rm -rf "$work"; }
on_exit remove_work
cp -r "$ROOT/tests/installed_host" "$work"
# A blank in the path, as Windows has in "Program Files".
mkdir "$work/moved here" "$work/out"

for bits in 64 32; do
    configure "mingw$bits"
    build "mingw$bits" --target QkDlg QkPreview
    run_logged "cpack$bits" "making the $bits-bit package" \
        cpack --config "$BUILD/mingw$bits/CPackConfig.cmake" -B "$BUILD/packages"
    zip=$BUILD/packages/QkDlg-$version-win$bits.zip
    [[ -f $zip ]] || fail "cpack has made no $(shown "$zip")"
    (cd "$work/moved here" && cmake -E tar xf "$zip")
    package="$work/moved here/QkDlg-$version-win$bits"
    check_tree "$bits" "$package"
    build_hosts "$bits" "$package"
done

build mingw64 --target ExampleTests
run_logged install "installing" cmake --install "$BUILD/mingw64" --prefix "$work/installed"
different=$(comm -3 <(listing "$work/installed") <(listing "$work/moved here/QkDlg-$version-win64"))
[[ -z $different ]] || fail "cmake --install and cpack differ: ${different//$'\n'/, }"

# The input must not go to a person's display.
unset DISPLAY XAUTHORITY
export WINEPREFIX=$BUILD/wine
start_session
run_host() { run_logged "$1" "running ${1##*/}" timeout 120 "$ROOT/scripts/wine-run.sh" "$2/$1.exe"; }
say "running the hosts"
for host in InstalledHost DllHostC DllHostCpp; do
    run_host "$host" "$work/64-installed_host"
done
cp "$work"/64-*_host/*.exe "$work/64-c_host/QkDlg64.dll" "$BUILD/mingw64/bin/ExampleTests.exe" "$work/out"
run_host ExampleTests "$work/out"
grep -q 'OK.*RustHost' "$LOGS/ExampleTests.log" || fail "the Rust host was not tried"
say "the packages are complete, and hosts of them run flat"
