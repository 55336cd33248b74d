#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds with the preset "coverage", runs the test suite and prints, by folder, how many lines and
# branches of the product it has run, and then the lines that it has not run in src/ and
# host/lib/history. Branches that only an exception takes do not count.
#
#   scripts/coverage.sh [NAME_PATTERN]     only the tests whose names match
#
# Without the tests of the packages, which build the product anew, and of single calls of the system:
# counting lines makes calls of its own.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

export TZ=UTC LC_ALL=C.UTF-8
# What a program says of its counts is no output of its own.
export GCOV_ERROR_FILE=/dev/null
install_packages "${build_packages[@]}" "${test_packages[@]}" "${coverage_packages[@]}"
cmake --preset coverage >/dev/null
cmake --build --preset coverage >&2
ninja -C build/coverage -t cleandead >/dev/null
# Nothing is counted yet, and each user may write what is; of sources that are gone, or lie elsewhere
# now, nothing is left.
find build/coverage -name '*.gcda' -delete
find build/coverage -name '*.gcno' | while read -r notes; do
    if [ -e "${notes%.gcno}.o" ]; then
        install -m 666 /dev/null "${notes%.gcno}.gcda"
    else
        rm "$notes"
    fi
done
# A test that fails has run lines, too; it is named, and fails this script at the end.
failed=0
ctest --preset coverage -LE 'packages|faults' -R "${1:-.}" >&2 || failed=1
find build/coverage -name '*.gcda' -empty -delete

gcovr --root . build/coverage --filter 'src/' --filter 'plugins/' --filter 'host/' --filter 'cli/' \
    --filter 'tools/' --exclude '.*_autogen/' --exclude-throw-branches \
    --json-summary build/coverage/folders.json --json build/coverage/lines.json
python3 - build/coverage/folders.json build/coverage/lines.json <<'PYTHON'
import collections, json, os, sys

kinds = ("line", "branch")
folders = collections.defaultdict(collections.Counter)
with open(sys.argv[1]) as summary:
    files = json.load(summary)["files"]
for file in files:
    name = file["filename"]
    parts = ["src", "plugins", "host/lib/history", "cli"]
    wholes = [part + ", whole" for part in parts if name.startswith(part + "/")]
    for folder in (os.path.dirname(name), "all", *wholes):
        for kind in kinds:
            folders[folder][kind + " run"] += file[kind + "_covered"]
            folders[folder][kind] += file[kind + "_total"]

def share(counts, kind):
    return "%7d %7d %6.1f%%" % (
        counts[kind], counts[kind + " run"], 100 * counts[kind + " run"] / max(counts[kind], 1))

print("%-32s %7s %7s %7s  %7s %7s %7s" % ("folder", "lines", "run", "share", "branch", "run", "share"))
for folder, counts in sorted(folders.items(), key=lambda item: (item[0] == "all", item[0])):
    print("%-32s %s  %s" % (folder, share(counts, "line"), share(counts, "branch")))

print("\nlines not run in src and host/lib/history")
with open(sys.argv[2]) as lines:
    files = json.load(lines)["files"]
for file in files:
    missed = [line["line_number"] for line in file["lines"]
              if line["count"] == 0 and not line["gcovr/noncode"]]
    if missed and file["file"].startswith(("src/", "host/lib/history/")):
        print(file["file"] + ":", *missed)
PYTHON
exit "$failed"
