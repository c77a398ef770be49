#!/usr/bin/env python3
"""check.py PREFIX BUILD: builds and runs the program of each page in docs/services with the package installed in
PREFIX, and compares its output with the output that the page shows.

Each page has a ```cpp block, the program, followed by a ```text block, its output, once or more often. A block with a
file name after its language is a file that the programs read. A last line "..." in the output stands for lines that
depend on the machine. Pages are UTF-8; files and output are GBK, or UTF-8 if the word utf-8 ends the first line of their
block. Words with a dash after ```cpp are options of the compiler; a program without them whose output is UTF-8 is built
by clang++ as well, if that is there.
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
    """(language, words after it, content) of each fenced block."""
    return [(language, words.split(), content)
            for language, words, content in re.findall(r"^```(\w+)([^\n]*)\n(.*?)^```$", text, re.M | re.S)]


def encoding_of(words):
    return "utf-8" if "utf-8" in words else "gbk"


def parts(page):
    """({file: (encoding, content)}, [(program, options, output, encoding of the output)]) of a page."""
    files, plain = {}, []
    for language, words, content in blocks(page.read_text(encoding="utf-8")):
        name = next((word for word in words if word != "utf-8" and not word.startswith("-")), None)
        if name:
            files[name] = encoding_of(words), content
        elif language in ("cpp", "text"):
            plain.append((language, words, content))
    if not plain or [language for language, _, _ in plain] != ["cpp", "text"] * (len(plain) // 2):
        raise ValueError("expected a cpp block, the program, followed by a text block, its output")
    return files, [(program, options, output, encoding_of(words))
                   for (_, options, program), (_, words, output) in zip(plain[::2], plain[1::2])]


def check(page, build, flags):
    """A description of what is wrong with the page, or ""."""
    folder = build / page.stem
    folder.mkdir()
    try:
        files, programs = parts(page)
    except ValueError as problem:
        return str(problem)
    for name, (encoding, content) in files.items():
        file = folder / name
        file.parent.mkdir(parents=True, exist_ok=True)
        file.write_bytes(content.encode(encoding))
    problems = []
    for program, options, output, encoding in programs:
        is_portable = encoding == "utf-8" and not options and shutil.which("clang++")
        for compiler in ["g++", "clang++"] if is_portable else ["g++"]:
            problems.append(check_program(folder, [compiler, *options], program, output, encoding, flags))
    return "".join(problems)


def check_program(folder, compiler, program, output, encoding, flags):
    (folder / "main.cpp").write_text(program, encoding="utf-8")
    warnings = ["-Wall", "-Wextra", "-Wpedantic", "-Werror"]
    built = subprocess.run([*compiler, "-std=c++17", *warnings, "main.cpp", "-o", "program", *flags],
                           cwd=folder, capture_output=True, text=True)
    if built.returncode != 0:
        return built.stderr
    run = subprocess.run([folder / "program"], cwd=folder, capture_output=True, timeout=60,
                         env={**os.environ, "TZ": "CST-8"})
    printed = run.stdout.decode(encoding, "backslashreplace")
    if run.returncode != 0 or run.stderr:
        return f"the program exited with {run.returncode}\n{printed}{run.stderr.decode(encoding, 'backslashreplace')}"
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
    print(f"docs: the programs of all {len(pages)} pages print what they show")


main()
