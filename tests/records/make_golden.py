#!/usr/bin/env python3
"""make_golden > golden_records.txt

Writes the golden bytes of every record: its default, and one with a value of its own in each field.
The wire tables below are written down a second time on purpose, and the bytes are made with nothing but
Python's struct: what the library writes and reads is held against them.

A line of the fixture is the bytes of one row, its path and its value; rows without a value of their own
(a bundle table's framing) have no path.
"""
import struct

ITEM = "Tag:8 ItemKey:32 ItemId:32 StartTime:32 ValidDays:32 DailyValue:32 Count:32? TailByte:8"
PROFILE = "ProfileByte1:8 ProfileByte2:8 " + " ".join(f"ProfileText{n}:text" for n in range(1, 9))
GRANT = "Value1:32 Value2:32 Value3:32 Switch:8=1 Reserved:raw3"
NAMED = "Value1:32 Value2:32 Text1:text Text2:text TextList:texts"

# Rows in wire order, NAME:FORM, with =DEFAULT where that is not zero or empty. Forms: 8 16 32 64, code,
# text, texts, map, rawN (reserved bytes), binary and status (tags), X (a nested record), *X (a sequence
# of X), @X (a map of blocks X), 32? (an item's count).
RECORDS = {
    "ItemRecord": ITEM,
    "PricedItem": ITEM + " ExtraValue:32 ExtraAmount:64",
    "AccountExtra": "Flag:8 Value:32 Amount:64",
    "CUtiCounterTable": "Counters:map",
    "CUtiDailyState": "Table:CUtiCounterTable DailyFlags:map LastingFlags:map",
    "AccountRecord": "Value1:32 Value2:32 Text1:text Text2:text Text3:text Byte1:8=1 Code1:code Code2:code"
                     " Value3:32 Value4:32 Value5:32 Amount1:64 Amount2:64 Amount3:64 Amount4:64 Byte2:8"
                     " Text5:text Text6:text Text7:text " + PROFILE + " Byte3:8 Byte4:8 Extra:AccountExtra"
                     " Value7:32 TextList:texts Amount5:64 State:CUtiDailyState Text4:text Value6:32",
    "PlayerStatus": "Kind:status Word1:16 Word2:16",
    "PlayerRecord": "Text1:text Text2:text Byte1:8=1 Value1:32 Status:PlayerStatus Purse1:64 Value3:32"
                    " Byte2:8 Byte3:8 Byte4:8 SlotA:16 SlotB:16=-1 Byte6:8 Value6:32 Value7:32 Byte5:8"
                    " Value2:32 Sex:code AccountFlags:code Value4:32 Purse4:64 Value5:32 Value8:32 Wide1:64"
                    " Purse2:32 Wide2:64 Purse8:64 Attributes:map Value9:32 Value10:32",
    "PlayerProfile": PROFILE,
    "PlayerGameStats": "Value1:32 Value2:32 WinCount:32 LoseCount:32 DrawCount:32 FleeCount:32 Value3:32"
                       " Value4:32 Amount1:64 Limit:64 Used:64 Text:text",
    "PlayerSnapshot": "Player:PlayerRecord Profile:PlayerProfile Stats:PlayerGameStats Items:*ItemRecord",
    "BundleEntry": "ItemId:32 Count:32 Value1:32 Value2:32",
    "BundleRecord": "Amount1:64 Amount2:64 Value:32 Entries:*BundleEntry",
    "GrantEntry": GRANT,
    "RuleEntry": GRANT + " Amount:64",
    "BonusRule": "RuleId:32 Percent:32 Hundreds:32 Extra:32 MinBonus:64 Entries:*RuleEntry RuleValue:32",
    "ExtendedBonusRule": "RuleId:32 Percent:32 Hundreds:32 Extra:32 MinBonus:64 Entries:*RuleEntry"
                         " RuleValue:32 RuleWord:16 RuleTail:32",
    "BonusGrant": "GrantedHundreds:64 BonusAmount:64 GrantedExtra:64 Amount3:64 GrantedValue:32 Value2:32"
                  " Amount5:64 Amount6:64 Entries:*GrantEntry",
    "RewardBlock": "Amount1:64 Amount2:64 Amount3:64 Value3:32 Reserved1:raw4 Amount4:64 Value4:32"
                   " Reserved2:raw4 Amount5:64 Reserved3:raw8",
    "RewardRecord": "Block:RewardBlock Items:*ItemRecord",
    "SingleByte": "Value:8",
    "SingleValue": "Value:32",
    "IdValuePair": "Id:32 Value:32",
    "IdValueAmount": "Id:32 Value:32 Value2:32 Amount:64",
    "ShortIdValue": "ShortId:16 Value:32",
    "IdAmounts": "Id:32 Amount1:64 Amount2:64",
    "IdAmountItems": "Id:32 Amount1:64 Amount2:64 Items:*ItemRecord",
    "AmountsAndPairs": "Amount1:64 Amount2:64 Amount3:64 Value:32 Amount4:64 Pairs:*IdValuePair",
    "CodedAmount": "Flag:8 Code2:code Code1:code Value1:32 Value2:32 Amount:64",
    "KindEntry": "ShortId:16 Kind:binary Flag:8",
    "IdValueMap": "Id:32 Values:map",
    "TextPair": "Text1:text Text2:text",
    "TextValue": "Text:text Value:32",
    "IdTextValue": "Id:32 Text:text Value:32",
    "IdsText": "Value1:32 Value2:32 Text:text",
    "IdsTextB": "Value1:32 Value2:32 Text:text",
    "TextDetails": "Text1:text Flag:8 Value1:32 Value2:32 Text2:text",
    "NamedTexts": NAMED,
    "NamedTextsFull": NAMED + " Value3:32 Text3:text",
    "ShortTextsAmounts": "ShortId:16 Text1:text Text2:text Amount1:64 Amount2:64 Value:32",
    "ShortTextsValues": "ShortId:16 Text1:text Text2:text " + " ".join(f"Value{n}:32" for n in range(1, 6)),
    "IdTextsValues": "Id:32 Text1:text Text2:text Value1:32 Value2:32 Value3:32 Text3:text",
    "ValuesTexts": "Value1:32 Value2:32 Value3:32 Value4:32 Text1:text Text2:text",
    "MixedEntryHead": " ".join(f"Byte{n}:8" for n in range(1, 6)) + " Value1:32 Value2:32 Byte6:8 Text:text"
                      " Value3:32 Byte7:8 Byte8:8 Value4:32 Value5:32",
    "MixedEntryTail": " ".join(f"Byte{n}:8" for n in range(1, 5)) + " Value1:32 Value2:32",
    "MixedEntry": "Head:MixedEntryHead Tail:MixedEntryTail",
    "AmountEntry": "Key:32 Reserved:raw4 Amount:64",
    "AmountMap": "Entries:@AmountEntry",
}
STATUS = [0xF8CAFFAC, 0x2A4C0070, 0xDD4FAA31, 0x258324D8, 0x77DF3C36, 0xC07985EE, 0x7B42D4C9, 0xF7B6D143, 99999]
BINARY = [0x722C4DEA, 0x2FF131AD]
ITEM_KEYS = [range(1_000_000_000), range(1_000_000_000, 1 << 31)]  # with a count on the wire, and without
WIDTH = {"8": "<B", "16": "<H", "32": "<I", "64": "<Q", "code": "<B"}


class Writer:
    """Collects the rows of one record; with `filled`, each field gets a value that no other has."""

    def __init__(self, filled):
        self.filled, self.rows, self.next = filled, [], 0

    def fresh(self, size):
        """A positive number whose bytes all differ from those of the fields around it."""
        self.next += 1
        return int.from_bytes(bytes((self.next * 7 + 16 * i) % 127 + 1 for i in range(size))[:size], "little")

    def number(self, path, form, default=0, within=range(1 << 63)):
        size = struct.calcsize(WIDTH[form])
        value = self.fresh(size) if self.filled else default
        if self.filled and value not in within:
            value = within.start + value % len(within)
        self.rows.append((struct.pack(WIDTH[form], value % (1 << 8 * size)), path, str(value)))
        return value

    def text(self, path):
        body = f"text {self.fresh(1)} \u724c".encode("gbk") if self.filled else b""
        shown = body.decode("gbk")
        self.rows.append((struct.pack("<H", len(body)) + body, path, shown))

    def count(self, path, form, count):
        self.rows.append((struct.pack(form, count), path, str(count)))

    def record(self, prefix, table):
        item_key = None
        for row in table.split():
            name, form = row.split(":")
            form, _, default = form.partition("=")
            path, default = prefix + name, int(default or 0)
            if form == "32?":
                if item_key in ITEM_KEYS[0]:
                    self.number(path, "32")
            elif name == "ItemKey":
                item_key = self.number(path, form, within=ITEM_KEYS[prefix.endswith("[1].")])
            elif form in WIDTH:
                self.number(path, form, default)
            elif form == "text":
                self.text(path)
            elif form == "texts":
                self.count(path, "<H", 2 * self.filled)
                for i in range(2 * self.filled):
                    self.text(f"{path}[{i}]")
            elif form == "map":
                keys = [-9, 4, 1000] if self.filled else []
                self.count(path, "<I", len(keys))
                for key in keys:
                    value = self.fresh(4)
                    self.rows.append((struct.pack("<iI", key, value), f"{path}[{key}]", str(value)))
            elif form.startswith("raw"):
                body = bytes(self.fresh(1) if self.filled else 0 for _ in range(int(form[3:])))
                self.rows.append((body, path, body.hex(" ").upper()))
            elif form in ("status", "binary"):
                tags, kind = (STATUS, "StatusKind") if form == "status" else (BINARY, "BinaryKind")
                member = len(tags) - 1 if self.filled else 0
                self.rows.append((struct.pack("<I", tags[member]), path, f"{kind}{member}"))
            elif form.startswith("*"):
                self.count(path, "<H", 2 * self.filled)
                for i in range(2 * self.filled):
                    self.record(f"{path}[{i}].", RECORDS[form[1:]])
            elif form.startswith("@"):
                keys = [-9, 4] if self.filled else []
                self.count(path, "<I", len(keys))
                for key in keys:
                    inner = Writer(True)
                    inner.next = self.next
                    inner.record(f"{path}[{key}].", RECORDS[form[1:]])
                    inner.rows[0] = (struct.pack("<i", key), inner.rows[0][1], str(key))
                    self.next = inner.next
                    self.rows += inner.rows
            else:
                self.record(path + ".", RECORDS[form])


def main():
    print('R"golden(')
    for name, table in RECORDS.items():
        for filled in (False, True):
            writer = Writer(filled)
            writer.record("", table)
            print(f"# {name} {'filled' if filled else 'default'}")
            for body, path, value in writer.rows:
                print(f"{body.hex(' ').upper()} | {path} | {value}")
    print(')golden"')


main()
