#!/bin/sh
# SPDX-License-Identifier: MIT
# Runs a program beside a window manager, openbox, which is told to go when the program has ended:
#
#   withwindowmanager.sh OPENBOX PROGRAM [ARGUMENT...]
set -eu
openbox=$1
shift
place=$(mktemp -d)
mkfifo "$place/ready"
# Windows that are shown before there is somebody who manages them are not managed as others are.
"$openbox" --startup "sh -c 'echo > $place/ready'" &
manager=$!
trap 'kill $manager; rm -rf "$place"' EXIT
read -r _ < "$place/ready" || true
"$@"
