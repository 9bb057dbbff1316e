#!/usr/bin/env python3
"""Reads what llvm-cov exports about the library, prints the shares per file and in all, and compares
what is missed with the list of what can't be reached.

usage: coverage.py ROOT EXPORT.json EXPORT.lcov LIST.md

A row of the list: | `file` | `the line's text` | what of it | reason |. What of a line is missed:
`line` itself, a branch's outcome `true` or `false`, `condition N` of its decision, which no pair of
tests has shown to decide by itself.
"""
import collections
import json
import re
import sys

SOURCES = "/frame/lib/emp/src/pm/"


def read(path):
    with open(path, encoding="latin-1") as file:
        return file.read()


def is_library(name):
    return SOURCES in name


class Counts:
    """Of one file: every line, outcome and condition, and how often or whether it was reached."""

    def __init__(self):
        self.lines = collections.Counter()
        self.outcomes = collections.Counter()
        self.conditions = {}


def gather(export, lcov):
    files = collections.defaultdict(Counts)
    current = None
    for row in lcov.splitlines():
        if row.startswith("SF:"):
            current = row[3:]
        elif row.startswith("DA:") and is_library(current):
            number, count = row[3:].split(",")[:2]
            files[current].lines[int(number)] += int(count)
    for file in export["data"][0]["files"]:
        if not is_library(file["filename"]):
            continue
        counts = files[file["filename"]]
        # A template has its branches and decisions once per instance.
        for branch in file["branches"]:
            line, column, true_count, false_count = branch[0], branch[1], branch[4], branch[5]
            counts.outcomes[line, column, "true"] += true_count
            counts.outcomes[line, column, "false"] += false_count
        for record in file["mcdc_records"]:
            line, column, covered = record[0], record[1], record[-1]
            for number, shown in enumerate(covered, 1):
                key = (line, column, number)
                counts.conditions[key] = counts.conditions.get(key, False) or shown
    return files


def missed_of(counts, text):
    """What is missed of each line, by the line's text."""
    missed = set()
    for line, count in counts.lines.items():
        if count == 0:
            missed.add((text[line - 1].strip(), "line"))
    for (line, _, outcome), count in counts.outcomes.items():
        if count == 0:
            missed.add((text[line - 1].strip(), outcome))
    for (line, _, number), shown in counts.conditions.items():
        if not shown:
            missed.add((text[line - 1].strip(), f"condition {number}"))
    return missed


def share(reached, total):
    return f"{reached}/{total}" if total else "-"


def print_table(files):
    columns = "{:44}{:>13}{:>13}{:>13}"
    print(columns.format("", "lines", "branches", "conditions"))
    sums = [[0, 0] for _ in range(3)]
    for name in sorted(files):
        counts = files[name]
        pairs = [
            (sum(1 for count in counts.lines.values() if count), len(counts.lines)),
            (sum(1 for count in counts.outcomes.values() if count), len(counts.outcomes)),
            (sum(counts.conditions.values()), len(counts.conditions)),
        ]
        for total, pair in zip(sums, pairs):
            total[0] += pair[0]
            total[1] += pair[1]
        print(columns.format(name.split(SOURCES)[1], *(share(*pair) for pair in pairs)))
    print(columns.format("all", *(share(*total) for total in sums)))
    print(columns.format("", *(f"{100 * total[0] / total[1]:.2f} %" for total in sums)))


def read_list(text):
    listed = set()
    for row in re.findall(r"^\| `(.*?)` \| `(.*?)` \| (.*?) \| (.+?) \|$", text, re.M):
        file, line, what, _ = row
        for part in what.split(", "):
            listed.add((file, line.replace("\\|", "|"), part))
    return listed


def main():
    root, export, lcov, listing = sys.argv[1:]
    files = gather(json.loads(read(export)), read(lcov))
    missed = set()
    for name, counts in files.items():
        text = read(name).splitlines()
        file = name.split(SOURCES)[1]
        missed |= {(file, line, what) for line, what in missed_of(counts, text)}
    print_table(files)
    listed = read_list(read(listing))
    for title, items in (
        ("not reached, and " + listing.replace(root + "/", "") + " does not say why", missed - listed),
        ("reached, although listed as out of reach", listed - missed),
    ):
        if items:
            print(f"\n{title}:")
        for file, line, what in sorted(items):
            print(f"  {file}: {what}: {line}")
    print(f"\n{len(missed)} listed as out of reach" if missed == listed else "")
    return 0 if missed == listed else 1


if __name__ == "__main__":
    sys.exit(main())
