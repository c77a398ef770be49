"""decode, encode and guess over all records."""
import json
import random
import unittest

from support import SOURCE, run

WIDE = {"8": 8, "16": 16, "32": 32, "64": 64}
# Texts as the library's dump writes them: Chinese, escapes, a pair and a lone byte that are no text.
TEXTS = ["", "plain", "\u67ab\u53f6 \u20ac", "\\x00\\x5C\\x0A", "\\x81\\x20 end", "half \\x81", "\ue000\ue4c6"]


def rows():
    _, out, _ = run("records", "--json")
    return json.loads(out)


class Content:
    """Random content of records, by their listed rows. Signs are learnt from what encode refuses."""

    def __init__(self, tables, seed):
        self.tables = tables
        self.random = random.Random(seed)

    def number(self, bits):
        value = self.random.choice([0, 1, (1 << (bits - 1)) - 1, self.random.getrandbits(bits - 1)])
        return value

    def value(self, form, kind):
        if form in WIDE:
            return self.number(WIDE[form])
        if form == "byte code":
            return self.random.randrange(256)
        if form.endswith(" tag"):
            return form[:-4] + str(self.random.randrange(2))
        if form == "text":
            return self.random.choice(TEXTS)
        if form.startswith("reserved "):
            return " ".join("%02X" % self.random.randrange(256) for _ in range(int(form[9:])))
        if form.startswith("sequence of "):
            return [self.value("text" if not kind else kind, kind) for _ in range(self.random.randrange(4))]
        if form == "map":
            return {str(key): self.number(31) for key in sorted(self.random.sample(range(1000), 3))}
        if form.startswith("map of "):
            return {str(key): self.keyed(kind, key) for key in sorted(self.random.sample(range(1000), 2))}
        return self.record(kind)

    def keyed(self, kind, key):
        entry = self.record(kind)
        first = next(iter(entry))  # blocks in maps begin with their key
        entry[first] = key
        return entry

    def record(self, name):
        if name == "CUtiBundleTable":
            return {"Groups": {"7": [1, 4294967295], "4294967295": [2]},
                    "Bundles": {"5": self.record("BundleRecord"), "2147483648": self.record("BundleRecord")}}
        content = {}
        for row in self.tables[name]:
            if not row["name"]:
                content.update(self.record(row["type"]))
            elif row["condition"] != "ItemKey < 1000000000" or content["ItemKey"] < 1000000000:
                content[row["name"]] = self.value(row["form"], row["type"])
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

    def test_all_records_come_back_as_they_went(self):
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

    def test_says_what_is_left_and_what_is_missing(self):
        item = run("encode", "ItemRecord", stdin=b"{}")[1]
        code, _, error = run("decode", "ItemRecord", stdin=item + bytes(12))
        self.assertEqual(code, 1)
        self.assertIn(b"12 bytes left behind the record, from offset 26", error)
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

    def test_refuses_json_that_is_no_record(self):
        cases = [
            (b"{", b"parse error"),
            (b"[]", b"ItemRecord: an object of fields is needed"),
            (b'{"Nothing": 1}', b"Nothing: there is no such field in ItemRecord"),
            (b'{"Tag": 256}', b"Tag: not a number that the field can hold"),
            (b'{"Tag": 1.5}', b"Tag: a whole number is needed"),
            (b'{"Tag": 1, "Tag": 2}', b'"Tag" comes twice'),
            (b'{"Tag": null}', b"Tag: a whole number is needed"),
        ]
        for given, message in cases:
            code, out, error = run("encode", "ItemRecord", stdin=given)
            self.assertEqual((code, out), (2, b""), given)
            self.assertIn(message, error)
        code, _, error = run("encode", "PlayerRecord", stdin='{"Text1": "\U0001f600"}'.encode())
        self.assertEqual(code, 2)
        self.assertIn(b"Text1: U+1F600 is no character of GBK", error)


if __name__ == "__main__":
    unittest.main()
