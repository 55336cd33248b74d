#!/usr/bin/env bash
# Imports the same generated one-minute lines with tadata and with mawk, in turn, checks that both
# wrote the same day files, and prints time and peak memory of each run.
#
#   bench/import-beside-mawk.sh [LINES] [RUNS] [PRESET]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages mawk time

lines=${1:-2000000}
runs=${2:-3}
bin=build/${3:-release}/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$bin/makebars" --lines "$lines" >"$work/bars.csv"
echo "$lines lines, $(stat -c %s "$work/bars.csv") bytes"

ours=$work/ours/NORD/MAIN/ALFA
theirs=$work/theirs
measure()
{
    /usr/bin/time -f "$1: %U s user, %S s system, %e s elapsed, %M KiB peak" "${@:2}"
}
for ((run = 0; run < runs; ++run)); do
    rm -rf "$work/ours" "$theirs"
    mkdir -p "$theirs"
    measure tadata "$bin/tadata" import "$work/bars.csv" --series NORD/MAIN/ALFA --decimals 2 \
        --columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8 --store "$work/ours"
    measure mawk mawk -v dir="$theirs" -f bench/import.awk "$work/bars.csv"
done
diff -rq "$ours" "$theirs" && echo "Both wrote the same $(find "$theirs" -type f | wc -l) day files."
