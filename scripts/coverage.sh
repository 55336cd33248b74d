#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds with the preset "coverage", runs the test suite and prints, by folder, how many lines of the
# product it has run.
#
#   scripts/coverage.sh [NAME_PATTERN]     only the tests whose names match
#
# Without the tests of the packages, which build the product anew, and of single calls of the system:
# counting lines makes calls of its own.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

export TZ=UTC LC_ALL=C.UTF-8
install_packages "${build_packages[@]}" "${test_packages[@]}" "${coverage_packages[@]}"
cmake --preset coverage >/dev/null
cmake --build --preset coverage >&2
# What an earlier run has counted, and what is left of sources that are gone or lie elsewhere now.
find build/coverage -name '*.gcda' -delete
ninja -C build/coverage -t cleandead >/dev/null
find build/coverage -name '*.gcno' | while read -r notes; do
    [ -e "${notes%.gcno}.o" ] || rm "$notes"
done
# A test that fails has run lines, too; it is named, and fails this script at the end.
failed=0
ctest --preset coverage -LE 'packages|faults' -R "${1:-.}" >&2 || failed=1

gcovr --root . build/coverage --filter 'src/' --filter 'host/' --filter 'cli/' \
    --exclude '.*_autogen/' --json-summary - |
    python3 -c '
import collections, json, os, sys

folders = collections.defaultdict(lambda: [0, 0])
for file in json.load(sys.stdin)["files"]:
    for folder in (os.path.dirname(file["filename"]), "all"):
        folders[folder][0] += file["line_covered"]
        folders[folder][1] += file["line_total"]
print("%-32s %7s %7s %7s" % ("folder", "lines", "run", "share"))
for folder, (run, lines) in sorted(folders.items(), key=lambda item: (item[0] == "all", item[0])):
    print("%-32s %7d %7d %6.1f%%" % (folder, lines, run, 100 * run / max(lines, 1)))
'
exit "$failed"
