#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Makes the pictures of the documents anew: the terminal goes through its commands by itself, once in
# each language, and the pictures that the documents show are taken over.
#
#   scripts/pictures.sh [BIN_DIR]     the folder of vexdesk-tour (build/dev/bin)
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bin=${1:-build/dev/bin}
[ -x "$bin/vexdesk-tour" ] || { echo "There is no $bin/vexdesk-tour: build it first." >&2; exit 1; }
# Always the same place, because the pictures show it; somebody else's is not taken.
work=/tmp/vexdesk
mkdir -m 700 "$work"
trap 'rm -rf "$work"' EXIT
# The screen of its own that the platform has is smaller than the window.
export QT_QPA_PLATFORM="offscreen:configfile=$PWD/tests/support/largescreen.json"
export XDG_RUNTIME_DIR=$work TZ=UTC
unset LC_ALL
declare -A locale=([ru]=ru_RU.UTF-8 [en]=en_GB.UTF-8)

for language in ru en; do
    # A copy: the tour fills the store beside the program.
    cp -r "$bin" "$work/bin"
    rm -rf "$work/bin/user"
    LANG=${locale[$language]} "$work/bin/vexdesk-tour" --language "$language" "$work/$language"
    rm -rf "${work:?}/bin"
done
# Nothing is replaced before all of them are there.
for language in ru en; do
    mkdir -p "docs/images/$language"
    rm -f "docs/images/$language"/*.png
    # shellcheck disable=SC2013
    for name in $(grep -rhoE "images/$language/[a-z0-9-]+\.png" README.md docs/*.md | sort -u); do
        # The tour numbers its pictures; the documents do without.
        cp "$work/$language"/[0-9][0-9]-"$(basename "$name")" "docs/$name"
    done
done
