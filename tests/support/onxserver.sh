#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# onxserver.sh PROGRAM [ARGUMENT...]: runs a program on an X server of its own, with a window manager.
# Its exit code is the program's.
set -euo pipefail

files=$(mktemp -d) # only for its owner
jobs=()
end()
{
    kill "${jobs[@]}" 2>/dev/null || true
    wait "${jobs[@]}" 2>/dev/null || true
    rm -rf "$files"
}
trap end EXIT

# The server looks for a free number itself: several tests start at once.
mkfifo "$files/display"
Xvfb -displayfd 3 -screen 0 2560x1600x24 -nolisten tcp -noreset 3>"$files/display" 2>"$files/server" &
jobs+=($!)
read -r display <"$files/display" || { cat "$files/server" >&2; exit 1; }
export DISPLAY=:$display
# What stands in the user's own configuration is nothing to a test. Windows that are shown before there
# is somebody who manages them are not managed as others are.
mkfifo "$files/managed"
HOME=$files XDG_CONFIG_HOME=$files openbox --sm-disable --startup "sh -c 'echo yes >$files/managed'" \
    2>"$files/manager" &
jobs+=($!)
read -r -t 60 _ <>"$files/managed" || { cat "$files/manager" >&2; exit 1; }
XDG_RUNTIME_DIR=$files QT_QPA_PLATFORM=xcb "$@"
