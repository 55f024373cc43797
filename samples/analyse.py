#!/usr/bin/env python3
"""Analysis script of the sample: final state of the heap of one case as a small CSV.

Called in the case's folder as
    python "analyse.py" -d "<case>.zek" [--rest 0.01]
or without a deck where the folder holds only one. It reads what the sample simulator left beside
the deck and writes <case>_analysis.csv there.
"""

import argparse
import csv
import pathlib
import sys

SUMMARY_ENDING = "_summary.txt"
COLUMNS = ("run_out", "heap_height", "repose_angle")


def parse_arguments():
    parser = argparse.ArgumentParser(description="Analyse one case of the sample.")
    parser.add_argument("-d", "--deck", type=pathlib.Path, help="the case's .zek file")
    parser.add_argument("--rest", type=float, default=0.01,
                        help="share of the highest kinetic energy that counts as rest")
    return parser.parse_args()


def find_deck():
    decks = sorted(pathlib.Path.cwd().glob("*.zek"))
    if len(decks) != 1:
        raise ValueError(f"{len(decks)} decks in {pathlib.Path.cwd()}, name one with -d")
    return decks[0]


def read_summary(deck):
    """Rows of the summary, each a dictionary from the column's word to a number."""
    path = deck.with_name(deck.stem + SUMMARY_ENDING)
    names, rows = [], []
    for line in path.read_text(encoding="utf-8").splitlines():
        if line.startswith("# time"):
            names = line[1:].split()
        elif line and not line.startswith("#"):
            rows.append(dict(zip(names, map(float, line.split()))))
    if not rows:
        raise ValueError(f"{path.name} holds no results")
    return rows


def settling_time(rows, share):
    limit = share * max(row["kinetic_energy"] for row in rows)
    moving = [row["time"] for row in rows if row["kinetic_energy"] > limit]
    return max(moving, default=0.0)


def write_results(deck, rows, share):
    last = rows[-1]
    target = deck.with_name(deck.stem + "_analysis.csv")
    with open(target, "w", newline="", encoding="utf-8") as stream:
        writer = csv.writer(stream, lineterminator="\n")
        writer.writerow(COLUMNS + ("settling_time",))
        writer.writerow([f"{last[name]:g}" for name in COLUMNS]
                        + [f"{settling_time(rows, share):g}"])
    return target


def main():
    arguments = parse_arguments()
    try:
        deck = arguments.deck or find_deck()
        target = write_results(deck, read_summary(deck), arguments.rest)
    except (OSError, ValueError, KeyError) as failure:
        print(f"analyse.py: {failure}", file=sys.stderr)
        return 1
    print(f"wrote {target.name}")
    return 0


if __name__ == "__main__":
    sys.exit(main())
