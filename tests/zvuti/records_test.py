"""Tests decode, encode and guess with all records."""
import json
import random
import re
import unittest

from support import SOURCE, run

# Texts as the library's dump writes them: Chinese, escapes, an invalid pair, a lone lead byte.
TEXTS = ["", "plain", "\u67ab\u53f6 \u20ac", "\\x00\\x5C\\x0A", "\\x81\\x20 end", "half \\x81", "\ue000\ue4c6"]


def rows():
    _, out, _ = run("records", "--json")
    return json.loads(out)


class Content:
    """Random content for records, made from their listed rows."""

    def __init__(self, tables, seed):
        self.tables = tables
        self.random = random.Random(seed)

    def number(self, bits):
        value = self.random.choice([0, 1, (1 << (bits - 1)) - 1, self.random.getrandbits(bits - 1)])
        return value

    def value(self, kind, row):
        if row.get("packed time"):
            return self.random.choice([0, 1, 2**32 - 1, "2013-08-29 12:34:56", "2063-12-31 23:59:59"])
        if kind == "integer":
            return self.number(row.get("bits", 32))
        if kind == "byte code":
            return self.random.randrange(256)
        if kind == "tag":
            return self.random.choice(list(row["tags"]))
        if kind == "text":
            return self.random.choice(TEXTS)
        if kind == "reserved":
            return " ".join("%02X" % self.random.randrange(256) for _ in range(row["bits"] // 8))
        if kind == "sequence":
            return [self.value(row["element"], row) for _ in range(self.random.randrange(4))]
        if kind == "map" and row["element"] == "integer":
            return {str(key): self.number(31) for key in sorted(self.random.sample(range(1000), 3))}
        if kind == "map":
            return {str(key): self.keyed(row["type"], key) for key in sorted(self.random.sample(range(1000), 2))}
        return self.record(row["type"])

    def keyed(self, kind, key):
        entry = self.record(kind)
        first = next(iter(entry))  # a block in a map starts with its key
        entry[first] = key
        return entry

    def record(self, name):
        if name == "CUtiBundleTable":
            return {"Groups": {"7": [1, 4294967295], "4294967295": [2]},
                    "Bundles": {"5": self.record("BundleRecord"), "2147483648": self.record("BundleRecord")}}
        content = {}
        for row in self.tables[name]:
            condition = row.get("present if")
            if row["kind"] == "base":
                content.update(self.record(row["type"]))
            elif not condition or content[condition["field"]] < condition["constant"]:  # the only comparison so far
                content[row["name"]] = self.value(row["kind"], row)
        return content


class Records(unittest.TestCase):
    def check_round_trip(self, name, content):
        code, wire, error = run("encode", name, stdin=json.dumps(content).encode())
        self.assertEqual((code, error), (0, b""), (name, content))
        code, out, error = run("decode", name, "--json", stdin=wire)
        self.assertEqual((code, error), (0, b""), (name, wire))
        shown = json.loads(out)
        self.assertEqual(run("encode", name, stdin=out)[1], wire, name)
        return shown

    def test_all_records_survive_a_round_trip(self):
        tables = rows()
        self.assertGreater(len(tables), 20)
        for name in tables:
            with self.subTest(name):
                self.check_round_trip(name, {})
                for seed in range(3):
                    content = Content(tables, f"{name} {seed}").record(name)
                    self.assertEqual(self.check_round_trip(name, content), content)

    def test_numbers_of_64_bits_are_exact(self):
        for value in (2**63 - 1, -2**63, 2**53 + 1):
            shown = self.check_round_trip("PricedItem", {"ExtraAmount": value})
            self.assertEqual(shown["ExtraAmount"], value)

    def test_any_bytes_of_a_text_survive(self):
        text = bytes(range(256)) * 3 + random.Random(5).randbytes(20000)
        wire = run("encode", "PlayerRecord", stdin=b"{}")[1]
        wire = len(text).to_bytes(2, "little") + text + wire[2:]
        code, out, _ = run("decode", "PlayerRecord", "--json", stdin=wire)
        self.assertEqual(code, 0)
        self.assertEqual(run("encode", "PlayerRecord", stdin=out)[1], wire)

    def test_bytes_that_no_writer_makes_survive(self):
        key = [int.to_bytes(n, 4, "little") for n in range(3)]
        bundle = bytes(22)
        cases = [
            ("PlayerStatus", b"\1\2\3\4" + bytes(4),
             {"Kind": "unknown tag 0x04030201", "Word1": 0, "Word2": 0}),
            ("CUtiCounterTable", b"\xff" * 4, {"Counters": -1}),
            ("CUtiCounterTable", key[2] + key[2] + key[0] + key[2] + key[1], {"Counters": [[2, 0], [2, 1]]}),
            ("CUtiCounterTable", key[2] + key[1] + key[0] + b"\xff" * 4 + key[1],
             {"Counters": [[1, 0], [-1, 1]]}),
            ("AmountMap", key[2] + (key[1] + bytes(12)) * 2,
             {"Entries": [[1, {"Key": 1, "Reserved": "00 00 00 00", "Amount": 0}]] * 2}),
            ("CUtiBundleTable", b"\xff" * 4 + b"\xfe" + b"\xff" * 3, {"Groups": -1, "Bundles": -2}),
            ("CUtiBundleTable", key[2] + key[0] + (key[1] + key[0]) * 2, {"Groups": [[1, []]] * 2}),
            ("CUtiBundleTable", key[0] + key[2] + key[2] + bundle + key[1] + bundle, None),
        ]
        for name, wire, shown in cases:
            code, out, error = run("decode", name, "--json", stdin=wire)
            self.assertEqual((code, error), (0, b""), (name, wire))
            if shown:
                self.assertEqual(json.loads(out), shown, name)
            self.assertEqual(run("encode", name, stdin=out), (0, wire, b""), name)
            self.assertIn(b"unknown tag" if name == "PlayerStatus" else b"encoding it again gives other bytes",
                          run("guess", stdin=wire)[1])

    def test_any_bytes_that_decode_survive(self):
        """Random bytes, and records with random bytes in them. Zeros after them complete most records."""
        source = random.Random(8)
        tables = rows()
        for name in tables:
            wire = run("encode", name, stdin=json.dumps(Content(tables, name).record(name)).encode())[1]
            whole = 0
            for attempt in range(8):
                given = bytearray(wire if attempt % 2 else bytes(source.randrange(len(wire), 4 * len(wire))))
                for _ in range(source.randrange(1, 2 + len(given) // 4)):
                    given[source.randrange(len(given))] = source.choice([0, 1, 2, 255, source.randrange(256)])
                _, _, error = run("decode", name, "--json", stdin=bytes(given) + bytes(1000))
                end = re.search(rb"left after the record, from offset (\d+)", error)
                if not end:
                    continue  # bytes are missing, or a tag is unknown
                taken = (bytes(given) + bytes(1000))[:int(end[1])]
                code, out, error = run("decode", name, "--json", stdin=taken)
                self.assertEqual((code, error), (0, b""), (name, taken))
                self.assertEqual(run("encode", name, stdin=out), (0, taken, b""), name)
                whole += 1
            self.assertGreater(whole, 0, name)

    def test_reports_extra_and_missing_bytes(self):
        item = run("encode", "ItemRecord", stdin=b"{}")[1]
        code, _, error = run("decode", "ItemRecord", stdin=item + bytes(12))
        self.assertEqual(code, 1)
        self.assertIn(b"12 bytes left after the record, from offset 26", error)
        code, out, error = run("decode", "ItemRecord", stdin=item[:8])
        self.assertEqual(code, 1)
        self.assertIn(b"the bytes end in ItemId at offset 5: 4 needed, 3 left", error)
        self.assertIn(b"ItemKey", out)

    def test_guess_finds_what_was_packed(self):
        inbox = SOURCE / "examples/lobby/app/inbox"
        for name, record in (("account", "AccountRecord"), ("bundles", "CUtiBundleTable"),
                             ("reward", "RewardRecord"), ("snapshot", "PlayerSnapshot")):
            code, out, _ = run("guess", inbox / f"{name}.bin")
            self.assertEqual((code, out.split(b"\n")[1].split()[0].decode()), (0, record))
        self.assertEqual(run("guess", stdin=b"\x01\x02\x03\x04\x05")[0], 1)

    def test_refuses_json_that_is_not_a_record(self):
        long_text = b'{"Text1": "%s"}' % (b"a" * 65540)
        cases = [
            ("ItemRecord", b"", b"parse error"),
            ("ItemRecord", b"{", b"parse error"),
            ("ItemRecord", b"[]", b"ItemRecord: an object of fields is needed"),
            ("ItemRecord", b'{"Tag": ' + b"[" * 200000 + b"]" * 200000 + b"}", b"nested more than 64 levels deep"),
            ("ItemRecord", b'{"Tag": ' + b'{"a": ' * 70 + b"1" + b"}" * 71, b"nested more than 64 levels deep"),
            ("ItemRecord", b'{"Nothing": 1}', b"Nothing: no such field in ItemRecord"),
            ("ItemRecord", b'{"Tag\\u0000": 1}', b'"Tag\\u0000": no such field in ItemRecord'),
            ("ItemRecord", b'{"Tag": 256}', b"Tag: not a number that the field can hold"),
            ("ItemRecord", b'{"Tag": 1.5}', b"Tag: an integer is needed"),
            ("ItemRecord", b'{"Tag": 1, "Tag": 2}', b'"Tag" occurs twice'),
            ("ItemRecord", b'{"Tag": null}', b"Tag: an integer is needed"),
            ("ItemRecord", b'{"Tag": NaN}', b"parse error"),
            ("ItemRecord", b'{"Tag": 1e400}', b"number overflow"),
            ("ItemRecord", b'{"Tag": 99999999999999999999}', b"Tag: an integer is needed"),
            ("ItemRecord", b'{"Tag": "1 "}', b"Tag: not a number that the field can hold"),
            ("ItemRecord", b'{"Tag": "\xff"}', b"parse error"),
            ("ItemRecord", b'{"ItemKey": 1000000000, "Count": 5}',
             b"Count: only on the wire if ItemKey < 1000000000"),
            ("CodedAmount", b'{"Code1": 300}', b"Code1: not a number that the field can hold"),
            ("TextPair", long_text, b"Text1: a text has up to 65535 bytes, not 65540"),
            ("TextPair", b'{"Text1": 5}', b"Text1: a string is needed"),
            ("NamedTexts", b'{"TextList": [%s]}' % b",".join([b'""'] * 65536), b"up to 65535"),
            ("NamedTexts", b'{"TextList": {"0": ""}}', b"TextList: an array is needed"),
            ("CUtiCounterTable", b'{"Counters": 2}', b"Counters: not the number of the entries given, 0"),
            ("CUtiCounterTable", b'{"Counters": {"x": 2}}', b"Counters[x]: no such element"),
            ("CUtiCounterTable", b'{"Counters": {"5": 1, "05": 2}}', b"Counters[05]: given twice"),
            ("CUtiCounterTable", b'{"Counters": {"5]": 1}}', b"Counters: a number is needed as a key"),
            ("CUtiCounterTable", b'{"Counters": [[1]]}', b"Counters: pairs of a key and a value are needed"),
            ("CUtiCounterTable", b'{"Counters": [[1.5, 2]]}', b"Counters: pairs of a key and a value"),
            ("CUtiBundleTable", b'{"Groups": 1}', b"group count: not the number of the entries given, 0"),
            ("CUtiBundleTable", b'{"Groups": {"1": [-1]}}', b"Groups[1][0]: not a number that the field"),
        ]
        for name, given, message in cases:
            code, out, error = run("encode", name, stdin=given)
            self.assertEqual((code, out), (2, b""), given[:100])
            self.assertIn(message, error)
            self.assertLess(len(error), 300)
        code, _, error = run("encode", "PlayerRecord", stdin='{"Text1": "\U0001f600"}'.encode())
        self.assertEqual(code, 2)
        self.assertIn(b"Text1: U+1F600 cannot be converted to GBK", error)


if __name__ == "__main__":
    unittest.main()
