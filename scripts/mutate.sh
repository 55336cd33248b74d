#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Changes the product in one place at a time, builds it and runs the tests that are linked with that
# place: a change that no test sees is printed. It works on a copy in build/mutants.
#
#   scripts/mutate.sh [--count N] [--seed S] [--list] [FILE...]
#
#   --count N    how many changes, chosen at random (10)
#   --seed S     with which seed (1); the same seed at the same commit makes the same changes
#   --list       only says what they would be
#   FILE...      in these files of src/ and host/lib/history; without them in all
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

install_packages "${build_packages[@]}" "${test_packages[@]}"
copy=build/mutants/source
mkdir -p "$copy"
# Files keep their times, so that what is the same is not built anew.
git ls-files -z | xargs -0 cp --parents -u -p -t "$copy"
cmake -S "$copy" -B build/mutants/build -G Ninja -DCMAKE_BUILD_TYPE=Debug \
    -DTADATA_PRECOMPILED_HEADERS=ON -DTADATA_WARNINGS_AS_ERRORS=OFF >/dev/null
exec env QT_QPA_PLATFORM=offscreen CCACHE_READONLY=1 \
    python3 scripts/mutate.py "$copy" build/mutants/build "$@"
