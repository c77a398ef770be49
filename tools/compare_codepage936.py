#!/usr/bin/env python3
"""compare_codepage936 MAPPING PREFIX: compares the conversions of the package installed in PREFIX with the mapping
published for the platform.

MAPPING is the text file that make_codepage936.py reads, or the same compressed with gzip. Compares the answers for all
65,536 pairs of bytes and for all 65,536 units of UTF-16, and prints the digest of all answers, which the test
Conversion.GivesTheAnswersOfThePublishedMapping has. Exits with 1 if an answer differs.
"""
import gzip
import os
import pathlib
import subprocess
import sys
import tempfile

PROGRAM = r"""
#include <cstdio>
#include <ZvUtiLib/gbk/Conversion.h>

template <class Text>
void Print(const zvuti::Converted<Text>& answer) {
  std::fwrite(answer.text.data(), sizeof answer.text[0], answer.text.size(), stdout);
  std::putchar(static_cast<unsigned char>(answer.lostAt));
  std::putchar('\n');
}

int main() {
  for (unsigned i = 0; i < 0x10000; ++i) {
    const char pair[] = {static_cast<char>(i >> 8), static_cast<char>(i & 0xFF)};
    Print(zvuti::GbkToUtf16({pair, 2}));
  }
  for (unsigned i = 0; i < 0x10000; ++i) {
    const char16_t unit = static_cast<char16_t>(i);
    Print(zvuti::Utf16ToGbk({&unit, 1}));
  }
}
"""
QUESTION, WHOLE = ord("?"), 255


def read(path):
    decode, encode = {}, {}
    with (gzip.open if path.endswith(".gz") else open)(path, "rt", encoding="ascii") as lines:
        for line in lines:
            kind, left, right = line.split()[:3]
            (decode if kind == "F" else encode)[int(left, 16)] = int(right, 16)
    return decode, encode


def answers(decode, encode):
    """(what, answer) for each question that the program asks, in its order."""
    def character(code):
        unit = decode.get(code, QUESTION)
        return unit, code >= 0x80 and unit == QUESTION

    for first in range(256):
        for second in range(256):
            is_lead = 0x81 <= first <= 0xFE
            codes = [first << 8 | second] if is_lead and second else [first, second]
            units = [character(code) for code in codes]
            lost = next((i for i, (_, is_lost) in enumerate(units) if is_lost), WHOLE)
            yield f"bytes {first:02X} {second:02X}", b"".join(u.to_bytes(2, "little") for u, _ in units) + bytes([lost])
    for unit in range(0x10000):
        code = encode.get(unit, QUESTION)
        is_whole = code == unit if unit < 0x80 else code >= 0x80 and decode.get(code) == unit
        yield f"U+{unit:04X}", code.to_bytes(2 if code > 0xFF else 1, "big") + bytes([WHOLE if is_whole else 0])


def digest(data):
    """FNV-1a with 64 bits."""
    value = 0xCBF29CE484222325
    for byte in data:
        value = (value ^ byte) * 0x100000001B3 & 0xFFFFFFFFFFFFFFFF
    return value


def main():
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    config = next(pathlib.Path(sys.argv[2]).resolve().rglob("ZvUtiLib.pc")).parent
    flags = subprocess.run(["pkg-config", "--cflags", "--libs", "ZvUtiLib"], check=True, capture_output=True, text=True,
                           env={**os.environ, "PKG_CONFIG_PATH": str(config)}).stdout.split()
    with tempfile.TemporaryDirectory() as folder:
        program = pathlib.Path(folder) / "program"
        subprocess.run(["g++", "-std=c++17", "-x", "c++", "-", "-o", program, *flags, f"-Wl,-rpath,{config.parent}"],
                       input=PROGRAM, text=True, check=True)
        given = subprocess.run([program], check=True, stdout=subprocess.PIPE).stdout
    at = differences = 0
    everything = bytearray()
    for what, answer in answers(*read(sys.argv[1])):
        line = given[at:at + len(answer) + 1]
        if line != answer + b"\n":
            differences += 1
            print(f"{what}: the library gives {line.hex(' ')}, the mapping {answer.hex(' ')}")
            line = given[at:given.index(b"\n", at + 1) + 1]
        at += len(line)
        everything += answer
    print(f"131072 answers, {differences} differences, digest 0x{digest(everything):016X}")
    sys.exit(1 if differences or at != len(given) else 0)


main()
