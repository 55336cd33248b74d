#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Fails when a file is not formatted, when an include goes against the arrows and a compiler would
# not say so, or when a test posts mouse and keys itself.
#
#   scripts/check-style.sh            the above: seconds
#   scripts/check-style.sh changed [COMMIT]
#                                     and clang-tidy and unneeded includes, in files that have changed;
#                                     and whether clang compiles what includes them, each by itself
#   scripts/check-style.sh pushed     the same of what was pushed, in some seven minutes: of a large push
#                                     it looks at the files that have changed most, names the others
#   scripts/check-style.sh tidy BUILD and the same in every file: an hour. The preset "tidy" does this.
#
# Changed is what has changed since the commit; without one, since the branch left the main branch, and
# on the main branch itself what the last commit has changed. Files that are not committed yet belong to
# it. A clone does not say what was pushed: that is what came in the six hours before its last commit.
# No headers are precompiled for this: a file that does not include what it uses is found.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh

mode=${1:-}
since=
build=build/tidy
# How many files clang-tidy looks at, and how many more are compiled.
most_tidied=
most_compiled=
case "$mode" in
    "") ;;
    changed) since=${2:-} ;;
    pushed)
        most_tidied=30
        most_compiled=40
        ;;
    tidy) build=${2:?the folder of a build, as the preset tidy gives it} ;;
    *) sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' scripts/check-style.sh >&2; exit 2 ;;
esac

failed=0
complain()
{
    echo "$1" >&2
    failed=1
}

mapfile -t sources < <(git ls-files --cached --others --exclude-standard '*.cpp' '*.h' |
    while read -r file; do [ ! -f "$file" ] || echo "$file"; done)
clang-format --dry-run --Werror "${sources[@]}" || complain "clang-format -i would change these files"

# The licence of a file stands in its first lines, for those who meet it outside this tree.
unlicensed=$(git ls-files --cached --others --exclude-standard '*.cpp' '*.h' '*.mjs' '*.sh' '*.py' \
    '*.awk' '*.cmake' '*CMakeLists.txt' .ci/run | while read -r file; do
    [ ! -f "$file" ] || head -2 "$file" | grep -q 'SPDX-License-Identifier: MIT' || echo "$file"
done)
[ -z "$unlicensed" ] || complain "No SPDX-License-Identifier in the first lines of:
$unlicensed"

# The compiler refuses most arrows, since it does not find what a library is not linked to. It does not
# refuse these: may_not_include PATTERN FOLDER-OR-FILE...
may_not_include()
{
    local found
    found=$(grep -rnP "^#\s*include\s+[\"<]($1)" "${@:2}" --include='*.h' --include='*.cpp' || true)
    [ -z "$found" ] || complain "Against the arrows:
$found"
}
# Upwards every folder is found.
may_not_include '\.\./' host src plugins cli tools tests fuzz bench
# host/ is where the terminal's own folders are looked for: one finds another, and the libraries' sources.
may_not_include 'lib/' host/desk tools tests fuzz bench
may_not_include 'desk/[a-z]+\.h' host/desk/chart
# A window by its bare name alone, which the compiler finds only for what is built upon windows.
may_not_include '.*windows/' src plugins cli tools tests fuzz bench
# Whoever is linked to one library of host/ or of Qt finds the headers of all.
may_not_include 'vexdesk/terminal/' src plugins
may_not_include 'vexdesk/history/' host/lib/core host/lib/gui src/jobs
mapfile -t chart_data < <(sed -n '/^add_library(vexdesk-desk-chartdata/,/)$/p' host/desk/chart/CMakeLists.txt |
    grep -oE '[a-z]+\.(cpp|h)' | sed 's|^|host/desk/chart/|')
chart_headers=$(printf '%s|' "${chart_data[@]#host/}")
may_not_include "(?<=\")(?!${chart_headers%|})" "${chart_data[@]}"
mapfile -t windowless < <(printf '%s\n' "${sources[@]}" |
    grep -E '^(cli|src|plugins|host/lib/(core|history)|host/include/vexdesk/[a-z]+)/' |
    grep -vE '/windows/|^src/widgets/|/plugin/tadata(manager|quality)\.')
gui_headers=$(basename -s .cpp host/lib/gui/*.cpp | paste -sd '|')
may_not_include "vexdesk/($gui_headers)\.h" "${windowless[@]}" host/desk/chart src/jobs
may_not_include 'Qt(Gui|Svg|Widgets)/' "${windowless[@]}" "${chart_data[@]}"

# Qt Test's mouse and keys reach what no user can. Who wants them says why in the lines above.
posted=$(printf '%s\n' "${sources[@]}" | grep '^tests/' | grep -v '^tests/support/hands\.cpp$' |
    xargs awk 'FNR == 1 { said = -9 } /^ *\/\// { said = FNR }
        /QTest::(mouse|key)[A-Z]/ && FNR - said > 4 { print FILENAME ":" FNR }')
[ -z "$posted" ] || complain "Mouse and keys that are not those of support/hands.h, and no comment why:
$posted"

# The last commit that is six hours older than the newest. Nothing in a clone that does not go back so far.
commit_before_push()
{
    local newest
    newest=$(git log -1 --format=%ct)
    git log -1 --first-parent --until="$((newest - 6 * 60 * 60))" --format=%H
}

# The commit that changes are counted from.
base_commit()
{
    local branch base
    [ "$mode" != pushed ] || since=$(commit_before_push)
    if [ -n "$since" ]; then
        git rev-parse --verify --quiet "$since" && return
    fi
    for branch in origin/HEAD origin/main origin/master main master; do
        base=$(git merge-base HEAD "$branch" 2>/dev/null) || continue
        if [ "$base" != "$(git rev-parse HEAD)" ]; then
            echo "$base"
            return
        fi
    done
    # A clone may hold a single commit.
    git rev-parse --verify --quiet HEAD~1 ||
        { git fetch --quiet --deepen=1 2>/dev/null && git rev-parse --verify --quiet HEAD~1; }
}

# The files that have changed, and a source for each header that none of them includes. The product comes
# first, and what has changed most.
changed_files()
{
    local base added file users
    local -A lines=()
    if ! base=$(base_commit); then
        echo "No earlier commit is known: every file counts as changed." >&2
        printf '%s\n' "${sources[@]}"
        return
    fi
    echo "Changed is what came after $(git log -1 --format='%h of %ci' "$base")." >&2
    while IFS=$'\t' read -r added _ file; do
        [[ ! -f "$file" || "$file" != *.@(cpp|h) ]] || lines[$file]=$added
    done < <(
        git diff --numstat --no-renames "$base"
        git ls-files --others --exclude-standard | sed 's/^/0\t0\t/'
    )
    for file in "${!lines[@]}"; do
        echo "${lines[$file]} $file"
        [[ "$file" == *.h ]] || continue
        users=$(sources_with "$file")
        grep -qFxf <(printf '%s\n' "${!lines[@]}") <<<"$users" ||
            echo "${lines[$file]} $(head -n 1 <<<"$users")"
    done | awk 'NF == 2 { lines[$2] += $1 }
        END { for (file in lines) print (file ~ /^(tests|bench|fuzz)\//), lines[file], file }' |
        sort -k 1,1n -k 2,2nr -k 3 | cut -d " " -f 3
}

# The sources that include a changed header and are none of the units; those with the most of them first.
including_sources()
{
    local file
    for file in "${files[@]}"; do
        [[ "$file" != *.h ]] || sources_with "$file"
    done | sort | uniq -c | sort -k 1,1nr -k 2 | awk '{ print $2 }' | built |
        grep -vFxf <(printf '%s\n' "${units[@]}")
}

# at_most NUMBER WHAT: the units are no more than that; the others are named.
at_most()
{
    [[ -n "$1" && "${#units[@]}" -gt "$1" ]] || return 0
    echo "Of so many files these are not $2:" >&2
    printf '  %s\n' "${units[@]:$1}" >&2
    units=("${units[@]:0:$1}")
}

# The sources that include a header.
sources_with() { git grep -lE "#include .*\\b$(basename "$1")[\">]" -- '*.cpp' || true; }

# Of the sources that are named line by line, those that are built here: some are only shown.
built()
{
    sed "s|^|$PWD/|" |
        grep -Fxf <(sed -n 's/^ *"file": "\(.*\.cpp\)",\{0,1\}$/\1/p' "$build/compile_commands.json")
}

# on_each COMMAND...: for each of the units, as many at a time as there are processors.
on_each() { printf '%s\0' "${units[@]}" | xargs -0 -n 1 -P "$(nproc)" "$@"; }

# Includes of the project's own headers of which a file uses nothing. What Qt's and the C++ library's
# headers bring along is left alone.
unneeded_includes()
{
    on_each clang-tidy-19 --quiet -p "$build" --extra-arg=-w --config="{Checks: '-*,misc-include-cleaner',
        CheckOptions: [{key: misc-include-cleaner.IgnoreHeaders, value: '/usr/.*;.*[.]moc'}]}" 2>&1 |
        grep -E 'is not used directly|error:' | sort -u
}

# A pass of clang-tidy with the configuration of this tree or with these arguments.
tidy() { [ "${#units[@]}" -eq 0 ] || on_each clang-tidy --quiet -p "$build" "$@" 2>/dev/null || failed=1; }

if [ -n "$mode" ]; then
    install_packages "${tidy_packages[@]}"
    files=("${sources[@]}")
    if [ "$mode" != tidy ]; then
        install_packages "${build_packages[@]}"
        cmake --preset tidy >/dev/null
        cmake --build --preset tidy --target autogen >/dev/null
        mapfile -t files < <(changed_files)
    fi
    mapfile -t units < <(printf '%s\n' "${files[@]}" | built)
    at_most "$most_tidied" "looked at by clang-tidy"
    echo "clang-tidy looks at ${#units[@]} files." >&2
    tidy
    if [ "${#units[@]}" -gt 0 ]; then
        unneeded=$(unneeded_includes || true)
        [ -z "$unneeded" ] || complain "Includes that are not needed:
$unneeded"
    fi
    if [ "$mode" != tidy ]; then
        mapfile -t units < <(including_sources)
        at_most "$most_compiled" "compiled by clang"
        echo "clang compiles ${#units[@]} files that include changed headers." >&2
        tidy --checks='-*,misc-definitions-in-headers,clang-diagnostic-*'
    fi
fi
exit "$failed"
