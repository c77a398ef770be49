"""Tests the forms in which bytes are given: text of many kinds, and captures."""
import os
import struct
import tempfile
import unittest

from support import run

WIRE = bytes.fromhex("2a0500000041420a5c00000080")  # an AccountExtra

# Each describes WIRE. The first line of a dump is 0x10 bytes into its file in the third case.
TEXTS = [
    "2A 05 00 00 00 41 42 0A 5C 00 00 00 80",
    "2a05000000,41:42-0a;5c00\n\n000080",
    "0x2A, 0x5, 0x00,0x00,0x00, 0x41,0x42,0x0A,0x5c,\n0x00,0x00,0x00,0X80,",
    "0x2A050000000x41420A5C00000080",
    r"\x2a\x05\x00\x00\x00\x41\x42\x0a\x5c\x00\x00\x00\x80",
    '"\\x2a\\5\\0\\0\\0AB\\n\\\\" /* "no" */ \\\n  "\\x00\\0" // b\n "\\000\\x80"',
    "payload = b'*\\x05\\x00\\x00\\x00AB\\n\\\\\\x00\\x00\\x00\\x80'\n",
    'static const char text[13] = "*\\x05\\0\\0\\0AB\\n\\\\\\0\\0\\0\\200";',
    "/* it's { */ unsigned char a_bin[] = {\n  42, 0x05, 0, 0, 0, 'A', 'B', '\\n', 0x5cU, 0, 0, 0, -128,\n};\n"
    "unsigned int a_bin_len = 13;\n",
    "bytes([42, 0x05, 0, 0, 0, 0x41, 0x42, 10, 0x5c, 0, 0, 0, 0x80])",
    "\ufeff00000000: 2a05 0000 0041 420a 5c00 0000 80         *....AB.\\....\n",
    "00000000: 2a05 0000  *...\n00000004: 0041 420a  .AB.\n00000008: 5c00 0000  \\...\n0000000c: 80  .\r\n",
    "00000010  2a 05 00 00 00 41 42 0a  5c 00 00 00 80           |*....AB.\\....|\n0000001d\n",
    "00000  2a 05 00 00 00 41 42 0a  5c 00 00 00 80\n",
    "0000   2a 05 00 00 00 41 42 0a 5c 00 00 00 80            *....AB.\\....\n",
    "\t0x0000:  2a05 0000 0041 420a 5c00 0000 80         *....AB.\\....\n",
    "000000 2a 05\n000002 00\n*\n000005 41 42 0a\n000008 5c 00 00 00 80  >\\....<\n00000d\n",
    "0000000 2a 05 00 00 00 41 42 0a\n0000010 5c 00 00 00 80\n0000015\n",
]

# Text that is not bytes, and what the message says after the source and the line.
FAULTS = [
    ("00\n0g", "line 2, column 1: '0g' is not pairs of hexadecimal digits"),
    ("00 0x", "line 1, column 4: '0x' is not pairs"),
    ("2a 05 0", "line 1, column 7: '0' is not pairs"),
    ("2a\x00\x1b[31m", "column 1: '2a\\x00\\x1B[31m' is not pairs"),
    ("a" * 10000001, "column 1: 'aaaaaaaaaaaaaaaaaaaa..' is not pairs"),
    ("00" * 5000000 + "z", "column 10000001: 'z' is not pairs"),
    (r"\x2a\x5", r"column 1: '\x2a\x5' is not an escape"),
    (r"\x2aAB", r"column 1: '\x2aAB' is text after an escape; put all of it in quotes"),
    ('"\\x2a', "column 1: '\"' has no closing quote"),
    ('"\\q"', r"column 2: '\q' is not an escape"),
    ('"\\x4"', r"column 2: '\x' needs two"),
    ('"a\n"', r"column 3: '\x0A' before the closing quote"),
    ('"\\', "needs a closing quote"),
    ('"a" x', "column 5: 'x' stands after the end"),
    ("a[] = {1, 256}", "column 11: '256' is not a byte of an array"),
    ("a[] = {1, 007}", "'007' starts with 0"),
    ("a[] = {1 2}", "column 10: '2}' stands where a comma"),
    ("a[] = {{1}}", "'{' has no place in an array"),
    ("a[] = {1, ", "column 7: '{' has no closing brace"),
    ("a[] = {1};\nb[] = {2};", "line 2, column 7: '{2};' starts more bytes"),
    ("2a { 05 }", "column 4: '{' is not pairs"),
    ("0000000 052a 0000\n", "'0000000' is not pairs of hexadecimal digits; if this is a dump of words, use hexdump -C"),
    ("00000000: 2a05\n00000010: 00", "line 2, column 1: '00000010' does not follow: the line at 00000000 has 2 bytes"),
    ("00000000: 2a05\n00000000: 00", "line 2, column 1: '00000000' does not follow the offset 00000000"),
    ("00000000: 2a05\nhello: 00", "line 2, column 1: 'hello:' is not the offset of a line"),
    ("00000000  2a\n*\n", "needs a line with an offset after '*'"),
    ("00000000  2a\n*\nffffffffffffffff\n", "'ffffffffffffffff' repeats more than 64 MB"),
    ("00000000  2a 05\n*\n00000003\n", "'00000003' is not a whole number of lines"),
    ("00000000: 2a05\n10000000000000000: 00", "'10000000000000000:' is not the offset"),
]


class Texts(unittest.TestCase):
    def test_reads_what_people_have(self):
        for text in TEXTS:
            with self.subTest(text):
                code, out, error = run("decode", "AccountExtra", "--hex", "--json", stdin=text.encode())
                self.assertEqual((code, error), (0, b""))
                self.assertEqual(run("encode", "AccountExtra", stdin=out)[1], WIRE)

    def test_names_what_it_cannot_read(self):
        for text, message in FAULTS:
            with self.subTest(text[:40]):
                code, out, error = run("decode", "AccountExtra", "--hex", stdin=text.encode())
                self.assertEqual((code, out), (2, b""))
                self.assertIn("zvuti: standard input, line ", error.decode())
                self.assertIn(message, error.decode())
                self.assertLess(len(error), 200)


if __name__ == "__main__":
    unittest.main()
