#!/usr/bin/env python3
"""Compares the library's benchmark rows with those of its peers and reports which goals are met.

table.py [--markdown FILE] RESULTS.json...
table.py [--markdown FILE] --windows RESULTS.json... --linux RESULTS.json...

Prints the table; with --markdown, also writes it between the marker lines of FILE. The second form compares the
library on 32-bit Windows with itself on 64-bit Linux and with its peers on Windows. Results of one program may come
in several files. Exits with 1 if a row failed or there are no rows. A missed goal is not a failure.
"""
import argparse
import datetime
import json
import math
import pathlib
import platform
import statistics
import subprocess
import sys

LISTS = (100, 1000, 10000, 100000)


def comparisons():
    """Yields (section, label, our row, the peer's row, the highest ratio that meets the goal or None, measure)."""
    items = {"cereal": (0.06, 0.05), "protobuf": (0.06, 0.15)}
    players = {"protobuf": (0.16, 0.23)}
    for subject, goals in (("Items1000", items), ("Items65535", {}), ("Snapshot10", {}), ("Snapshot40", players),
                           ("Account", {}), ("Bundles10000", {})):
        for peer in ("cereal", "protobuf", "msgpack", "copy"):
            for verb, goal in zip(("Decode", "Encode"), goals.get(peer, (None, None))):
                yield ("Records", f"{verb} {subject}", f"{verb}{subject}/library", f"{verb}{subject}/{peer}", goal,
                       "cpu")
    yield "Records", "Decode Items1000", "DecodeItems1000/library", "DecodeItems1000/plain", 1 / 200, "cpu"

    for words in LISTS:
        for row, goal in (("CleanLine20", 1), ("CleanLine60", 1), ("CleanLine250", None), ("CleanText", None),
                          ("HitLine60", None), ("MaskLine20", 1), ("MaskLine60", 1), ("MaskLine250", 1),
                          ("NearMisses", None)):
            yield ("Words", f"{row}, {words} words", f"{row}/library/{words}", f"{row}/hyperscan/{words}", goal,
                   "cpu")
        yield "Words", f"Load {words} words", f"Load/library/{words}", f"Load/hyperscan/{words}", 1 / 40, "cpu"
        yield "Words", f"Memory of {words} words", f"Load/library/{words}", f"Load/hyperscan/{words}", 1.3, "held"
        yield ("Words", f"CleanLine60, {words} words", f"CleanLine60/library/{words}", f"CleanLine60/scan/{words}",
               0.001 if words == 1000 else None, "cpu")

    for row in ("FormatSeconds", "FormatMinutes"):
        yield "Text", row, f"{row}/library", f"{row}/snprintf", 1.2, "cpu"
        yield "Text", row, f"{row}/library", f"{row}/fmt", None, "cpu"
    yield "Text", "FormatValue", "FormatValue/library", "FormatValue/snprintf", None, "cpu"
    yield "Text", "PackedTime", "PackedTime/library", "PackedTime/snprintf", None, "cpu"
    yield "Text", "Numerals", "Numerals/library", "Numerals/digits", 0.5, "cpu"
    yield "Text", "Separators", "Separators/library", "Separators/digits", 0.5, "cpu"
    yield "Text", "SeparatorsOfValue", "SeparatorsOfValue/library", "SeparatorsOfValue/digits", None, "cpu"
    for pairs in (10, 100, 1000, 10000):
        yield ("Text", f"Dictionary, {pairs} pairs", f"Dictionary/library/{pairs}", f"Dictionary/splitter/{pairs}",
               1.5 if pairs == 1000 else None, "cpu")

    for way in ("GbkToUtf8", "Utf8ToGbk", "GbkToUtf16", "Utf16ToGbk"):
        for text in ("Chinese", "Ascii", "Mixed", "Name20"):
            for peer, goal in (("iconv", 0.5), ("icu", 1)):
                yield "Text", f"{way}, {text}", f"{way}{text}/library", f"{way}{text}/{peer}", goal, "cpu"

    for size, name, goal in ((2048, "2 KB", 0.25), (1048576, "1 MB", 0.2)):
        for peer, time, memory in (("libxml2", goal, 0.2), ("pugixml", 2.5, None)):
            yield "XML", f"Load and walk {name}", f"Xml/library/{size}", f"Xml/{peer}/{size}", time, "cpu"
            yield "XML", f"Memory of {name}", f"Xml/library/{size}", f"Xml/{peer}/{size}", memory, "held"
        yield "XML", f"Load and walk {name}", f"Xml/library/{size}", f"Xml/libxml2_gbk/{size}", goal, "cpu"


WINDOWS_GOALS = {"cereal": {"Decode Items1000": 0.05, "Encode Items1000": 0.05, "Decode Snapshot40": 0.25,
                            "Encode Snapshot40": 0.07, "Decode Account": 0.6, "Encode Account": 0.3},
                 "x86-64": {"CleanLine": 2, "FormatValue": 1.5, "SeparatorsOfValue": 1.5}}
# Most of the time of these rows is Wine's, so they say little about Windows.
WINES = {"Decode Items65535": "heap", "Encode Items65535": "heap", "Decode Account": "heap", "Decode Bundles": "heap",
         "Decode Snapshot": "heap", "Load and walk": "XML objects", "Load ": "files and heap",
         "PackedTime": "heap", "Numerals": "heap", "Separators,": "heap"}


def of_label(label, values):
    """The value whose key the label starts with, or None."""
    return next((value for start, value in values.items() if f"{label},".startswith(start)), None)


def windows_comparisons():
    """As comparisons(), for rows of Windows and the library's rows of Linux, whose peer is called x86-64."""
    shown = set()
    for section, label, ours, peer, _, what in comparisons():
        if (section, what) == ("XML", "held"):
            continue  # the memory of the system's XML objects is not on the heap that the benchmark can look at
        others = [] if (ours, what) in shown else [ours.replace("/library", "/x86-64")]
        shown.add((ours, what))
        for other in others + [peer]:
            wine = of_label(label, WINES)
            goal = of_label(label, WINDOWS_GOALS.get(other.split("/")[1], {}))
            yield section, f"{label}, Wine's {wine}" if wine else label, ours, other, goal, what


GROWTHS = [(f"{verb} items", [(n, f"{verb}Items{n}/library") for n in (1000, 4000, 16000, 65535)])
           for verb in ("Encode", "Decode")]
GROWTHS += [(f"{verb} {subject}, by {what}", [(n, f"{verb}{row}{n}/library") for n in sizes])
            for subject, what, row, sizes in (("a snapshot", "items", "Snapshot", (40, 400, 4000, 40000)),
                                              ("a table", "bundles", "Bundles", (1250, 2500, 5000, 10000)))
            for verb in ("Encode", "Decode")]
GROWTHS += [("Masking, by length of text", [(n, f"MaskText/library/{n}") for n in (1, 8, 64, 512)]),
            ("Near misses, by length of text", [(n, f"NearText/library/{n}") for n in (1, 8, 64, 512)]),
            ("Load, by size of list", [(n, f"Load/library/{n}") for n in LISTS]),
            ("Clean line of 60 bytes, by size of list", [(n, f"CleanLine60/library/{n}") for n in LISTS])]


def read(paths, time="cpu_time"):
    """{row: the entry of its last repetition}, plus the keys "cpu" (the median of the repetitions) and "fastest", in ns.

    Exits if a row failed or there are no rows.
    """
    unit = {"ns": 1, "us": 1e3, "ms": 1e6, "s": 1e9}
    rows, times, failed = {}, {}, []
    for path in paths:
        try:
            entries = json.loads(pathlib.Path(path).read_text())["benchmarks"]
        except (OSError, ValueError, KeyError) as error:
            sys.exit(f"table.py: {path} contains no benchmark results ({error})")
        for row in entries:
            name = row["run_name"].split("/repeats:")[0]
            if row.get("error_occurred"):
                failed.append(f"{name}: {row['error_message']}")
            elif row["run_type"] == "iteration":
                rows[name] = row
                times.setdefault(name, []).append(row[time] * unit.get(row.get("time_unit"), 1))
    if failed:
        sys.exit("table.py: these rows failed:\n  " + "\n  ".join(sorted(set(failed))))
    if not rows:
        sys.exit("table.py: there are no rows")
    return {name: row | {"cpu": statistics.median(times[name]), "fastest": min(times[name])}
            for name, row in rows.items()}


def quantity(value, what):
    steps = (("GB", 2**30), ("MB", 2**20), ("KB", 2**10)) if what == "held" else (("s", 1e9), ("ms", 1e6), ("us", 1e3))
    for name, size in steps:
        if value >= size:
            return f"{value / size:.3g} {name}"
    return f"{value:.3g} {'B' if what == 'held' else 'ns'}"


def exponent(points):
    """The slope of the least-squares line through the points on logarithmic axes."""
    xs, ys = [math.log(x) for x, _ in points], [math.log(y) for _, y in points]
    x, y = sum(xs) / len(xs), sum(ys) / len(ys)
    return sum((a - x) * (b - y) for a, b in zip(xs, ys)) / sum((a - x) ** 2 for a in xs)


def line(label, library, peer, ratio, goal, form=".3g", measures=("cpu", "fastest")):
    """The cells named in HEAD. ratio(measure) is the figure that the goal bounds: `cpu` is the median of the
    repetitions, `fastest` the fastest one."""
    figures = [ratio(measure) for measure in measures]
    cells = [format(figure, form) for figure in figures] + [""] * (2 - len(figures))
    verdict = "" if goal is None else "met" if figures[0] <= goal else "missed"
    return label, library, peer, *cells, "" if goal is None else f"{goal:g}", verdict


def compare(rows, compared):
    """Yields (section, line) for each of the comparisons `compared` whose rows are there."""
    for section, label, ours, peer, goal, what in compared:
        if ours not in rows or peer not in rows or rows[peer][what] <= 0:
            continue
        mine, theirs = rows[ours], rows[peer]
        yield section, line(label, quantity(mine[what], what), f"{peer.split('/')[1]} {quantity(theirs[what], what)}",
                            lambda measure: mine[measure] / theirs[measure], goal,
                            measures=("cpu", "fastest") if what == "cpu" else (what,))


def limits(rows):
    """Yields (section, line) for what is bounded without a peer."""
    for what, goal in (("", 1.5), ("Fresh", 1.4)):
        small, large = rows.get("DecodeItems1000/library"), rows.get(f"Decode{what}Items65535/library")
        if small and large:
            yield "Records", line(f"Decode, per item of 65535{', fresh memory' if what else ''}",
                                  f"{large['cpu'] / 65535:.3g} ns", f"of 1000 {small['cpu'] / 1000:.3g} ns",
                                  lambda measure: large[measure] / 65535 / (small[measure] / 1000), goal)
    for words in LISTS:
        row = rows.get(f"NearMisses/library/{words}")
        if row:
            yield "Words", line(f"NearMisses per byte, {words} words", f"{row['cpu'] / row['bytes']:.3g} ns",
                                "limit 10 ns", lambda measure: row[measure] / row["bytes"] / 10, 1)
    for label, sizes in GROWTHS:
        points = [(rows[name].get("bytes", size) if "Text/" in name else size, rows[name])
                  for size, name in sizes if name in rows]
        if len(points) == len(sizes):
            yield "Growth", line(label, quantity(points[0][1]["cpu"], "cpu"),
                                 f"to {quantity(points[-1][1]['cpu'], 'cpu')}",
                                 lambda measure: exponent([(size, row[measure]) for size, row in points]), 1.1, ".2f")


HEAD = ("what", "library", "peer", "ratio", "fastest", "goal", "")


def plain(sections):
    lines = []
    for section, cells in sections.items():
        widths = [max(len(row[i]) for row in [HEAD, *cells]) for i in range(len(HEAD))]
        lines += ["", section]
        lines += ["  " + "  ".join(cell.ljust(width) for cell, width in zip(row, widths)).rstrip()
                  for row in [HEAD, *cells]]
    return "\n".join(lines)


def output_of(*command):
    return subprocess.run(command, capture_output=True, text=True, check=True).stdout


def cpu_model():
    for line in pathlib.Path("/proc/cpuinfo").read_text().splitlines():
        if line.startswith("model name"):
            return line.split(":", 1)[1].strip()
    return platform.machine()


def markdown(sections, heading):
    lines = [f"Measured {datetime.date.today()}, {output_of('c++', '--version').splitlines()[0]}, {cpu_model()}."]
    for section, cells in sections.items():
        lines += ["", f"{heading} {section}", "", "| " + " | ".join(HEAD) + " |", "|" + "---|" * len(HEAD)]
        lines += ["| " + " | ".join(cell) + " |" for cell in cells]
    return "\n".join(lines)


def put(path, name, text):
    """Writes `text` between the marker lines `name` of the file."""
    begin, end = f"<!-- {name}: begin -->", f"<!-- {name}: end -->"
    page = pathlib.Path(path).read_text()
    if page.count(begin) != 1 or page.count(end) != 1:
        sys.exit(f"table.py: {path} should contain each of '{begin}' and '{end}' once")
    head, rest = page.split(begin)
    pathlib.Path(path).write_text(f"{head}{begin}\n{text}\n{end}{rest.split(end)[1]}")


def main():
    parser = argparse.ArgumentParser(description=__doc__.splitlines()[0])
    parser.add_argument("--markdown", metavar="FILE", help="also write the table between the marker lines of FILE")
    parser.add_argument("--windows", nargs="+", metavar="RESULTS", help="results of 32-bit Windows")
    parser.add_argument("--linux", nargs="+", metavar="RESULTS", help="results of 64-bit Linux to compare them with")
    parser.add_argument("results", nargs="*", metavar="RESULTS")
    arguments = parser.parse_args()
    if bool(arguments.windows) != bool(arguments.linux) or bool(arguments.windows) == bool(arguments.results):
        parser.error("expected RESULTS, or --windows RESULTS --linux RESULTS")
    if arguments.windows:
        # Wine counts CPU time in steps of 10 ms, so these are times by the clock.
        rows = read(arguments.windows, "real_time")
        rows |= {name.replace("/library", "/x86-64"): row for name, row in read(arguments.linux, "real_time").items()}
        lines, name, heading = list(compare(rows, windows_comparisons())), "windows", "###"
    else:
        rows = read(arguments.results)
        lines, name, heading = [*compare(rows, comparisons()), *limits(rows)], "table", "##"
    sections = {}
    for section, cells in lines:
        sections.setdefault(section, []).append(cells)
    print(plain(sections))
    verdicts = [cells[-1] for _, cells in lines]
    print(f"\n{verdicts.count('met')} goals met, {verdicts.count('missed')} missed")
    if arguments.markdown:
        put(arguments.markdown, name, markdown(sections, heading))


if __name__ == "__main__":
    main()
