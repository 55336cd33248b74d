# SPDX-License-Identifier: MIT
# The peer of "tadata import --timeframe 1" for the output of makebars: the same day files, and
# beside each the minute file that is derived from its seconds; nothing checked.
#
#   mawk -v dir=DIRECTORY -f import-seconds.awk FILE
#
# A minute bar is stamped with the next whole minute after its first second and takes every second
# up to that stamp. The stamp is a time of day alone: that of the last minute before midnight is
# 000000, so each second after its first begins a bar anew. The minute that is open at the end of
# the input is dropped.

function put_minute() {
    if (minute != "")
        print minute, open, high, low, close_, volume, "0.00", "0" > minute_file
    minute = ""
}

BEGIN {
    FS = ","
    OFS = ";"
}

NR > 1 {
    if ($3 != day) {
        if (day != "") {
            put_minute()
            close(second_file)
            close(minute_file)
        }
        day = $3
        second_file = dir "/" day "_1.iss"
        minute_file = dir "/" day "_60"
        # A day whose minutes are all open has an empty minute file.
        printf "" > minute_file
    }
    print $4, $5, $6, $7, $8, $9, "0.00", "0" > second_file

    if (minute != "" && $4 <= minute) {
        if ($6 + 0 > high + 0)
            high = $6
        if ($7 + 0 < low + 0)
            low = $7
        close_ = $8
        volume += $9
    } else {
        put_minute()
        next_minute = substr($4, 1, 2) * 60 + substr($4, 3, 2) + 1
        if (next_minute == 1440)
            next_minute = 0
        minute = sprintf("%02d%02d00", next_minute / 60, next_minute % 60)
        open = $5
        high = $6
        low = $7
        close_ = $8
        volume = $9 + 0
    }
}
