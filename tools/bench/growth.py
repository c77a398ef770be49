"""growth.py RUNS DUMPS-PREFIX PAGE: judges what bench_growth measured, and compares it with the table of a page.

RUNS is what bench_growth prints, DUMPS-PREFIX what callgrind's files begin with. An operation fails if, from a size to
four times that size, its instructions or its memory grow with an exponent above 1.25, or if they exceed their cap for
each byte of input. PAGE holds a table, Operation | Grows with | Stack, whose operations must be those of the shapes
and whose stacks must hold all that were measured.
"""
import collections
import glob
import math
import re
import sys

MOST_EXPONENT = 1.25
FEW_INSTRUCTIONS, LITTLE_MEMORY = 20_000, 65_536  # below these a growth is that of fixed costs


def instructions_by_run(prefix):
    counts = {}
    for path in glob.glob(glob.escape(prefix) + ".*"):
        with open(path, encoding="utf-8", errors="replace") as file:
            head = file.read(4096)
        name = re.search(r"^desc: Trigger: Client Request: (\S+ \d+)$", head, re.M)
        total = re.search(r"^(?:summary|totals): (\d+)", head, re.M)
        if name and total:
            counts[name[1]] = int(total[1])
    return counts


def exponent(first, last, few):
    return 0 if last <= few or first == 0 else math.log(last / first) / math.log(4)


def promised_stacks(page):
    with open(page, encoding="utf-8") as file:
        text = file.read()
    stacks = {}
    for operations, stack in re.findall(r"^\| ([^|]*`[^|]*) \| [^|]* \| (\d+) KB \|$", text, re.M):
        for operation in re.findall(r"`([^`]+)`", operations):
            stacks[operation] = int(stack) * 1024
    return stacks


def main(runs_path, prefix, page):
    counts = instructions_by_run(prefix)
    shapes, problems = collections.defaultdict(list), []
    with open(runs_path, encoding="utf-8") as file:
        for line in file:
            name, size, *numbers = line.split()
            size_bytes, memory, stack, most_instructions, most_memory = map(int, numbers)
            instructions = counts.get(f"{name} {size}")
            if instructions is None:
                sys.exit(f"growth: no instructions were counted for {name} {size}")
            shapes[name].append((size_bytes, instructions, memory, stack, most_instructions, most_memory))

    print(f"{'operation and shape':<56} {'exponent':>8} {'per byte':>8}   {'memory':>6} {'per byte':>8} {'stack':>6}")
    used = collections.Counter()
    for name, runs in shapes.items():
        (_, first, first_memory, *_), (size, last, memory, _, most_instructions, most_memory) = runs[0], runs[-1]
        steep, steep_memory = exponent(first, last, FEW_INSTRUCTIONS), exponent(first_memory, memory, LITTLE_MEMORY)
        stack = max(run[3] for run in runs)
        operation = name.split("/")[0]
        used[operation] = max(used[operation], stack)
        print(f"{name:<56} {steep:8.2f} {last / size:8.1f}   {steep_memory:6.2f} {memory / size:8.1f} {stack:6}")
        if max(steep, steep_memory) > MOST_EXPONENT:
            problems.append(f"{name}: the cost grows faster than the input")
        if last > most_instructions * size + FEW_INSTRUCTIONS:
            problems.append(f"{name}: more than {most_instructions} instructions for each byte")
        if memory > most_memory * size + LITTLE_MEMORY:
            problems.append(f"{name}: more than {most_memory} bytes of memory for each byte")

    promised = promised_stacks(page)
    for operation in sorted(promised.keys() | used.keys()):
        if operation not in used:
            problems.append(f"{page} promises the cost of {operation}, and no shape tries it")
        elif operation not in promised:
            problems.append(f"{operation} has shapes, and {page} does not list it")
        elif used[operation] > promised[operation]:
            problems.append(f"{operation}: {used[operation]} bytes of stack, more than {page} says")
    for problem in problems:
        print(f"growth: {problem}", file=sys.stderr)
    print(f"growth: {len(shapes)} shapes of {len(used)} operations, {len(problems)} problems")
    return 1 if problems else 0


if __name__ == "__main__":
    sys.exit(main(*sys.argv[1:]))
