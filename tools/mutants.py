#!/usr/bin/env -S python3 -B
"""mutants.py [options] [FILES]: puts small faults into the library, one at a time, and lists those no test catches.

FILES are sources, headers or folders of the library; without them, all rooms. The faults come in a fixed order that
gives each room the same number and each file of a room a share by its size. A campaign works on a copy of the checkout
in build/mutants and resumes where it stopped: results.jsonl there has one line per fault. After a change of sources or
tests, the faults that nothing caught run again, and with --matrix all do.

Exits with 1 if over 5 percent of the counted faults survive. Faults that do not build do not count, nor do those in
tests/equivalent_mutants.txt.
"""
import argparse
import collections
import concurrent.futures
import contextlib
import hashlib
import itertools
import json
import os
import pathlib
import re
import resource
import shlex
import shutil
import signal
import subprocess
import sys
import tempfile
import threading
import time

from mutant_faults import drawn, faults_of

ROOT = pathlib.Path(__file__).resolve().parent.parent
WORK = ROOT / "build/mutants"
SOURCE, BUILD, EQUIVALENTS = WORK / "source", WORK / "build", "tests/equivalent_mutants.txt"
COVERAGE = ["-fprofile-instr-generate", "-fprofile-update=atomic", "-fcoverage-mapping"]
MEMORY, MOST_HANGS, MOST_SURVIVE = 4 << 30, 5, 5  # bytes for a test; hangs before a fault is given up; percent
# Headers of other libraries are parsed once.
INJECTED = """\
cmake_language(DEFER CALL target_precompile_headers zvutilib_objects PRIVATE <algorithm> <string> <vector>)
cmake_language(DEFER CALL target_precompile_headers zvutilib_tests PRIVATE <gmock/gmock.h> <fstream> <random>)
"""


def output_of(*command, **options):
    return subprocess.run([*map(str, command)], check=True, stdout=subprocess.PIPE, text=True, **options).stdout


def copy_checkout():
    """Copies what differs, so that builds stay incremental. Returns a digest of the code."""
    digest, listed = hashlib.sha256(), ("git", "ls-files", "--cached", "--others", "--exclude-standard")
    names = {name for name in output_of(*listed, cwd=ROOT).split() if (ROOT / name).is_file()}
    for name in sorted(names):
        content, copy = (ROOT / name).read_bytes(), SOURCE / name
        copy.parent.mkdir(parents=True, exist_ok=True)
        if not copy.exists() or copy.read_bytes() != content:
            copy.write_bytes(content)
        if name.endswith((".cpp", ".h", "CMakeLists.txt", ".cmake")):
            digest.update(name.encode() + content)
    for copy in {path for path in SOURCE.rglob("*") if path.is_file()} - {SOURCE / name for name in names}:
        copy.unlink()
    return digest.hexdigest()[:16]


def run_test(program, test, folder, usual_seconds, profile="/dev/null"):
    """Runs one test: "passed", "failed" or "hang". A fault must not take all memory nor run forever."""
    folder.chmod(0o755)  # some tests go on as another user
    shutil.rmtree(folder / "tmp", ignore_errors=True)
    (folder / "tmp").mkdir()
    process = subprocess.Popen([program, "--gtest_filter=" + test], cwd=folder, start_new_session=True,
                               stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL,
                               env=dict(os.environ, TMPDIR=f"{folder}/tmp", LLVM_PROFILE_FILE=profile))
    with contextlib.suppress(ProcessLookupError):
        for kind, limit in ((resource.RLIMIT_CPU, int(10 + 4 * usual_seconds)), (resource.RLIMIT_AS, MEMORY)):
            resource.prlimit(process.pid, kind, (limit, resource.prlimit(process.pid, kind)[1]))
    with contextlib.suppress(subprocess.TimeoutExpired):
        process.wait(60 + 10 * usual_seconds)
    code = process.poll()
    with contextlib.suppress(ProcessLookupError):
        os.killpg(process.pid, signal.SIGKILL)  # with what it left running
    process.wait()
    return "passed" if code == 0 else "hang" if code in (None, -signal.SIGXCPU) else "failed"


class Program:
    """The test program without a fault: how it is built, how long each test takes and which lines it runs."""

    def __init__(self, digest, jobs):
        if not (BUILD / "build.ninja").exists():
            (WORK / "inject.cmake").write_text(INJECTED)
            output_of("cmake", "-S", SOURCE, "-B", BUILD, "-G", "Ninja", "-DCMAKE_CXX_COMPILER=clang++",
                      "-DCMAKE_CXX_FLAGS=-O0 -w " + " ".join(COVERAGE), "-DCMAKE_EXE_LINKER_FLAGS=-fuse-ld=lld",
                      "-DCMAKE_CXX_COMPILER_LAUNCHER=" + (shutil.which("ccache") or ""),
                      f"-DCMAKE_PROJECT_ZvUtiLib_INCLUDE={WORK}/inject.cmake")
        subprocess.run(["cmake", "--build", BUILD, "--target", "zvutilib_tests", "-j", str(jobs)], check=True)
        self.commands, self.objects = {}, collections.defaultdict(list)  # by output; by source or header
        for line in output_of("ninja", "-C", BUILD, "-t", "commands", "tests/zvutilib_tests").split("\n"):
            words = shlex.split(line.removeprefix(": && ").removesuffix(" && :"))
            if "-o" in words:
                self.commands[words[words.index("-o") + 1]] = [
                    word for word in words if word not in COVERAGE[2:] and not word.endswith("/ccache")]
        for block in output_of("ninja", "-C", BUILD, "-t", "deps").split("\n\n"):
            name, *files = block.split("\n    ")
            for file in files:
                self.objects[file] += [name.split(":")[0]] if ".o:" in name else []
        stored = WORK / f"coverage-{digest}.json"
        if not stored.exists():
            stored.write_text(json.dumps(self.measured(jobs)))
        data = json.loads(stored.read_text())
        self.seconds, self.lines = data["seconds"], data["lines"]

    def measured(self, jobs):
        """{"seconds": {test: s}, "lines": {file: {line: numbers of the tests that run it}}}, each test by itself"""
        program, tests, suite = BUILD / "tests/zvutilib_tests", [], ""
        for line in output_of(program, "--gtest_list_tests", cwd=WORK).splitlines():
            suite = suite if line.startswith("  ") else line.split()[0]
            tests += [suite + line.split()[0]] if line.startswith("  ") else []
        print(f"Finding the lines that each of {len(tests)} tests runs", flush=True)

        def measure(test):
            with tempfile.TemporaryDirectory(dir=WORK) as name:
                folder, started = pathlib.Path(name), time.monotonic()
                outcome = run_test(program, test, folder, 100, f"{folder}/%p.profraw")
                seconds = time.monotonic() - started
                output_of("llvm-profdata-14", "merge", "--sparse", "-o", folder / "all", *folder.glob("*.profraw"))
                report = output_of("llvm-cov-14", "export", "--format=lcov", "--skip-functions",
                                   f"--instr-profile={folder}/all", program, stderr=subprocess.DEVNULL)
                return test, outcome, seconds, report.split("\n")

        seconds, lines = {}, collections.defaultdict(lambda: collections.defaultdict(list))
        with concurrent.futures.ThreadPoolExecutor(jobs) as pool:
            for test, outcome, took, report in pool.map(measure, tests):
                if outcome != "passed":
                    print(f"{test} is left out, because it fails without a fault", flush=True)
                    continue
                for line in report:
                    if line.startswith("SF:"):
                        file = lines[os.path.relpath(line[3:], SOURCE)]
                    elif line.startswith("DA:"):
                        number, count = line[3:].split(",")
                        file[number] += [len(seconds)] if count != "0" else []
                seconds[test] = took
        return {"seconds": seconds, "lines": lines}

    def tests_of(self, fault):
        """The tests that can see the fault, quickest first: all, where the compiler alone evaluates the line."""
        names, lines = list(self.seconds), self.lines.get(fault.file, {})
        running = {names[number] for number in lines.get(str(fault.line), [])}
        near = {names[number] for numbers in lines.values() for number in numbers}
        is_unseen = not running and (fault.is_constant or str(fault.line) not in lines)
        return sorted(names if is_unseen else running, key=lambda test: (test not in near, self.seconds[test]))

    def build(self, fault, folder):
        """The test program with the fault, or None if it does not build. The compiler sees the fault in place of the
        file; the copy of the checkout and the objects without a fault stay as they are, so nothing is built back."""
        (folder / "faulty").write_text(fault.content, encoding="utf-8")
        entry = {"type": "file", "name": f"{SOURCE}/{fault.file}", "external-contents": f"{folder}/faulty"}
        (folder / "overlay").write_text(json.dumps({"version": 0, "use-external-names": False, "roots": [entry]}))
        places = {"tests/zvutilib_tests": f"{folder}/zvutilib_tests"}
        for number, name in enumerate(self.objects[entry["name"]]):
            places[name] = f"{folder}/{number}.o"
            command = [places.get(word, word) for word in self.commands[name]] + ["-ivfsoverlay", f"{folder}/overlay"]
            if subprocess.run(command, cwd=BUILD, stderr=subprocess.DEVNULL).returncode != 0:
                return None
        output_of(*[places.get(word, word) for word in self.commands["tests/zvutilib_tests"]], cwd=BUILD)
        shutil.copy(BUILD / "tests/registrable.so", folder)
        return folder / "zvutilib_tests"

    def judge(self, fault, is_all):
        """(outcome, tests that fail). A failure counts if it happens twice, so that load does not pass for a catch."""
        tests = self.tests_of(fault)
        with tempfile.TemporaryDirectory(dir=WORK) as name:
            folder, caught, hangs = pathlib.Path(name), [], 0
            program = self.build(fault, folder) if tests else None
            if not program:
                return "does not build" if tests else "not covered", []
            for test in tests:
                outcomes = [run_test(program, test, folder, self.seconds[test])]
                outcomes += [run_test(program, test, folder, self.seconds[test])] if outcomes == ["failed"] else []
                hangs += outcomes[-1] == "hang"
                caught += [test] if "passed" not in outcomes else []
                if caught and not is_all or hangs == MOST_HANGS:
                    break
        return "caught (hang)" if hangs else "caught" if caught else "survives", caught


def report_redundant(tried, catches):
    """Names the tests that catch nothing which others do not catch, as far as these faults show."""
    caught, tried = (collections.Counter(itertools.chain(*tests)) for tests in (catches, tried))
    needed = {tests[0] for tests in catches if len(tests) == 1}
    print(f"\n{len(needed)} tests catch a fault that no other catches. These do not, of the faults that they meet:")
    print("\n".join(f"  {test}: catches {caught[test]} of {tried[test]}" for test in sorted(set(tried) - needed)))


def main():
    parser = argparse.ArgumentParser(prog="./run mutants", description=__doc__.split("\n\n")[1])
    parser.add_argument("files", nargs="*", metavar="FILES", help="sources, headers or folders; all rooms without them")
    parser.add_argument("--number", type=int, default=100, help="of faults that count (100)")
    parser.add_argument("--seed", type=int, default=1, help="another one draws other faults (1)")
    parser.add_argument("--matrix", action="store_true", help="find all tests that catch a fault, and those not needed")
    parser.add_argument("-j", "--jobs", type=int, default=os.cpu_count(), help="faults tried at a time (one per core)")
    options = parser.parse_args()
    digest = copy_checkout()
    rooms = re.findall(r"^\| `([a-z]+)/` ", (SOURCE / "docs/architecture.md").read_text(encoding="utf-8"), re.M)
    names = sorted(str(path.relative_to(SOURCE)) for room in {*rooms, "include"} for path in (SOURCE / room).rglob("*")
                   if re.search(r"(?<!_win32)(?<!CodePage936Table)\.(cpp|h)$", path.name))
    every = [fault for name in names for fault in faults_of(name, (SOURCE / name).read_text(encoding="utf-8"))]
    wanted = tuple(os.path.normpath(name) + "/" for name in options.files) or ("",)
    faults = [fault for fault in every if (fault.file + "/").startswith(wanted)]
    if not faults:
        sys.exit("mutants: there is nothing in these files that could be made faulty")
    lines = (ROOT / EQUIVALENTS).read_text(encoding="utf-8").splitlines()
    equivalents = {line for line in lines if line and not line.startswith("#")}
    for line in equivalents - {fault.key for fault in every}:
        print(f"{EQUIVALENTS}: no fault looks like this: {line}")
    program, stored, known, lock = Program(digest, options.jobs), WORK / "results.jsonl", {}, threading.Lock()
    for result in map(json.loads, stored.read_text().splitlines() if stored.exists() else []):
        is_current = result["digest"] == digest and (result["is_all"] or not options.matrix or not result["tests"])
        if is_current or result["tests"] and not options.matrix:
            known[result["id"]] = result

    def result_of(fault):
        started, result = time.monotonic(), known.get(fault.id)
        if not result:
            outcome, tests = program.judge(fault, options.matrix)
            result = {"id": fault.id, "outcome": outcome, "tests": tests, "is_all": options.matrix, "digest": digest}
            with lock, stored.open("a") as page:
                page.write(json.dumps(result) + "\n")
                print(f"{time.monotonic() - started:5.0f} s  {result['outcome']}: {fault.id[:150]}", flush=True)
        return result

    order, counted = (fault for fault in drawn(faults, options.seed) if fault.key not in equivalents), []
    with concurrent.futures.ThreadPoolExecutor(options.jobs) as pool:
        while batch := list(itertools.islice(order, max(options.number - len(counted), 0))):
            judged = zip(batch, pool.map(result_of, batch))
            counted += [(fault, result) for fault, result in judged if result["outcome"] != "does not build"]
    if not counted:
        sys.exit("mutants: no fault builds")
    survivors = [(fault, result) for fault, result in counted if not result["tests"]]
    if options.matrix:
        report_redundant([program.tests_of(fault) for fault, _ in counted], [result["tests"] for _, result in counted])
    print(f"\nOf {len(counted)} faults {len(survivors)} survive, {100 * len(survivors) / len(counted):.1f} percent")
    for fault, result in sorted(survivors, key=lambda survivor: survivor[0].id):
        print(f"  {result['outcome']}, line {fault.line}: {fault.key}")
    sys.exit(100 * len(survivors) > MOST_SURVIVE * len(counted))


main()
