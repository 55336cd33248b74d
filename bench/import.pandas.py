# SPDX-License-Identifier: MIT
# The peer of "tadata import" for the output of makebars: pandas writes the same day files, nothing
# checked. No field becomes a number, so that the texts stay what they are.
#
#   python3 import.pandas.py FILE DIRECTORY

import os
import sys

import pandas

source, directory = sys.argv[1:]
bars = pandas.read_csv(source, dtype=str, header=0,
                       names=["ticker", "per", "day", "time", "open", "high", "low", "close",
                              "volume"],
                       usecols=["day", "time", "open", "high", "low", "close", "volume"])
bars["value"] = "0.00"
bars["interest"] = "0"
os.makedirs(directory, exist_ok=True)
for day, of_day in bars.groupby("day", sort=False):
    of_day.drop(columns="day").to_csv(os.path.join(directory, day + "_60.iss"), sep=";",
                                      header=False, index=False)
