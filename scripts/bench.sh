#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# Measures tadata and the plug-in's parts beside other programs that do the same work, and prints a
# table of medians. Before anything is timed, both must have written the same bytes.
#
#   scripts/bench.sh [--runs N] [--lines N] [--work DIR] [--build DIR] [--only JOBS] [--large]
#
#   --runs N     how often each program runs, in turn with the others (5)
#   --lines N    lines of the imported files; exports and the editor have half of it (4000000)
#   --work DIR   where the files lie while it runs, some gigabytes (/dev/shm when it has the room,
#                otherwise the system's temporary directory)
#   --build DIR  a build with the target "bench" (build/release, built first)
#   --only JOBS  words of: import marks seconds points ways guess files export day health deals editor
#                selectors growth memory
#   --large      the memory is compared at 1 GB in place of 500 MB
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/install-packages.sh
. bench/measure.sh

runs=5
lines=4000000
build=
scratch=
jobs="import marks seconds points ways guess files export day health deals editor selectors growth memory"
large_megabytes=500
while [ $# -gt 0 ]; do
    case "$1" in
        --large) large_megabytes=1000; shift; continue ;;
        --runs | --lines | --work | --build | --only) ;;
        *) sed -n '2,/^set /{/^set /d;s/^# \{0,1\}//;p}' scripts/bench.sh >&2; exit 2 ;;
    esac
    [ $# -ge 2 ] || { echo "$1 needs a value" >&2; exit 2; }
    case "$1" in
        --runs) runs=$2 ;;
        --lines) lines=$2 ;;
        --work) scratch=$2 ;;
        --build) build=$2 ;;
        --only) jobs=$2 ;;
    esac
    shift 2
done
for number in "$runs" "$lines"; do
    [[ "$number" =~ ^[1-9][0-9]*$ ]] || { echo "No number: $number" >&2; exit 2; }
done

export TZ=UTC LC_ALL=C.UTF-8 QT_QPA_PLATFORM=offscreen
export PEERS=$PWD/$peers_folder

install_packages "${bench_packages[@]}"
install_duckdb
if [ -z "$build" ]; then
    build=build/release
    install_packages "${build_packages[@]}"
    cmake --preset release >/dev/null
    cmake --build --preset release --target all bench >&2
fi
bin=$(cd "$build/bin" && pwd)
bench=$PWD/bench

if [ -z "$scratch" ]; then
    scratch=${TMPDIR:-/tmp}
    room=$(df --output=avail -B1M /dev/shm 2>/dev/null | tail -n 1 || echo 0)
    [ "$room" -lt 6000 ] || scratch=/dev/shm
fi
work=$(mktemp -d "$scratch/tadata-bench-XXXXXX")
trap 'rm -rf "$work"' EXIT
mkdir "$work/times"
export XDG_RUNTIME_DIR=$work

say() { echo "$*" >&2; }

# ---- The programs. Each gets its input and its output, and starts where nothing is. ----

columns=date=2,time=3,open=4,high=5,low=6,close=7,volume=8
series=NORD/MAIN/ALFA

ours_import() # NAME FILE STORE TIMEFRAME
{
    rm -rf "$3"
    measure "$1" "$bin/tadata" import "$2" --series $series --decimals 2 --columns $columns \
        --timeframe "$4" --store "$3"
}
ours_export() # NAME STORE FILE TIMEFRAME
{
    local from to
    from=$(first_day "$2")
    to=$(last_day "$2")
    measure "$1" "$bin/tadata" export "$3" --series $series --from "$from" --to "$to" \
        --today 9999-12-31 --timeframe "$4" --store "$2"
}
first_day() { day_of_store "$1" 1; }
last_day() { day_of_store "$1" '$'; }
day_of_store() # STORE LINE
{
    find "$1/$series" -name '*_60.iss' -printf '%f\n' | sort |
        sed -n "$2"'s/^\(....\)\(..\)\(..\)_.*/\1-\2-\3/p'
}

# ---- Inputs ----

minutes=$work/minutes.csv
minutes_quarter=$work/minutes-quarter.csv
seconds=$work/seconds.csv
seconds_quarter=$work/seconds-quarter.csv
stored=$work/stored
stored_quarter=$work/stored-quarter

make_bars() # FILE LINES [ARGUMENT...]
{
    [ -e "$1" ] || "$bin/makebars" --lines "$2" "${@:3}" >"$1"
}
make_store() # STORE LINES
{
    [ ! -d "$1" ] || return 0
    make_bars "$1.csv" "$2"
    ours_import made "$1.csv" "$1" 60
    rm "$1.csv"
}
make_minutes() { make_bars "$minutes" "$lines"; }
make_seconds() { make_bars "$seconds" "$lines" --timeframe 1 --bars-per-day 30000; }
make_stored() { make_store "$stored" $((lines / 2)); }

# ---- Jobs ----

job_import()
{
    make_minutes
    once() { ours_import import.ours "$minutes" "$work/ours" 60; }
    mawk_once()
    {
        fresh "$work/theirs"
        measure "import.mawk" mawk -v dir="$work/theirs" -f "$bench/import.awk" "$minutes"
    }
    bytes_once()
    {
        fresh "$work/theirs"
        measure "import.bytes" "$bin/bench_bytes" "$minutes" "$work/theirs"
    }
    duckdb_once()
    {
        rm -rf "$work/theirs"
        measure "import.duckdb" node "$bench/import.duckdb.mjs" "$minutes" "$work/theirs"
    }
    pandas_once()
    {
        fresh "$work/theirs"
        measure "import.pandas" /usr/bin/python3 "$bench/import.pandas.py" "$minutes" "$work/theirs"
    }
    once
    local peer
    for peer in mawk bytes duckdb pandas; do
        "${peer}_once"
        same_files "$work/ours/$series" "$work/theirs" "import, $peer"
    done
    forget import
    in_turn once mawk_once bytes_once duckdb_once pandas_once
    local what="import, 1 minute, $lines lines"
    row "$what" import.ours mawk import.mawk 0.4
    row "$what" import.ours "DuckDB, 2 threads" import.duckdb 0.11
    row "$what" import.ours "byte-level program, no checks" import.bytes 1.5
    row "$what" import.ours pandas import.pandas -
    rm -rf "$work/ours" "$work/theirs"
}

# The same lines, as files from elsewhere begin and end them; in turn with the plain file, all written
# before the first is read.
job_marks()
{
    make_minutes
    sed '1s/.*/<ТИКЕР>,<ПЕР>,<ДАТА>,<ВРЕМЯ>,<ОТКР>,<МАКС>,<МИН>,<ЗАКР>,<ОБЪЁМ>/' "$minutes" \
        >"$work/heading.csv"
    { printf '\xef\xbb\xbf'; cat "$minutes"; } >"$work/mark.csv"
    sed 's/$/\r/' "$minutes" >"$work/ends.csv"
    plain_once() { ours_import marks.plain "$minutes" "$work/theirs" 60; }
    heading_once() { ours_import marks.heading "$work/heading.csv" "$work/ours" 60; }
    mark_once() { ours_import marks.mark "$work/mark.csv" "$work/ours" 60; }
    ends_once() { ours_import marks.ends "$work/ends.csv" "$work/ours" 60; }
    plain_once
    local form
    for form in heading mark ends; do
        "${form}_once"
        same_files "$work/ours/$series" "$work/theirs/$series" "import, $form"
    done
    forget marks
    in_turn plain_once heading_once mark_once ends_once
    local what="import, 1 minute, $lines lines"
    row "$what, a Cyrillic header" marks.heading "the plain file" marks.plain 1.05
    row "$what, a byte order mark" marks.mark "the plain file" marks.plain 1.05
    row "$what, CR LF" marks.ends "the plain file" marks.plain 1.05
    rm -rf "$work/ours" "$work/theirs" "$work"/{heading,mark,ends}.csv
}

job_seconds()
{
    make_seconds
    once() { ours_import seconds.ours "$seconds" "$work/ours" 1; }
    mawk_once()
    {
        fresh "$work/theirs"
        measure "seconds.mawk" mawk -v dir="$work/theirs" -f "$bench/import-seconds.awk" "$seconds"
    }
    once
    mawk_once
    same_files "$work/ours/$series" "$work/theirs" "import of seconds, mawk"
    forget seconds
    in_turn once mawk_once
    row "import, 1 second with minute bars, $lines lines" seconds.ours mawk seconds.mawk 0.22
    rm -rf "$work/ours" "$work/theirs"
}

# What it costs that an import can be taken back: at the first import nothing is there to keep, over
# itself all of it. One file after the other is copied, as the import keeps them.
job_points()
{
    make_minutes
    local store=$work/ours
    again() # NAME [OPTION...]; into the store that is there
    {
        measure "$1" "$bin/tadata" import "$minutes" --series $series --decimals 2 \
            --columns $columns --timeframe 60 --store "$store" "${@:2}"
    }
    first() { fresh_store; again points.first; }
    first_without() { fresh_store; again points.first-without --no-restore-point; }
    over() { rm -rf "$store-restore"; again points.over; }
    over_without() { again points.over-without --no-restore-point; }
    copy_once() { rm -rf "$work/copy"; measure points.copy cp -a "$store/$series" "$work/copy"; }
    fresh_store() { rm -rf "$store" "$store-restore"; }
    first
    cp -a "$store/$series" "$work/theirs"
    over
    same_files "$store/$series" "$work/theirs" "import over itself"
    "$bin/tadata" undo --store "$store" >&2
    same_files "$store/$series" "$work/theirs" "undo of it"
    forget points
    in_turn first_without first
    in_turn over_without over copy_once
    row "first import with restore point, $lines lines" points.first "without one" \
        points.first-without 1.05
    note "import over itself, $lines lines" \
        "CPU with a restore point / (without + 1.3 x cp -a)" "$(over_quotient)" 1.00
    rm -rf "$store" "$store-restore" "$work/theirs" "$work/copy"
}
over_quotient()
{
    awk -v with="$(median_of points.over 1)" -v without="$(median_of points.over-without 1)" \
        -v copy="$(median_of points.copy 1)" \
        'BEGIN { printf "%.2f", with / (without + 1.3 * copy) }'
}

# Saying beforehand what an import will do, and merging, beside replacing.
job_ways()
{
    make_minutes
    local empty=$work/empty full=$work/full others=$work/others.csv
    # The same bars with other volumes.
    sed '2,$s/,\([0-9]*\)$/,1\1/' "$minutes" >"$others"
    ours_import made "$minutes" "$full" 60
    into() # NAME FILE STORE COMMAND [OPTION...]
    {
        measure "$1" "$bin/tadata" "$4" "$2" --series $series --decimals 2 --columns $columns \
            --store "$3" "${@:5}" >"$work/said"
    }
    replace_once() { ours_import ways.replace "$minutes" "$work/ours" 60; }
    check_empty() { into ways.check-empty "$minutes" "$empty" check; }
    check_full() { into ways.check-full "$others" "$full" check; }
    merge_empty()
    {
        rm -rf "$work/merged" "$work/merged-restore"
        into ways.merge-empty "$minutes" "$work/merged" import --mode merge
    }
    # All bars change, and the next time all of them change back.
    merge_full()
    {
        rm -rf "$full-restore"
        into ways.merge-full "${changes[$turn]}" "$full" import --mode merge
        turn=$((1 - turn))
    }
    local changes=("$others" "$minutes") turn=0
    replace_once
    merge_empty
    same_files "$work/ours/$series" "$work/merged/$series" "merge into an empty series"
    merge_full
    merge_full
    same_files "$work/ours/$series" "$full/$series" "merge over a full one, there and back"
    forget ways
    in_turn replace_once check_empty check_full merge_empty merge_full
    row "check, empty store, $lines lines" ways.check-empty "import of the file" ways.replace 1.0
    row "check, full store, $lines lines" ways.check-full "import of the file" ways.replace 1.6
    row "merge, empty series, $lines lines" ways.merge-empty replace ways.replace 1.6
    row "merge, all bars of a full series" ways.merge-full replace ways.replace 3
    rm -rf "$work/ours" "$work/merged" "$work/merged-restore" "$full" "$full-restore" "$others"
}

# A guess is so short that it is measured twenty times at once.
job_guess()
{
    make_minutes
    local long=$work/long.csv
    # Lines of a kilobyte, most of it behind the bars.
    awk -v rest="$(printf ',some words%.0s' {1..87})" '{ print $0 rest }' \
        <(head -n 200000 "$minutes") >"$long"
    twenty() { for _ in {1..20}; do "$bin/tadata" "$@" >"$work/said" || true; done; }
    export -f twenty
    export bin work
    version_once() { measure guess.version bash -c 'twenty --version'; }
    short_once() { measure guess.short bash -c "twenty guess '$minutes'"; }
    long_once() { measure guess.long bash -c "twenty guess '$long'"; }
    in_turn version_once short_once long_once
    row "guess, $lines lines" guess.short "tadata --version" guess.version 2
    row "guess, lines of 1 KB" guess.long "tadata --version" guess.version 2
    rm "$long"
}

# Two files of two series, one after the other and at once.
job_files()
{
    make_minutes
    local half=$((lines / 2))
    head -n $((half + 1)) "$minutes" >"$work/ALFA.csv"
    { head -n 1 "$minutes"; tail -n "$half" "$minutes"; } >"$work/BETA.csv"
    both() # NAME JOBS
    {
        rm -rf "$work/ours" "$work/ours-restore"
        measure "$1" "$bin/tadata" import "$work/ALFA.csv" "$work/BETA.csv" --jobs "$2" \
            --series 'NORD/MAIN/{name}' --decimals 2 --columns $columns --store "$work/ours" \
            2>"$work/said"
    }
    one_by_one() { both files.one 1; }
    at_once() { both files.two 2; }
    in_turn one_by_one at_once
    note "import of two files, $half lines each" "elapsed time of --jobs 2 / --jobs 1" \
        "$(awk -v two="$(median_of files.two 2)" -v one="$(median_of files.one 2)" \
            'BEGIN { printf "%.2f", two / one }')" 0.6
    rm -rf "$work/ours" "$work/ours-restore" "$work/ALFA.csv" "$work/BETA.csv"
}

job_export()
{
    make_stored
    once() { ours_export export.ours "$stored" "$work/ours.txt" 300; }
    # The day files are named one by one: their own directory keeps the names short.
    mawk_once()
    {
        (cd "$stored/$series" &&
            measure "export.mawk" mawk -v timeframe=300 -v ticker=ALFA -f "$bench/export.awk" \
                ./*_60.iss >"$work/theirs.txt")
    }
    bytes_once()
    {
        (cd "$stored/$series" &&
            measure "export.bytes" "$bin/bench_exportbytes" ALFA 300 "$work/theirs.txt" ./*_60.iss)
    }
    once
    local peer
    for peer in mawk bytes; do
        "${peer}_once"
        same_file "$work/ours.txt" "$work/theirs.txt" "export to 5 minutes, $peer"
    done
    forget export
    in_turn once mawk_once bytes_once
    local what="export, 1 minute to 5 minutes, $((lines / 2)) stored bars"
    row "$what" export.ours mawk export.mawk 0.2
    row "$what" export.ours "byte-level program, no checks" export.bytes 2.0
    rm "$work/ours.txt" "$work/theirs.txt"
}

# What DuckDB writes of an export: no byte order mark, and of each bar the last line.
finished_bars()
{
    tail -c +4 "$1" | awk -F, '
        NR == 1 { print; next }
        NR > 2 && $3 != day { print line }
        { day = $3; line = $0 }
        END { print line }'
}

job_day()
{
    make_stored
    once() { ours_export day.ours "$stored" "$work/ours.txt" 86400; }
    duckdb_once()
    {
        rm -f "$work/theirs.txt"
        measure "day.duckdb" node "$bench/export.duckdb.mjs" "$stored/$series" "$work/theirs.txt"
    }
    once
    duckdb_once
    finished_bars "$work/ours.txt" >"$work/finished.txt"
    same_file "$work/finished.txt" "$work/theirs.txt" "export to days, DuckDB"
    forget day
    in_turn once duckdb_once
    row "export, 1 day, $((lines / 2)) stored bars" day.ours \
        "DuckDB, 2 threads, finished bars alone" day.duckdb 0.45
    rm "$work/ours.txt" "$work/theirs.txt" "$work/finished.txt"
}

ours_health() # NAME STORE; something wrong with the store is no failure of the program
{
    measure "$1" sh -c '"$0" health --store "$1" --json >"$2" || [ $? -eq 1 ]' \
        "$bin/tadata" "$2" "$work/health.json"
}

# make_gaps STORE TO: the store with ten bars less in each day, never the same ones.
make_gaps()
{
    mkdir -p "$2/$series"
    (cd "$1/$series" && mawk -v to="$2/$series/" '
        FNR == 1 { close(file); file = to FILENAME; ++day; gap = 1 + (day * 37) % 300 }
        FNR < gap || FNR >= gap + 10 { print >file }' ./*_60.iss)
}

job_health()
{
    local bars=$((lines / 2)) store
    make_stored
    make_gaps "$stored" "$work/gaps"
    for store in "$stored" "$work/gaps"; do
        once() { ours_health health.ours "$store"; }
        export_once() { ours_export health.export "$store" "$work/ours.txt" 300; }
        once
        forget health
        in_turn once export_once
        row "health, $bars stored bars, $([ "$store" = "$stored" ] && echo no gap || echo a gap a day)" \
            health.ours "export to 5 minutes" health.export 0.8
    done
    health_of_a_board "$stored" "no gap"
    health_of_a_board "$work/gaps" "a gap a day"
    rm -rf "$work/ours.txt" "$work/gaps" "$work/health.json"
}

# 200 series of 250 days beside one of them: time a bar and memory a series.
health_of_a_board() # STORE WHAT
{
    local count=200 board=${series%/*} i
    rm -rf "$work/one" "$work/board"
    mkdir -p "$work/one/$series" "$work/board/$board"
    find "$1/$series" -name '*_60.iss' | sort | sed -n 1,250p | xargs cp -t "$work/one/$series"
    for ((i = 0; i < count; ++i)); do
        ln -s "$work/one/$series" "$work/board/$board/S$i"
    done
    one_once() { ours_health health.ours "$work/one"; }
    board_once() { ours_health health.board "$work/board"; }
    forget health
    in_turn one_once board_once
    note "health, $count series of 250 days, $2" "CPU a bar beside one series" \
        "$(ratio "$(median_of health.board 1)" "$(awk -v s="$(median_of health.ours 1)" -v n="$count" \
            'BEGIN { print s * n }')")" 1.1
    note "health, $count series of 250 days, $2" "KiB kept a series" \
        "$(($(($(median_of health.board 3) - $(median_of health.ours 3))) / count))" 64
    rm -rf "$work/one" "$work/board"
}

# The programs below run both sides themselves, and check them against each other.

job_deals()
{
    local i
    # Five scans in each run.
    for ((i = 0; i < runs; ++i)); do
        "$bin/bench_deals" 2000000 50 |
            sed -n 's/^scan \([0-9.]*\) ms.*plain loop \([0-9.]*\) ms.*/\1 \2/p'
    done | inner_times deals 0.001
    row "deals scan, 2000000 deals, 1 in 50 matching" deals.ours "loop over plain structs" \
        deals.theirs 1.6
}

job_editor()
{
    make_stored
    "$bin/bench_editor" "$stored/$series" 60 files "$runs" \
        >"$work/editor.txt"
    inner_times editor 1 <"$work/editor.txt"
    row "editor load, $((lines / 2)) bars" editor.ours "reading and splitting, nothing kept" \
        editor.theirs 1.5
    local bytes
    bytes=$(awk '{ print $3 }' "$work/editor.txt" | median)
    note "editor load, $((lines / 2)) bars" "bytes a row" "$bytes" 120
}

job_selectors()
{
    # The store is beside the program.
    mkdir "$work/selectors"
    cp "$bin/bench_selectors" "$work/selectors/"
    "$work/selectors/bench_selectors" 20000 "$runs" >"$work/selectors.txt"
    inner_times selectors 1 <"$work/selectors.txt"
    row "selectors, 20000 series" selectors.ours "find DIR -mindepth 3 -maxdepth 3" \
        selectors.theirs 3
    say "Starting find costs $(awk '{ print $3 }' "$work/selectors.txt" | median) s of it."
    rm -rf "$work/selectors"
}

# Four times the input.
job_growth()
{
    make_minutes
    make_seconds
    make_stored
    make_bars "$minutes_quarter" $((lines / 4))
    make_bars "$seconds_quarter" $((lines / 4)) --timeframe 1 --bars-per-day 30000
    make_store "$stored_quarter" $((lines / 8))
    grow() # NAME QUARTER WHOLE; runs grow_NAME INPUT TIMES
    {
        local name=$1 quarter=$2 whole=$3
        small() { "grow_$name" "$quarter" "growth-$name.quarter"; }
        full() { "grow_$name" "$whole" "growth-$name.whole"; }
        small
        forget "growth-$name"
        in_turn small full
        growth_row "$name" "growth-$name" 4.3
    }
    grow_import() { ours_import "$2" "$1" "$work/ours" 60; }
    grow_seconds() { ours_import "$2" "$1" "$work/ours" 1; }
    grow_export() { ours_export "$2" "$1" "$work/ours.txt" 300; }
    grow_day() { ours_export "$2" "$1" "$work/ours.txt" 86400; }
    grow import "$minutes_quarter" "$minutes"
    grow seconds "$seconds_quarter" "$seconds"
    grow export "$stored_quarter" "$stored"
    grow day "$stored_quarter" "$stored"
    rm -rf "$work/ours" "$work/ours.txt"
}

# The peak memory must not know the size of the input.
job_memory()
{
    local megabytes i times=$((runs < 3 ? runs : 3))
    rm -f "$minutes" "$minutes_quarter" "$seconds" "$seconds_quarter"
    rm -rf "$stored" "$stored_quarter"
    for megabytes in 10 "$large_megabytes"; do
        # A line has 55 bytes.
        "$bin/makebars" --lines $((megabytes * 1000000 / 55)) --bars-per-day 1400 >"$work/input.csv"
        for ((i = 0; i < times; ++i)); do
            ours_import "memory-import.$megabytes" "$work/input.csv" "$work/ours" 60
        done
        rm "$work/input.csv"
        for ((i = 0; i < times; ++i)); do
            ours_export "memory-export.$megabytes" "$work/ours" "$work/ours.txt" 300
        done
        rm -rf "$work/ours" "$work/ours.txt"
    done
    memory_row import memory-import 10 "$large_megabytes"
    memory_row export memory-export 10 "$large_megabytes"
}

# ---- The report ----

say "Work directory: $work; load: $(cut -d ' ' -f 1-3 /proc/loadavg)"
for job in $jobs; do
    declare -F "job_$job" >/dev/null || { say "No such job: $job"; exit 2; }
    say "$(date +%H:%M:%S) $job"
    "job_$job"
done
say "$(date +%H:%M:%S) done; load: $(cut -d ' ' -f 1-3 /proc/loadavg)"
print_report
