#!/usr/bin/env python3
"""branch_coverage.py ROOT MINIMUM LIST: reports the branches of the library that no test takes.

Reads the output of `llvm-cov export` from standard input. Prints the branches not taken and the percentage taken.
Exits with 1 if less than MINIMUM percent are taken, or if a branch not taken is missing from LIST, whose lines look
like this: "text/CUtiNumber.cpp: never true: !text".

A condition in a template counts once, however often the template is instantiated. Two kinds of branches do not
count: conditions that the compiler evaluates, and the missing default of a switch, since compiler warnings make
sure that a switch over an enumeration handles all members.
"""
import json
import os
import re
import sys

ROOM = re.compile(r"\| `([a-z]+)/` ")

CONSTANT = re.compile(r"k[A-Z]\w*(<\w+>)?(\.\w+)?|sizeof\(\w+\) == \d+|true|false")


def branches_of(export, root):
    """{(file, line, column, end line, end column): [times true, times false]}"""
    with open(os.path.join(root, "docs/architecture.md"), encoding="utf-8") as page:
        rooms = {"include"} | {row.group(1) for row in map(ROOM.match, page) if row}
    found = {}
    for entry in export["data"][0]["files"]:
        path = os.path.relpath(entry["filename"], root)
        if path.split(os.sep)[0] not in rooms:
            continue
        for line, column, end_line, end_column, taken, passed, *_ in entry.get("branches", []):
            counts = found.setdefault((path, line, column, end_line, end_column), [0, 0])
            counts[0] += taken
            counts[1] += passed
    return found


def source_of(root, cache, place):
    path, line, column, end_line, end_column = place
    if path not in cache:
        with open(os.path.join(root, path), encoding="utf-8") as file:
            cache[path] = file.read().split("\n")
    lines = cache[path]
    condition = lines[line - 1][column - 1 : end_column - 1 if end_line == line else None]
    return lines[line - 1], condition


def main():
    root, minimum = sys.argv[1], float(sys.argv[2])
    with open(sys.argv[3], encoding="utf-8") as page:
        listed = {line.strip() for line in page if ": never " in line}
    cache, covered, total, uncovered, unlisted = {}, 0, 0, [], 0
    for place, counts in sorted(branches_of(json.load(sys.stdin), root).items()):
        line, condition = source_of(root, cache, place)
        if counts == [0, 0] and (re.search(r"\bif constexpr\b", line) or CONSTANT.fullmatch(condition)):
            continue
        is_switch = re.search(r"\bswitch \(" + re.escape(condition) + r"\)", line)
        for count, way in zip(counts[1:] if is_switch else counts, ("false",) if is_switch else ("true", "false")):
            total += 1
            covered += count > 0
            if count == 0:
                branch = f": never {way}: {condition}"
                is_listed = place[0] + branch in listed
                unlisted += not is_listed
                uncovered.append(f"{place[0]}:{place[1]}{branch}{'' if is_listed else '  (not on the list)'}")
    if total == 0:
        sys.exit("coverage: the input contains no branches of the library")
    print("\n".join(uncovered))
    percent = 100 * covered / total
    print(f"{covered} of {total} branches taken, {percent:.2f} percent; {total - covered} not taken")
    if percent < minimum:
        sys.exit(f"coverage: less than {minimum} percent")
    if unlisted:
        sys.exit(f"coverage: {unlisted} of the branches not taken are missing from {sys.argv[3]}")


main()
