"""Tests exit codes, the small commands, completion, and the transcripts in the documents."""
import re
import shlex
import subprocess
import tempfile
import unittest
import xml.etree.ElementTree
from pathlib import Path

from support import PROGRAM, SOURCE, run

APP = SOURCE / "examples/lobby/app"

# Arguments, standard input, exit code, and a part of the output or message.
CASES = [
    ([], b"", 2, "subcommand is required"),
    (["--version"], b"", 0, "zvuti 1."),
    (["decode"], b"", 2, "RECORD is required"),
    (["decode", "ItmRecord"], b"", 2, "did you mean ItemRecord?"),
    (["decode", "ItemRecord", "no-such-file"], b"", 2, "No such file"),
    (["decode", "ItemRecord", "/"], b"", 2, "it is a folder"),
    (["decode", "ItemRecord", "--hex"], b"00\n0g", 2, "line 2, column 1: '0g' is not pairs"),
    (["decode", "ItemRecord", "--skip", "9"], b"123", 2, "is beyond the 3 bytes"),
    (["decode", "ItemRecord", "--skip", "-1"], b"123", 2, "--skip"),
    (["bogus"], b"", 2, "no command or option bogus"),
    (["decod"], b"", 2, "did you mean decode?"),
    (["decode", "--jsn"], b"", 2, "decode has no option --jsn; did you mean --json?"),
    (["encode", "ItemRecord"], b'{"Cuont": 1}', 2, "Cuont: no such field in ItemRecord; did you mean Count?"),
    (["encode", "ItemRecord"], b'{"StartTime": "2013-02-29"}', 2, "there is no day 29 in this month"),
    (["encode", "ItemRecord"], b'{"StartTime": "1999-12-31"}', 2, "not a date from 2000 to 2063"),
    (["records", "ItemRecord", "--color", "always"], b"", 0, "\x1b[1mStartTime"),
    (["records", "ItemRecord"], b"", 0, "ItemRecord: 22-26 bytes"),
    (["check", "no-such-folder"], b"", 2, "there is no folder"),
    (["check", "."], b"", 2, "contains nothing that a client reads"),
    (["check", ".", "--ignore", "nothing"], b"", 2, "--ignore"),
    (["mask", APP / "words.txt"], "\u514d\u8d39\u5916\u6302 GOLD4U.example".encode(), 0, "******** **************"),
    (["mask", APP / "words.txt"], b"\xcd\xe2\xb9\xd2", 2, "not UTF-8; use --from gbk"),
    (["mask", APP / "words.txt", "--from", "gbk"], b"\xcd\xe2\xb9\xd2!", 0, "****!"),
    (["number", "-5"], b"", 0, "none for negative numbers"),
    (["number", "abc"], b"", 2, "neither digits nor numerals"),
    (["number", "12,34"], b"", 1, "not where the library puts them"),
    (["time", "0x1FFFFFFFF"], b"", 2, "does not fit in 32 bits"),
    (["time", "2013-02-29 00:00:00"], b"", 1, "there is no day 29"),
    (["time", "1999-01-01"], b"", 1, "1999 is out of range and becomes 2063; years are 2000 to 2063"),
    (["time"], b"\n", 2, "no time is given, and standard input is empty"),
    (["mask", "/dev/null"], b"", 2, "not a regular file"),
    (["wheel"], b"", 2, "--slot is required"),
    (["wheel", "--slot", "12"], b"", 2, "0 to 11"),
    (["wheel", "--slot", "0", "--gain", "0.8", "--even", "0", "--start", "4.746891450771299"], b"", 0,
     "0.000000 before the slot's low\nbound"),
    (["wheel", "--slot", "1", "--slots", "1000", "--top-speed", "6", "--even", "1"], b"", 0, "outside the slot"),
    (["wheel", "--slot", "1", "--gain", "nan"], b"", 2, "--gain must be above 0"),
    (["wheel", "--slot", "1", "--gain", "1e-9"], b"", 2, "more than a million ticks"),
]


class Commands(unittest.TestCase):
    def test_exit_codes_and_messages(self):
        for arguments, stdin, code, part in CASES:
            with self.subTest(arguments=arguments):
                done = run(*arguments, stdin=stdin, cwd=Path(__file__).parent)
                self.assertEqual(done[0], code, done)
                self.assertIn(part, (done[1] + done[2]).decode())
                if code == 2:
                    self.assertEqual(done[1], b"")

    def test_numbers_and_times_go_on_after_a_bad_one(self):
        for arguments, stdin, lines, problems in (
                (["number", "x", "7", "-5", "--color", "never"], b"", 7, 1), (["number"], b"x\n 7 \n\n-5\r\n", 7, 1),
                (["time", "x", "0x363AC8B8", "y"], b"", 1, 2), (["time", "-"], b"2013-08-29 12:34:56\nx\n909822136", 2, 1)):
            code, out, error = run(*arguments, stdin=stdin)
            self.assertEqual((code, out.count(b"\n"), error.count(b"\n")), (2, lines, problems), arguments)

    def test_reports_a_list_without_words(self):
        with tempfile.NamedTemporaryFile() as words:
            self.assertEqual(run("mask", words.name, stdin=b"text")[:2], (1, b"text"))

    def test_reports_a_byte_order_mark_before_the_first_word(self):
        with tempfile.NamedTemporaryFile() as words:
            words.write(b"\xef\xbb\xbffirst\nsecond\n")
            words.flush()
            code, out, error = run("mask", words.name, stdin=b"first second")
        self.assertEqual((code, out), (1, b"first ******"))
        self.assertIn(b"a UTF-8 byte order mark", error)

    def test_names_the_encoding_of_a_list_or_a_text(self):
        chinese = "\u6211\u5011\u4e0d\u662f\u5916\u639b\uff0c\u514d\u8cbb\u904a\u6232\u5e63\n"
        for content, name in ((chinese.encode(), b" is UTF-8, but"), (chinese.encode("utf-16-le"), b" is UTF-16, but"),
                              (b"\xef\xbb\xbf" + chinese.encode(), b" is UTF-8 with a byte order mark, but"),
                              (chinese.encode("utf-16"), b" is UTF-16 with a byte order mark, but"),
                              (chinese.encode("big5"), b" is probably Big5, but"), (chinese.encode("gbk"), None)):
            with self.subTest(name), tempfile.NamedTemporaryFile() as file:
                file.write(content)
                file.flush()
                for arguments in (("mask", file.name), ("mask", APP / "words.txt", file.name)):
                    code, _, error = run(*arguments, stdin=b"text")
                    self.assertEqual((code, error.count(b"\n")), (0, 0) if name is None else (1, 1), error)
                    self.assertIn(name or b"", error)
                self.assertEqual(run("convert", file.name), (0, b"", b""))
                self.assertEqual(Path(file.name).read_bytes(), chinese.encode("gbk"))

    def test_converts_whole_files_or_nothing(self):
        with tempfile.TemporaryDirectory() as folder:
            path = Path(folder) / "words.txt"
            for source, options, part in (("\u5916\u6302\n\U0001f600\u00b2\n".encode(), [], "line 2: \u00b2 (U+00B2) has no"),
                                          (b"a\n\xff\n", ["--from", "utf-8"], "line 2: the byte 0xFF is not UTF-8"),
                                          (b"a\n\x81 ", ["--to", "utf-8"], "line 2: the bytes 81 20 are not"),
                                          (b"\xff\xfea", [], "is not valid in utf-16le")):
                path.write_bytes(source)
                code, _, error = run("convert", path, *options)
                self.assertEqual((code, path.read_bytes(), len(list(path.parent.iterdir()))), (1, source, 1), error)
                self.assertIn(part, error.decode())
            text = "\u20ac \ue000 \u5916\n"
            path.write_bytes(text.encode("utf-16-le"))
            path.chmod(0o640)
            for options, content in ((["--from", "utf-16"], b"\x80 \xaa\xa1 \xcd\xe2\n"), (["--to", "utf-8"], text.encode()),
                                     (["--to", "utf-16"], b"\xff\xfe" + text.encode("utf-16-le"))):
                self.assertEqual(run("convert", path, *options)[0], 0)
                self.assertEqual((path.read_bytes(), path.stat().st_mode & 0o777), (content, 0o640))
            self.assertEqual(run("convert", stdin=text.encode()), (0, b"\x80 \xaa\xa1 \xcd\xe2\n", b""))

    def test_reads_a_list_from_a_pipe(self):
        script = f"{shlex.quote(PROGRAM)} mask <(printf 'cheap\\nfree') <<< 'cheap or FREE'"
        done = subprocess.run(["bash", "-c", script], capture_output=True, timeout=60)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, b"***** or ****\n", b""))

    def test_every_command_has_help_with_an_example(self):
        for command in ("decode", "encode", "diff", "records", "guess", "check", "mask", "convert", "number", "time", "wheel"):
            code, out, _ = run(command, "--help")
            self.assertEqual(code, 0)
            self.assertIn(f"  zvuti {command}".encode(), out.split(b"Options:")[1])

    def test_numerals_convert_back_to_their_number(self):
        for digits in ("1", "10", "101", "20005", "110000010", "12345678901234567890", "99999999999999999999",
                       "100000000", "1000000000001", "10000000000000000000"):
            numerals = re.search("numerals   (.*)", run("number", digits)[1].decode()).group(1)
            code, out, error = run("number", numerals)
            self.assertEqual((code, out.split()[1].decode(), error), (0, digits, b""))

    def test_counts_agree_with_the_masked_text(self):
        _, out, _ = run("mask", APP / "words.txt", APP / "chat.txt", "--count")
        rows = [line.split(None, 1) for line in out.decode().splitlines()]
        self.assertEqual(sum(int(count) for count, _ in rows[:-1]), int(rows[-1][0]))
        before = (APP / "chat.txt").read_bytes().splitlines()
        after = run("mask", APP / "words.txt", APP / "chat.txt", "-o", "/dev/stdout")[1].splitlines()
        changed = sum(a != b for a, b in zip(before, after, strict=True))
        self.assertIn(f"in {changed} of {len(before)} lines", rows[-1][1])

    def test_the_wheel_stops_in_its_slot(self):
        for slot, slots in ((0, 12), (11, 12), (3, 8)):
            lines = run("wheel", "--slot", slot, "--slots", slots, "--csv")[1].decode().splitlines()
            _, angle, _, speed = map(float, lines[-1].split(","))
            self.assertEqual(speed, 0)
            self.assertLess((angle - slot * 6.283185307179586 / slots) % 6.283185307179586, 0.0004)
        self.assertEqual(run("wheel", "--slot", 5, "--svg", "-")[1], (SOURCE / "docs/images/spin.svg").read_bytes())
        picture = xml.etree.ElementTree.fromstring(run("wheel", "--slot", 3, "--svg", "-")[1])
        self.assertIn("slot 3 of 12", "".join(picture.itertext()))

    def test_the_documents_show_what_the_program_prints(self):
        pages = "".join((SOURCE / page).read_text() for page in ("README.md", "docs/zvuti.md"))
        blocks = re.findall(r"```console\n(.*?)```", pages, re.S)
        transcripts = [part for block in blocks for part in re.split(r"^\$ ", block, flags=re.M)[1:]]
        self.assertGreater(len(transcripts), 8)
        for transcript in transcripts:
            command, _, shown = transcript.partition("\n")
            with self.subTest(command):
                script = f"zvuti() {{ {shlex.quote(PROGRAM)} \"$@\"; }}; {command}"
                done = subprocess.run(["bash", "-c", script], cwd=SOURCE, capture_output=True, timeout=60, text=True,
                                      stdin=subprocess.DEVNULL)
                self.assertEqual(done.stdout + done.stderr, shown)

    def test_completion_knows_commands_and_records(self):
        def complete(line):
            words = shlex.join([PROGRAM, *line])
            script = (f"source {SOURCE}/tools/zvuti/completion.bash; COMP_WORDS=({words} ''); "
                      "COMP_CWORD=$((${#COMP_WORDS[@]} - 1)); _zvuti; printf '%s\\n' \"${COMPREPLY[@]}\"")
            return subprocess.run(["bash", "-c", script], capture_output=True, text=True, timeout=60).stdout.split()
        help_text = run("--help")[1].decode()
        self.assertEqual(complete([]), re.findall(r"^  (\w+) {4,}", help_text.split("Subcommands:")[1], re.M))
        self.assertEqual(complete(["decode"]), run("records", "--names")[1].decode().split())
        self.assertIn("hidden-word", complete(["check", ".", "--ignore"]))
        for before in (["--skip", "4"], ["--color", "=", "never"]):
            self.assertIn("ItemRecord", complete(["decode", *before]))
        self.assertNotIn("ItemRecord", complete(["decode", "--skip", "4", "ItemRecord"]))


if __name__ == "__main__":
    unittest.main()
