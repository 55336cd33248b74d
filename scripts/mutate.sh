#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Changes the product in one place at a time and runs the tests that reach that place: a change that no
# test sees is printed. It works on a copy in build/mutants, which is built once with all changes in it;
# each time another one of them is chosen.
#
#   scripts/mutate.sh [--count N] [--seed S] [--only N,...] [--patience N] [--faults] [--list] [FILE...]
#
#   --count N    how many changes, chosen at random (10)
#   --seed S     with which seed (1); the same seed at the same commit makes the same changes
#   --only N,... of these changes only those with these numbers
#   --patience N asks no more tests of a change after N seconds
#   --faults     also asks the tests of faults, the last and for minutes
#   --list       only says what they would be
#   FILE...      in these sources of src/ and host/lib/history; without them in all
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

install_packages "${build_packages[@]}" "${test_packages[@]}"
copy=build/mutants/source
mkdir -p "$copy"
# What is the same is not copied, so not built anew; the sources to be changed are written afterwards.
(cd "$copy" && find . -type f) | sed 's|^\./||' | sort | comm -23 - <(git ls-files | sort) |
    sed "s|^|$copy/|" | xargs -r -d '\n' rm
git ls-files | while read -r file; do
    [[ -e "$copy/$file" && "$file" =~ ^(src|host/lib/history)/.*\.(cpp|h)$ ]] ||
        cmp -s "$file" "$copy/$file" || echo "$file"
done | xargs -r -d '\n' cp --parents -t "$copy"
cmake -S "$copy" -B build/mutants/build -G Ninja -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 \
    -DCMAKE_EXPORT_COMPILE_COMMANDS=ON -DTADATA_PRECOMPILED_HEADERS=ON \
    -DTADATA_WARNINGS_AS_ERRORS=OFF >/dev/null
exec env TZ=UTC LC_ALL=C.UTF-8 python3 scripts/mutate.py . "$copy" build/mutants/build "$@"
