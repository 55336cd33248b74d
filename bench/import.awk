# SPDX-License-Identifier: MIT
# The peer of "tadata import" for the output of makebars: the same day files, nothing checked.
# mawk -v dir=DIRECTORY -f import.awk FILE
BEGIN { FS = ","; OFS = ";" }
NR > 1 {
    file = dir "/" $3 "_60.iss"
    if (file != current) {
        if (current != "")
            close(current)
        current = file
    }
    print $4, $5, $6, $7, $8, $9, "0.00", "0" > current
}
