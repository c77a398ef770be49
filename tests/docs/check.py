#!/usr/bin/env python3
"""check.py PREFIX BUILD: builds and runs the program of each page in docs/services with the package installed in
PREFIX, and compares its output with the output that the page shows.

Each page has one ```cpp block, the program, followed by one ```text block, its output. A block with a file name
after its language is a file that the program reads. A last line "..." in the output stands for lines that depend on
the machine. Pages are UTF-8; files and output are GBK.
"""
import concurrent.futures
import difflib
import os
import pathlib
import re
import shutil
import subprocess
import sys

PAGES = pathlib.Path(__file__).resolve().parent.parent.parent / "docs/services"


def blocks(text):
    """(language, name or "", content) of each fenced block."""
    return re.findall(r"^```(\w+) ?(\S*)\n(.*?)^```$", text, re.M | re.S)


def parts(page):
    """(files by name, program, output) of a page."""
    found = blocks(page.read_text(encoding="utf-8"))
    files = {name: content for _, name, content in found if name}
    plain = [(language, content) for language, name, content in found if not name]
    if [language for language, _ in plain if language in ("cpp", "text")] != ["cpp", "text"]:
        raise ValueError("expected one cpp block, the program, followed by one text block, its output")
    return files, *(content for language, content in plain if language in ("cpp", "text"))


def check(page, build, flags):
    """A description of what is wrong with the page, or ""."""
    folder = build / page.stem
    folder.mkdir()
    try:
        files, program, output = parts(page)
    except ValueError as problem:
        return str(problem)
    (folder / "main.cpp").write_text(program)
    for name, content in files.items():
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content.encode("gbk"))
    warnings = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]
    built = subprocess.run(["g++", "-std=c++17", *warnings, "main.cpp", "-o", "program", *flags],
                           cwd=folder, capture_output=True, text=True)
    if built.returncode != 0:
        return built.stderr
    run = subprocess.run([folder / "program"], cwd=folder, capture_output=True, timeout=60,
                         env={**os.environ, "TZ": "CST-8"})
    printed = run.stdout.decode("gbk", "backslashreplace")
    if run.returncode != 0 or run.stderr:
        return f"the program exited with {run.returncode}\n{printed}{run.stderr.decode('gbk', 'backslashreplace')}"
    shown, lines = output.splitlines(True), printed.splitlines(True)
    if shown[-1:] == ["...\n"]:
        shown.pop()
        lines = lines[:len(shown)]
    return "".join(difflib.unified_diff(shown, lines, "the page", "the program"))


def main():
    prefix, build = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    shutil.rmtree(build, ignore_errors=True)
    build.mkdir(parents=True)
    config = next(prefix.rglob("ZvUtiLib.pc")).parent
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "ZvUtiLib"], check=True, capture_output=True, text=True,
                           env={**os.environ, "PKG_CONFIG_PATH": str(config)}).stdout.split()
    flags.append(f"-Wl,-rpath,{config.parent}")
    pages = sorted(PAGES.glob("*.md"))
    if not pages:
        sys.exit("docs: no pages found")
    with concurrent.futures.ThreadPoolExecutor(os.cpu_count()) as pool:
        problems = dict(zip(pages, pool.map(lambda page: check(page, build, flags), pages)))
    for page, problem in problems.items():
        if problem:
            print(f"docs: {page.name}: {problem}", file=sys.stderr)
    if any(problems.values()):
        sys.exit(1)
    print(f"docs: all {len(pages)} programs print what their pages show")


main()
