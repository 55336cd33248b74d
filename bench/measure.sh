# SPDX-License-Identifier: MIT
# Sourced by scripts/bench.sh: times in files below $work/times, and the tables made of them.
# shellcheck shell=bash disable=SC2154 # runs, work and duckdb_package are the script's
#
# A file "JOB.PROGRAM" has a line for each run: processor seconds (user and system), elapsed
# seconds and, where it was measured, the peak of memory in KiB.

# measure NAME COMMAND...: runs it once and notes what it took.
measure()
{
    # The shell counts milliseconds, the program of the same name only hundredths of a second.
    local TIMEFORMAT='%U %S %R'
    { time /usr/bin/time -o "$work/peak" -f %M "${@:2}" 2>&3; } 3>&2 2>"$work/time"
    awk -v peak="$(<"$work/peak")" '{ printf "%.3f %s %s\n", $1 + $2, $3, peak }' "$work/time" \
        >>"$work/times/$1"
}

# inner_times JOB UNIT: lines of "ours theirs" from a program that measured both itself, in the
# given part of a second.
inner_times()
{
    awk -v job="$work/times/$1" -v unit="$2" '{
        printf "%.5f - -\n", $1 * unit > (job ".ours")
        printf "%.5f - -\n", $2 * unit > (job ".theirs")
    }'
}

forget() { rm -f "$work/times/$1".*; }

# in_turn COMMAND...: all of them once, then all again, so that a change of the machine's mood
# meets each of them.
in_turn()
{
    local i command
    for ((i = 0; i < runs; ++i)); do
        for command in "$@"; do
            "$command"
        done
    done
}

fresh()
{
    rm -rf "$1"
    mkdir -p "$1"
}

same_files() # OURS THEIRS WHAT
{
    [ "$(find "$1" -type f | wc -l)" -gt 0 ] || { echo "$3: nothing was written" >&2; exit 1; }
    diff -rq "$1" "$2" >&2 || { echo "$3: the files differ" >&2; exit 1; }
    echo "  $3: the same $(find "$1" -type f | wc -l) files" >&2
}

same_file() # OURS THEIRS WHAT
{
    [ -s "$1" ] || { echo "$3: nothing was written" >&2; exit 1; }
    cmp "$1" "$2" >&2 || { echo "$3: the files differ" >&2; exit 1; }
    echo "  $3: the same $(wc -l <"$1") lines" >&2
}

# The median of a column of numbers.
median() { sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# median_of NAME COLUMN: "-" where it was not measured.
median_of() { awk -v c="$2" '{ print $c }' "$work/times/$1" | median; }

verdict() # VALUE GOAL
{
    [ "$1" != - ] && [ "$2" != - ] || return 0
    awk -v value="$1" -v goal="$2" 'BEGIN { print value <= goal ? "met" : "missed" }'
}

mebibytes() { awk -v k="$1" 'BEGIN { if (k == "-") print k; else printf "%.0f", k / 1024 }'; }
ratio() { awk -v a="$1" -v b="$2" 'BEGIN { if (b > 0) printf "%.2f", a / b; else print "-" }'; }
short()
{
    awk -v s="$1" 'BEGIN { if (s == "-") print s; else printf s < 0.1 ? "%.4f" : "%.2f", s }'
}

rows=()
notes=()
growths=()
memories=()

# row JOB OURS PEER THEIRS GOAL
row()
{
    local cpu_ours cpu_theirs quotient
    cpu_ours=$(median_of "$2" 1)
    cpu_theirs=$(median_of "$4" 1)
    quotient=$(ratio "$cpu_ours" "$cpu_theirs")
    rows+=("| $1 | $3 | $(short "$cpu_ours") / $(short "$cpu_theirs") |$(
        ) $(short "$(median_of "$2" 2)") / $(short "$(median_of "$4" 2)") |$(
        ) $(mebibytes "$(median_of "$2" 3)") / $(mebibytes "$(median_of "$4" 3)") |$(
        ) $quotient | $5 | $(verdict "$quotient" "$5") |")
}

# note JOB WHAT VALUE GOAL: a number that is no time.
note() { notes+=("| $1 | $2 | $3 | $4 | $(verdict "$3" "$4") |"); }

# growth_row JOB NAME GOAL
growth_row()
{
    local quarter whole quotient
    quarter=$(median_of "$2.quarter" 1)
    whole=$(median_of "$2.whole" 1)
    quotient=$(ratio "$whole" "$quarter")
    growths+=("| $1 | $(short "$quarter") | $(short "$whole") | $quotient | $3 |$(
        ) $(verdict "$quotient" "$3") |")
}

# memory_row JOB NAME SMALL LARGE: megabytes of the two inputs. What counts as the same: pages that
# the system maps ahead of a program differ from run to run.
memory_row()
{
    local small large quotient same=1.05
    small=$(median_of "$2.$3" 3)
    large=$(median_of "$2.$4" 3)
    quotient=$(ratio "$large" "$small")
    memories+=("| $1 | $small KiB at $3 MB | $large KiB at $4 MB | $quotient | $same |$(
        ) $(verdict "$quotient" "$same") |")
}

print_report()
{
    local cpu
    cpu=$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)
    echo "Medians of $runs runs on $(nproc) processors ($cpu), ours / theirs. CPU is user and system"
    echo "time; $(mawk -W version 2>&1 | head -n 1), node $(node --version), $duckdb_package,"
    echo "pandas $(/usr/bin/python3 -c 'import pandas; print(pandas.__version__)')."
    if [ ${#rows[@]} -gt 0 ]; then
        echo
        echo "| Job | Peer | CPU, s | Elapsed, s | Peak, MiB | CPU ours/theirs | Goal | |"
        echo "|---|---|---|---|---|---|---|---|"
        printf '%s\n' "${rows[@]}"
    fi
    if [ ${#notes[@]} -gt 0 ]; then
        echo
        echo "| Job | What | Value | Goal | |"
        echo "|---|---|---|---|---|"
        printf '%s\n' "${notes[@]}"
    fi
    if [ ${#growths[@]} -gt 0 ]; then
        echo
        echo "| Four times the input | CPU of a quarter, s | CPU of the whole, s | Times | Goal | |"
        echo "|---|---|---|---|---|---|"
        printf '%s\n' "${growths[@]}"
    fi
    if [ ${#memories[@]} -gt 0 ]; then
        echo
        echo "| Peak of memory | Small input | Large input | Ratio | Goal | |"
        echo "|---|---|---|---|---|---|"
        printf '%s\n' "${memories[@]}"
    fi
}
