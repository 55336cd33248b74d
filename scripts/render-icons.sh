#!/bin/sh
# SPDX-License-Identifier: MIT
# Renders the PNG files of every drawing in the icon folders: 24 and 48 pixels for those of commands, more
# for the terminal's own.
set -eu
cd "$(dirname "$0")/.."

render() # DRAWING SIZE ENDING
{
  rsvg-convert --width="$2" --height="$2" --output="${1%.svg}$3.png" "$1"
}

for drawing in src/plugin/icons/*.svg plugins/*/plugin/icons/*.svg host/desk/icons/*.svg; do
  case $drawing in
    */vexdesk.svg)
      for size in 16 24 32 48 64 128 256; do
        render "$drawing" "$size" "-$size"
      done
      ;;
    *)
      render "$drawing" 24 ""
      render "$drawing" 48 "@2x"
      ;;
  esac
done
