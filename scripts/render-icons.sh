#!/bin/sh
# SPDX-License-Identifier: MIT
# Renders the PNG files (24 and 48 pixels) of every drawing in the plug-ins' icon folders.
set -eu
cd "$(dirname "$0")/.."
for drawing in src/plugin/icons/*.svg plugins/*/plugin/icons/*.svg; do
  name=${drawing%.svg}
  rsvg-convert --width=24 --height=24 --output="$name.png" "$drawing"
  rsvg-convert --width=48 --height=48 --output="$name@2x.png" "$drawing"
done
