#!/usr/bin/env python3
"""check.py COMPILER...: what a client may write compiles, and what it may not says what to write instead.

Each compiler has to take accepted.cpp without a warning, as C++17 and as C++20, and to refuse each case of
REFUSED with its message. A compiler that is not installed is left out, and named; that none is, is an error.
"""
import concurrent.futures
import pathlib
import shutil
import subprocess
import sys
import tempfile

HERE = pathlib.Path(__file__).resolve().parent
INCLUDE = HERE.parent.parent / "include"
# Those of a careful client: an overload of ours stands in its code.
WARNINGS = ["-Wall", "-Wextra", "-Wpedantic", "-Wconversion", "-Wshadow", "-Wold-style-cast", "-Wcast-qual",
            "-Wformat=2", "-Wformat-security", "-Wdouble-promotion", "-Werror"]

PREAMBLE = """
#include <ZvUtiLib/CDebug.h>
#include <ZvUtiLib/data/CStream.h>
#include <ZvUtiLib/data/CTextString.h>
#include <ZvUtiLib/platform/CString.h>
#include <ZvUtiLib/records/Items.h>
#include <string_view>
struct Slot : ItemRecord { int Seat = 0; };
struct Converts { operator const char*() const { return ""; } operator CString() const { return ""; } };
struct Kept { Kept(const Kept&) = delete; int value; };
struct Private : private CString {};
struct Both : std::string, CString {};
union Either { int number; float real; };
class Unseen;
template <class T> const T& A();
CString& string = const_cast<CString&>(A<CString>());
CTextString& text = const_cast<CTextString&>(A<CTextString>());
CStreamReader& stream = const_cast<CStreamReader&>(A<CStreamReader>());
"""
OBJECT = "Of any other object write what %s or %d shall print: .c_str() of a text"
NULL_TEXT = "nullptr is no text: write "
SLICED = "A class that extends a record would lose its own fields here. Declare for it "
STANDARD = "ZvUtiLib needs C++17: compile with -std=c++17"
# Message, and what is refused with it. The texts before and behind an object do not hide it.
REFUSED = [
    (OBJECT, 'CDebug::LogOut("%s", A<std::string_view>());'),
    (OBJECT, 'CDebug::LogOut("%d", A<Kept>());'),
    (OBJECT, 'CDebug::LogOut("%d", A<Unseen>());'),
    (OBJECT, 'CDebug::LogOut("%s %s", string, A<Converts>());'),
    (OBJECT, 'string.Format("%s", A<std::wstring>());'),
    (OBJECT, 'string.Format("%d", [] { return 1; });'),
    (OBJECT, 'string.Format("%s", A<volatile CString>());'),
    (OBJECT, 'string.Format("%s", A<Both>());'),
    (OBJECT, 'text.Format("%s", A<Private>());'),
    (OBJECT, 'text.Format("%d %s %s", 7, A<CByteBuffer>(), text);'),
    (OBJECT, 'text.Format("%d", A<Either>());'),
    (NULL_TEXT, "stream << nullptr;"),
    (NULL_TEXT, "stream << 1 << A<std::nullptr_t>();"),
    (SLICED, "std::vector<Slot> slots; stream >> slots;"),
    (SLICED, "stream << std::vector<Slot>();"),
]
TOO_OLD = ["CDebug.h", "CUtiNumber.h", "data/Containers.h", "ZvUtiLib.h"]  # as C++14


def compiled(compiler, standard, source, *options):
    """Whether the compiler takes the source, and its messages."""
    done = subprocess.run(["env", "LC_ALL=C", compiler, f"-std={standard}", f"-I{INCLUDE}", "-fsyntax-only", "-x", "c++", "-",
                           *options], input=source, text=True, stdout=subprocess.PIPE, stderr=subprocess.STDOUT)
    return done.returncode == 0, done.stdout


def taken(compiler, standard, source):
    """What is wrong with a source that should compile, "" when nothing is."""
    compiles, said = compiled(compiler, standard, source, *WARNINGS)
    return "" if compiles else f"is refused:\n{said}"


def refused(compiler, standard, source, message, most_errors):
    """What is wrong with a source that should be refused, "" when nothing is."""
    compiles, said = compiled(compiler, standard, source)
    if compiles:
        return "compiles"
    if message not in said:
        return f"is refused without '{message}':\n{said}"
    errors = sum("error: " in line for line in said.splitlines())
    return f"gives {errors} errors:\n{said}" if errors > most_errors else ""


def stored(compiler, options, expected):
    """What is wrong with the bytes that the compiler stores for a literal in a UTF-8 source; `expected` is None if it
    should refuse the option. docs/services/chinese-text.md has the table."""
    source = 'extern const char text[] = "[\u67ab\u53f6]";\n'
    with tempfile.TemporaryDirectory() as folder:
        built = pathlib.Path(folder) / "literal.o"
        done = subprocess.run([compiler, *options, "-c", "-x", "c++", "-", "-o", built], input=source.encode(),
                              capture_output=True)
        if done.returncode != 0 or expected is None:
            return "" if done.returncode != 0 and expected is None else f"gives {done.returncode}: {done.stderr}"
        return "" if b"[" + expected + b"]\0" in built.read_bytes() else "does not have the bytes " + expected.hex(" ")


def checks(compiler):
    """(what, function, its arguments) of each check."""
    accepted = (HERE / "accepted.cpp").read_text()
    for standard in ("c++17", "c++20"):
        yield f"accepted.cpp as {standard}", taken, (compiler, standard, accepted)
    for message, line in REFUSED:
        source = f"{PREAMBLE}void Client() {{ {line} }}\n"
        yield line, refused, (compiler, "c++17", source, message, 1)
    yield "a literal", stored, (compiler, [], "\u67ab\u53f6".encode())
    yield "a literal with -fexec-charset=GBK", stored, (
        compiler, ["-fexec-charset=GBK"], None if "clang" in compiler else "\u67ab\u53f6".encode("gbk"))
    for header in TOO_OLD:  # the second error is the include that ends the compilation
        yield f"{header} as C++14", refused, (compiler, "c++14", f"#include <ZvUtiLib/{header}>\n", STANDARD, 2)


def main():
    compilers = dict.fromkeys(sys.argv[1:])
    installed = [compiler for compiler in compilers if shutil.which(compiler)]
    for compiler in compilers:
        if compiler not in installed:
            print(f"compile: {compiler} is not installed, left out")
    if not installed:
        sys.exit("compile: no compiler to try")
    with concurrent.futures.ThreadPoolExecutor() as pool:
        results = [(compiler, what, pool.submit(check, *arguments))
                   for compiler in installed for what, check, arguments in checks(compiler)]
    problems = [(compiler, what, result.result()) for compiler, what, result in results if result.result()]
    for compiler, what, problem in problems:
        print(f"compile: {compiler}: {what} {problem}", file=sys.stderr)
    if problems:
        sys.exit(1)
    print(f"compile: {len(results)} cases, right with {', '.join(installed)}")


main()
