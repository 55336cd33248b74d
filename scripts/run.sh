#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds, and shows the terminal at work.
#
# With a display the terminal opens with the plug-in loaded; the demonstration file lies where its
# file dialog opens. Without one, the terminal imports, edits and exports bars by itself, from the
# menu to the files, and leaves a picture of every step. What is stored is listed at the end.
#
#   scripts/run.sh [BUILD_DIR]     with a build that is there, such as build/dev (build/release, built first)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

build=${1:-}
if [ -z "$build" ]; then
    build=build/release
    install_packages "${build_packages[@]}"
    cmake --preset release >/dev/null
    cmake --build --preset release
fi

build=$(cd "$build" && pwd)
bin=$build/bin
demo=$build/demo
mkdir -p "$demo"
"$bin/makebars" --lines 2500 --bars-per-day 500 >"$demo/demo.csv"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    [ -z "${WAYLAND_DISPLAY:-}" ] || install_packages qt6-wayland
    cat <<END

Opening the terminal. Choose "Import..." ("Импортировать...", Shift+I) and take the file demo.csv:
one-minute bars with commas, dates yyyymmdd (ггггммдд), times hhmmss (ччммсс). Close the window to
come back.
END
    (cd "$demo" && "$bin/vexdesk-desk")
else
    echo
    echo "No display: the terminal shows its commands by itself."
    # The offscreen platform complains about what it is not.
    QT_QPA_PLATFORM=offscreen "$bin/vexdesk-tour" "$build/tour" \
        2> >(grep -v '^This plugin does not support\|XDG_RUNTIME_DIR' >&2)
    echo "Pictures: $build/tour"
    echo
    echo "The same from the command line, with $demo/demo.csv:"
    "$bin/tadata" import "$demo/demo.csv" --series NORD/MAIN/VEGA \
        --columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8
fi

echo
echo "Stored (series, timeframe in seconds, day files, first and last day, bytes):"
"$bin/tadata" list
echo
echo "Day files:"
(cd "$bin/user/tadata" && find . -name '*.iss' | sort | sed 's|^\./|  |')
