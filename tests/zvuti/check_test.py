"""Tests check on a client's folder with one fault of each kind."""
import os
import shutil
import tempfile
import unittest
from pathlib import Path

from support import SOURCE, run

RANKS = "\u65b0\u624b 0\n\u8001\u624b 10\n[INTRODUCE]\n".encode("gbk")
LEVELS = b"1 0\n2 100\n"
TASKS = "[AutoTask]\n1=\u767b\u5f55\n".encode("gbk")
WORDS = "\u5916\u6302\ncheat\n".encode("gbk")

# The file, its content, the start of the first finding after the file's name, and the kinds of all findings.
FAULTS = [
    ("Maple/Rank.ini", b"a 5\nb 5\n[INTRODUCE]", ":2: ", "order"),
    ("Maple/Rank.ini", b"a 5\nb\n", ":2: ", "cut sentinel"),
    ("Maple/Rank.ini", b"a 5\nOld Cat 9\n[INTRODUCE]", ":2: ", "cut sentinel"),
    ("Maple/Rank.ini", b"a 99999999999999999999\n[INTRODUCE]", ":1: ", "cut cut sentinel"),
    ("Maple/Rank.ini", b"a 5\nb 9\n\n", ":3: ", "sentinel"),
    ("Maple/Rank.ini", b"a 5\nb 6x 7\n[INTRODUCE]", ":2: ", "run-on"),
    ("Maple/Rank.ini", b"a 5\na 6\n[INTRODUCE]", ":2: ", "duplicate"),
    ("Maple/Rank.ini", b"a 5\n[INTRODUCE]\n\x81 ", ":3: ", "encoding"),
    ("Maple/Rank.ini", RANKS.decode("gbk").encode(), ":1: ", "encoding"),
    ("Maple/Rank.ini", b"\xef\xbb\xbf" + RANKS, ":1: the UTF-8 byte order mark", "encoding"),
    ("Maple/Rank.ini", b"\xef\xbb\xbfa 5\n[INTRODUCE]", ":1: the UTF-8 byte order mark", "encoding"),
    ("Maple/Rank.ini", RANKS.decode("gbk").encode("utf-16"), ":1: this file is UTF-16 with a byte", "encoding"),
    ("Maple/level.txt", LEVELS.decode().encode("utf-16-be"), ":1: this file is UTF-16, but", "encoding"),
    ("Maple/Task.ini", TASKS.decode("gbk").encode(), ":1: this file is UTF-8, but", "encoding"),
    ("words.txt", WORDS.decode("gbk").encode() * 9, ":1: this file is UTF-8, but", "encoding"),
    ("words.txt", b"\xef\xbb\xbf" + WORDS.decode("gbk").encode(), ":1: this file is UTF-8 with a byte", "encoding"),
    ("board.xml", "<a>\u65b0</a>".encode("gbk"), ":1:1: this document is GBK, but does not declare it", "xml"),
    ("board.xml", '<?xml version="1.0" encoding="GBK"?><a>\u65b0\u65b0</a>'.encode(), ":1:1: this document is UTF-8, but",
     "encoding"),
    ("Maple/level.txt", b"1 0\n3 5\n", ":2: ", "order"),
    ("Maple/level.txt", b"1 5\n2 4\n", ":2: ", "order"),
    ("Maple/level.txt", b"1 0\n2\n", ":2: ", "cut"),
    ("Maple/level.txt", b"1 0\nend\n", ":2: ", "cut"),
    ("Maple/level.txt", b"", ":1: ", "cut"),
    ("Maple/Task.ini", TASKS + b"x=name\n", ":3: ", "task"),
    ("Maple/Task.ini", TASKS + b"02=name\n", ":3: ", "task"),
    ("Maple/Task.ini", TASKS + b"2=\n", ":3: ", "task"),
    ("Maple/Task.ini", TASKS + b"1=again\n", ":3: ", "duplicate"),
    ("Maple/Task.ini", TASKS + b"[autotask]\n2=lost\n", ":3: ", "duplicate"),
    ("Maple/Task.ini", b"[Tasks]\n1=name\n", ": ", "task"),
    ("words.txt", WORDS + b"\x81 \xa1\n", ":3: ", "dead-word"),
    ("words.txt", WORDS + b"\tword\n", ":3: ", "dead-word"),
    ("words.txt", b"\xef\xbb\xbfbad\n" + WORDS, ":1: the UTF-8 byte order mark", "dead-word"),
    ("words.txt", b"\xef\xbb\xbf\n" + WORDS, ":1: the UTF-8 byte order mark", "odd-word"),
    ("words.txt", WORDS + b"half\xb0\n", ":3: ", "odd-word"),
    ("words.txt", WORDS + b" blank\n", ":3: ", "odd-word"),
    ("words.txt", WORDS + b"Cheat tool\n", ":3: ", "hidden-word"),
    ("words.txt", WORDS + b"CHEAT\n", ":3: ", "duplicate"),
    ("words.txt", WORDS + b"last\x1alost\n", ":3: ", "cut"),
    ("board.xml", b"<a>\n  <b></a>\n", ":2:8: ", "xml"),
    ("board.xml", b'<?xml version="1.0" encoding="GBK"?>\n<a>\x81 </a>', ":2:4: ", "xml"),
    ("board.xml", "<a>\n\U0001f600</a>".encode(), ":2:1: ", "xml"),
    ("board.xml", b'<?xml version="1.0" encoding="nothing"?><a/>', ":1:1: ", "xml"),
    ("board.xml", '<a k="x \u2200="/>'.encode("utf-16-le"), ":1:1: ", "xml"),
    ("board.xml", '<?xml version="1.0" encoding="utf-16"?>\n<a>\U0001f600</a>'.encode("utf-16-be"), ":2:4: ", "xml"),
    ("board.xml", b"<!DOCTYPE a SYSTEM 'd'>\n<a k='&x;'/>", ":1:1: ", "xml"),
    ("board.xml", b"<!DOCTYPE a [\n<!ATTLIST a" + b" k CDATA ''" * 257 + b">]><a/>", ":2:", "xml"),
    ("maple2/Rank.ini", RANKS, "", "stray"),
    ("pine/Rank.ini", RANKS, "", "stray"),
]


class Check(unittest.TestCase):
    def setUp(self):
        self.folder = Path(tempfile.mkdtemp())
        self.addCleanup(shutil.rmtree, self.folder)
        self.fill()

    def fill(self):
        for path, content in (("Maple/Rank.ini", RANKS), ("Maple/level.txt", LEVELS), ("Maple/Task.ini", TASKS),
                              ("words.txt", WORDS), ("board.xml", b"<a/>")):
            (self.folder / path).parent.mkdir(exist_ok=True)
            (self.folder / path).write_bytes(content)

    def check(self, *options):
        code, out, error = run("check", self.folder, *options)
        self.assertEqual(error, b"")
        return code, out.decode().splitlines()

    def test_a_sound_folder_gives_one_line(self):
        self.assertEqual(self.check(), (0, ["1 game, 1 rank table (2 ranks), 1 level table (2 levels), 1 task file "
                                            "(1 task), 1 word list (2 words), 1 XML document: nothing found"]))

    def test_accepts_the_marks_that_the_library_skips(self):
        for path, content in (("Maple/level.txt", LEVELS), ("Maple/Task.ini", TASKS)):
            (self.folder / path).write_bytes(b"\xef\xbb\xbf" + content)
        code, lines = self.check()
        self.assertEqual((code, len(lines)), (0, 1))
        self.assertIn("(2 levels), 1 task file (1 task)", lines[0])

    def test_finds_one_fault_of_each_kind(self):
        for path, content, place, kinds in FAULTS:
            with self.subTest(path=path, content=content):
                target = self.folder / path
                target.parent.mkdir(exist_ok=True)
                target.write_bytes(content)
                code, lines = self.check()
                self.fill()
                if target.parent.name not in ("Maple", self.folder.name):
                    shutil.rmtree(target.parent)
                found = lines[:-1]
                self.assertEqual((code, [line[line.rindex("[") + 1:-1] for line in found]), (1, kinds.split()), lines)
                reported = target if place else target.parent
                self.assertTrue(found[0].startswith(f"{reported}{place or ': '}"), found[0])

    def test_finds_missing_and_misspelt_files(self):
        (self.folder / "Maple/Rank.ini").rename(self.folder / "Maple/rank.INI")
        (self.folder / "Maple/level.txt").unlink()
        code, lines = self.check()
        self.assertEqual(code, 1)
        self.assertIn("there is no level.txt", lines[0])
        self.assertIn("rank.INI: the library looks for Rank.ini", lines[1])
        self.assertEqual(self.check("--ignore", "missing", "--ignore", "stray")[0], 0)

    def test_pipes_and_devices_are_not_read(self):
        (self.folder / "Maple/Task.ini").unlink()
        os.mkfifo(self.folder / "Maple/Task.ini")
        (self.folder / "words.txt").unlink()
        (self.folder / "words.txt").symlink_to("/dev/zero")
        code, lines = self.check()
        self.assertEqual((code, [line.endswith("[unreadable]") for line in lines]), (1, [True, True, False]))

    def test_the_lobby_has_one_word_inside_another(self):
        code, out, _ = run("check", SOURCE / "examples/lobby/app")
        self.assertEqual((code, out.count(b"[hidden-word]"), out.count(b"\n")), (1, 1, 2))


if __name__ == "__main__":
    unittest.main()
