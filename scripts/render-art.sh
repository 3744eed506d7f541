#!/bin/sh
# Renders the drawings in res/art into res/bitmaps and writes res/bitmaps.rc.
# Installs the rasteriser first when it is missing.  Arguments are handed on to
# tools/render_art.py; --check compares instead of writing.
set -eu

root=$(CDPATH='' cd -- "$(dirname -- "$0")/.." && pwd)

missing=
command -v python3 >/dev/null 2>&1 || missing="$missing python3"
command -v rsvg-convert >/dev/null 2>&1 || missing="$missing librsvg2-bin"
if [ -n "$missing" ]; then
    if [ "$(id -u)" -eq 0 ]; then sudo=; else sudo=sudo; fi
    $sudo apt-get update
    # shellcheck disable=SC2086
    $sudo apt-get install -y --no-install-recommends $missing
fi

exec python3 "$root/tools/render_art.py" "$@"
