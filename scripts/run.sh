#!/usr/bin/env bash
# Installs what is missing, builds, imports a demonstration file and lists what is stored.
# With a display the terminal opens afterwards, with the plug-in loaded.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

install_packages "${build_packages[@]}"
cmake --preset release >/dev/null
cmake --build --preset release

bin=build/release/bin
demo=build/release/demo.csv
"$bin/makebars" --lines 2500 --bars-per-day 500 >"$demo"

echo
echo "Importing $demo: $(($(wc -l <"$demo") - 1)) one-minute bars"
"$bin/tadata" import "$demo" --series NORD/MAIN/ALFA \
    --columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8

echo "Stored (series, timeframe in seconds, day files, first and last day, bytes):"
"$bin/tadata" list
echo "Day files:"
ls -l "$bin/user/tadata/NORD/MAIN/ALFA"

if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    echo "Opening the terminal. Close its window to come back."
    exec "$bin/vexdesk-desk"
fi
echo "No display: the terminal $bin/vexdesk-desk was not opened."
