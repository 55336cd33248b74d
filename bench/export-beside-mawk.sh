#!/usr/bin/env bash
# Exports the same generated one-minute bars to five minutes with tadata and with mawk, in turn,
# checks that both wrote the same file, and prints time and peak memory of each run.
#
#   bench/export-beside-mawk.sh [LINES] [RUNS] [PRESET]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
install_packages mawk time

lines=${1:-2000000}
runs=${2:-3}
bin=build/${3:-release}/bin
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

series=NORD/MAIN/ALFA
"$bin/makebars" --lines "$lines" >"$work/bars.csv"
"$bin/tadata" import "$work/bars.csv" --series $series --decimals 2 \
    --columns date=2,time=3,open=4,high=5,low=6,close=7,volume=8 --store "$work/store"
files=("$work/store/$series"/*_60.iss)
echo "$lines bars in ${#files[@]} day files"

measure()
{
    /usr/bin/time -f "$1: %U s user, %S s system, %e s elapsed, %M KiB peak" "${@:2}"
}
with_mawk()
{
    (cd "$work/store/$series" && mawk -v timeframe=300 -v ticker=ALFA -f "$OLDPWD/bench/export.awk" *_60.iss) \
        >"$work/theirs.txt"
}
export -f with_mawk
export work series
for ((run = 0; run < runs; ++run)); do
    measure tadata "$bin/tadata" export "$work/ours.txt" --series $series --from 2000-01-01 \
        --to 2100-01-01 --today 2100-01-02 --timeframe 300 --store "$work/store"
    measure mawk bash -c with_mawk
done
cmp "$work/ours.txt" "$work/theirs.txt" &&
    echo "Both wrote the same $(wc -l <"$work/ours.txt") lines."
