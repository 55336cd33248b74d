# SPDX-License-Identifier: MIT
# The export of one-minute day files to a longer timeframe, with every column and the heading, in
# awk. The day files are the arguments, in the order of their days.
#
#   mawk -v timeframe=300 -v ticker=ALFA -f export.awk DAYFILE...

function next_day(day,    y, m, d, leap) {
    y = substr(day, 1, 4) + 0
    m = substr(day, 5, 2) + 0
    d = substr(day, 7, 2) + 1
    leap = (y % 4 == 0 && y % 100 != 0) || y % 400 == 0
    if (d > (m == 2 ? 28 + leap : (m == 4 || m == 6 || m == 9 || m == 11 ? 30 : 31))) {
        d = 1
        if (++m > 12) {
            m = 1
            ++y
        }
    }
    return sprintf("%04d%02d%02d", y, m, d)
}

function put() {
    print stamp open, high, low, close_, volume, sprintf("%.2f", value), interest
}

BEGIN {
    FS = ";"
    OFS = ","
    printf "%s", "\357\273\277"
    print "<TICKER>,<PER>,<DATE>,<TIME>,<OPEN>,<HIGH>,<LOW>,<CLOSE>,<VOL>,<VAL>,<OPEN_INT>"
}

FNR == 1 {
    day = substr(FILENAME, length(FILENAME) - 14, 8)
    valid = 0
}

{
    second = substr($1, 1, 2) * 3600 + substr($1, 3, 2) * 60 + substr($1, 5, 2)
    if (valid && second <= end) {
        if ($3 + 0 >= high + 0)
            high = $3
        if ($4 + 0 < low + 0)
            low = $4
        close_ = $5
        volume += $6
        value += $7
        interest = $8
    } else {
        if (valid)
            put()
        valid = 1
        end = int((second + timeframe - 1) / timeframe) * timeframe
        stamp = ticker OFS timeframe OFS (end == 86400 ? next_day(day) : day) OFS \
            sprintf("%02d%02d%02d", end / 3600 % 24, end / 60 % 60, end % 60) OFS
        open = $2
        high = $3
        low = $4
        close_ = $5
        volume = $6 + 0
        value = $7 + 0
        interest = $8 + 0
    }
    put()
}
