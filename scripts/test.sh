#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Installs what is missing, builds and runs the test suite.
#
#   scripts/test.sh         what users run, in several time zones and locales; builds bench/ as well
#   scripts/test.sh dev     the same with debug information, and every file by what it includes itself
#   scripts/test.sh asan    with the address and undefined-behaviour sanitizers
#   scripts/test.sh tsan    what has threads, with the thread sanitizer
#
# A test that fails is run once more, since a loaded machine may keep a window waiting for seconds, and
# named at the end when it passes then. What a sanitizer has found counts whatever comes of it.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

preset=${1:-release-tests}
install_packages "${build_packages[@]}" "${test_packages[@]}"
case "$preset" in
    asan | tsan) install_packages "${clang_packages[@]}" ;;
esac
# The documents show how other tools read the store, and the packages are looked at by the
# distribution's checkers. With the packages here, a missing tool is a failure.
export TADATA_REQUIRE_TOOLS=1
if ! install_duckdb; then
    export TADATA_WITHOUT_DUCKDB=1
    echo "DuckDB cannot be installed from npm: what reads the store with it is skipped." >&2
fi
if ! locale -a | grep -qix 'ru_RU\.utf-\?8'; then
    as_root=()
    [ "$(id -u)" -eq 0 ] || as_root=(sudo)
    "${as_root[@]}" localedef -i ru_RU -f UTF-8 ru_RU.UTF-8
fi

cmake --preset "$preset" >/dev/null
cmake --build --preset "$preset"

log=$(mktemp)
trap 'rm -f "$log"' EXIT
run_suite()
{
    echo
    echo "== $preset: TZ=$1 LC_ALL=$2"
    TZ=$1 LC_ALL=$2 ctest --preset "$preset" --repeat until-pass:2 "${@:3}" | tee -a "$log"
}

run_suite UTC C.UTF-8 -LE x11
case "$preset" in
    dev | release-tests)
        run_suite UTC C.UTF-8 -L x11
        # What takes seconds does not depend on where it runs.
        run_suite Europe/Moscow ru_RU.UTF-8 -LE 'slow|x11'
        run_suite America/New_York C.UTF-8 -LE 'slow|x11'
        scripts/check-style.sh
        ;;
esac

twice=$(sed -n 's/.*Test *#[0-9]*: \([^ ]*\) .*\*\*\*.*/\1/p' "$log" | sort | uniq -c)
if [ -n "$twice" ]; then
    printf '\nPassed only when run once more:\n%s\n' "$twice"
fi
if grep -E 'WARNING: ThreadSanitizer|ERROR: (Address|Leak)Sanitizer|runtime error:' "$log"; then
    exit 1
fi
