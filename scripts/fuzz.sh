#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Builds the fuzz targets with the preset "fuzz" and runs each with its corpus for so long.
#
#   scripts/fuzz.sh MINUTES [TARGET...]     all targets, or the named ones (fuzz_guess ...)
#   scripts/fuzz.sh SECONDSs [TARGET...]    for so many seconds, 7s for example, with the same seed each time
#
# What is found lies in build/found: an input that ends a target as "crash-...", and below the target's
# name what has led it to places that the corpus does not reach. The script fails when a target did.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

if ! [[ "${1:-}" =~ ^[1-9][0-9]*s?$ ]]; then
    sed -n '3,/^set /{/^set /d;s/^# \{0,1\}//;p}' scripts/fuzz.sh >&2
    exit 2
fi
case $1 in
    # Continuous integration: a push does not fail for what it has not changed.
    *s) seconds=${1%s} seed=1 ;;
    *) seconds=$(($1 * 60)) seed=0 ;;
esac
shift

install_packages "${build_packages[@]}" "${clang_packages[@]}"
cmake --preset fuzz >/dev/null
targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
    for source in fuzz/fuzz_*.cpp; do
        targets+=("$(basename "$source" .cpp)")
    done
fi
cmake --build --preset fuzz --target "${targets[@]}" >&2

echo "Commit $(git describe --always --dirty), $seconds seconds each"
failed=()
for target in "${targets[@]}"; do
    found=build/found/$target
    mkdir -p "$found"
    log=build/found/$target.log
    QT_QPA_PLATFORM=offscreen build/fuzz/bin/"$target" -max_total_time="$seconds" -seed="$seed" -timeout=60 \
        -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="build/found/$target-" \
        "$found" "fuzz/corpus/${target#fuzz_}" >"$log" 2>&1 || failed+=("$target")
    runs=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")
    echo "$target: ${runs:-no} runs, $(find "$found" -type f | wc -l) new inputs"
done
for target in "${failed[@]+"${failed[@]}"}"; do
    echo "Failed: $target" >&2
    tail -n 20 "build/found/$target.log" >&2
done
[ ${#failed[@]} -eq 0 ]
