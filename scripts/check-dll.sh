#!/usr/bin/env bash
# check-dll.sh FILE.dll: the DLL exports its four functions under their plain names, needs nothing
# but system DLLs, and carries its version and its manifest.
set -euo pipefail
# shellcheck source=lib/common.sh
source "$(dirname -- "${BASH_SOURCE[0]}")/lib/common.sh"

EXPORTS="CreateQkCustomControl DeleteQkCustomControl FlatStyleEnabled GetUIColor"
# Present on every Windows that the library supports.
SYSTEM_DLLS="advapi32 bcrypt combase comctl32 comdlg32 dwmapi gdi32 gdiplus imm32 kernel32 msimg32
    msvcrt ntdll ole32 oleacc oleaut32 rpcrt4 shell32 shlwapi ucrtbase user32 usp10 uxtheme version
    windowscodecs winmm"
TYPE_VERSION=16
TYPE_MANIFEST=24

(($# == 1)) || fail "usage: check-dll.sh FILE.dll"
[[ -f $1 ]] || fail "no such file: $1"
name=${1##*/}
# This one reads 32-bit files, too.
dump=$(x86_64-w64-mingw32-objdump -p "$1") || fail "$name cannot be read"

exports() {
    sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p' <<<"$dump" | sort
}

imports() { sed -n 's/^\tDLL Name: //p' <<<"$dump" | tr '[:upper:]' '[:lower:]' | sort -u; }

# Prints "TYPE ID" for each resource; objdump indents types by three and ids by five blanks.
resources() {
    local line type=
    while read -r line; do
        if [[ $line =~ ^[0-9a-f]+\ \ \ Entry:\ ID:\ (0x[0-9a-f]+) ]]; then
            type=${BASH_REMATCH[1]}
        elif [[ $line =~ ^[0-9a-f]+\ \ \ \ \ Entry:\ ID:\ (0x[0-9a-f]+) ]]; then
            echo "$((type)) $((BASH_REMATCH[1]))"
        fi
    done < <(grep -E '^[0-9a-f]+ +Entry: ID: ' <<<"$dump")
}

has_resource() { resources | grep -x "$1 $2" >/dev/null; }

mapfile -t differing < <(comm -3 <(exports) <(tr ' ' '\n' <<<"$EXPORTS"))
((${#differing[@]} == 0)) ||
    fail "$name does not export exactly '$EXPORTS': too many or missing: ${differing[*]:0:5}"

foreign=()
while read -r dll; do
    [[ $dll == api-ms-win-*.dll ]] && continue
    grep -qwF "${dll%.dll}" <<<"$SYSTEM_DLLS" || foreign+=("$dll")
done < <(imports)
((${#foreign[@]} == 0)) || fail "$name needs ${foreign[*]}, which Windows does not bring along"

has_resource "$TYPE_VERSION" 1 || fail "$name has no version resource"
has_resource "$TYPE_MANIFEST" 2 || fail "$name has no manifest with id 2"
say "$name has its exports, imports and resources in order"
