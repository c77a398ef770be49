#!/usr/bin/python3
"""compare.py ZVUTI PLUGIN WORK: compares how Wireshark, Kaitai and zvuti read the same records.

PLUGIN is what 'zvuti export wireshark' made; WORK holds the compiled parsers of 'zvuti export kaitai'. The records are
the lobby's inbox and random bytes, up to 60 KB, of every record. Wireshark gets them as datagrams, picked by port, and
as TCP streams in which one follows the other, picked by "Decode As". What each of the three reads becomes a list of
named values in wire order; the lists must be equal. Texts are compared as bytes. 'zvuti encode' must give the same
bytes again.
"""
import importlib
import json
import pathlib
import random
import re
import struct
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

from kaitaistruct import KaitaiStruct

ZVUTI, PLUGIN, WORK = sys.argv[1], sys.argv[2], pathlib.Path(sys.argv[3])
INBOX = {"account": "AccountRecord", "bonus": "BonusRule", "bundles": "CUtiBundleTable", "reward": "RewardRecord",
         "snapshot": "PlayerSnapshot"}
FIRST_PORT = 7000
LONG = 60_000
SEGMENT = 16_000


def zvuti(*arguments, given=b""):
    return subprocess.run([ZVUTI, *arguments], input=given, stdout=subprocess.PIPE, check=True).stdout


ROWS = json.loads(zvuti("records", "--json"))


class Maker:
    """Makes random bytes of records from their rows. `room` is the number of bytes by which one text, sequence or map
    is made longer; the first `passed` of them stay short."""

    def __init__(self, seed, room=0, passed=0):
        self.random, self.room, self.passed = random.Random(seed), room, passed

    def claim_room(self):
        self.passed -= 1
        room = self.room if self.passed < 0 else 0
        self.room -= room
        return room

    def integer(self, bits):
        edges = [0, 1, 999_999_999, 10**9, (1 << bits - 1) - 1, 1 << bits - 1, (1 << bits) - 1]
        value = self.random.choice([*edges, self.random.getrandbits(bits), self.random.getrandbits(bits)])
        return (value % (1 << bits)).to_bytes(bits // 8, "little")

    def text(self, room):
        kind = self.random.randrange(3)
        length = room or self.random.choice([0, 1, 2, 7, 40, 300])
        if kind == 0:
            content = self.random.randbytes(length)
        elif kind == 1:
            content = bytes(self.random.choices(range(0x20, 0x7F), k=length))
        else:
            pairs = [self.random.randrange(0xB0, 0xF7) << 8 | self.random.randrange(0xA1, 0xFE) for _ in range(length)]
            content = b"".join(pair.to_bytes(2, "big") for pair in pairs)[:length]
        return struct.pack("<H", length) + content

    def repeated(self, room, make, count):
        elements = [make() for _ in range(count)]
        size = sum(map(len, elements))
        while size < room:
            elements.append(make())
            size += len(elements[-1])
        return elements

    def row(self, row, tables):
        kind, bits = row["kind"], row.get("bits", 0)
        if kind == "tag":
            known = row["unknown tags"] == "refused" or self.random.randrange(4)
            return struct.pack("<I", self.random.choice(list(row["tags"].values()))) if known else self.integer(32)
        if kind == "text":
            return self.text(self.claim_room())
        if kind == "reserved":
            return self.random.randbytes(bits // 8)
        if kind in ("sequence", "map"):
            room, count = self.claim_room(), self.random.choice([0, 1, 3])
            if kind == "map" and not room and self.random.randrange(4) == 0:
                return struct.pack("<i", -self.random.randrange(1, 1 << 31))
            make = {"text": lambda: self.text(0), "integer": lambda: self.integer(32) + self.integer(32),
                    "record": lambda: self.record(row["type"])}[row["element"]]
            elements = self.repeated(room, make, count)
            return struct.pack("<i" if kind == "map" else "<H", len(elements)) + b"".join(elements)
        if kind in ("record", "base", "block"):
            return self.record(row["type"])
        return self.integer(bits)

    def table(self, rows):
        """A record whose maps have their counts apart from the entries."""
        counts, bodies = [], []
        for name in dict.fromkeys(row["field"] for row in rows):
            roles = {row["role"]: row for row in rows if row["field"] == name}

            def entry(roles=roles):
                if "value" in roles:
                    return self.integer(32) + self.row(roles["value"], None)
                room, count = self.claim_room() // 2, self.random.choice([0, 1, 3])
                elements = self.repeated(room, lambda: self.integer(32), count)
                return self.integer(32) + struct.pack("<I", len(elements)) + b"".join(elements)

            if self.random.randrange(4) == 0:
                counts.append(struct.pack("<i", -self.random.randrange(1, 1 << 31)))
            else:
                entries = self.repeated(self.claim_room(), entry, self.random.choice([0, 1, 3]))
                counts.append(struct.pack("<i", len(entries)))
                bodies += entries
        return b"".join(counts + bodies)

    def record(self, name):
        rows = ROWS[name]
        if any(row["role"] != "field" for row in rows):
            return self.table(rows)
        parts, integers = [], {}
        for row in rows:
            if "present if" in row and not holds(row["present if"], integers):
                continue
            parts.append(self.row(row, rows))
            if row["kind"] == "integer":
                integers[row["field"]] = int.from_bytes(parts[-1], "little", signed=row["signed"])
        return b"".join(parts)


def holds(condition, fields):
    value, constant = fields[condition["field"]], condition["constant"]
    return {"<": value < constant, "<=": value <= constant, "==": value == constant, "!=": value != constant,
            ">=": value >= constant, ">": value > constant}[condition["comparison"]]


def samples():
    """(record, bytes) of everything that is compared."""
    for path, record in INBOX.items():
        yield record, pathlib.Path(f"examples/lobby/app/inbox/{path}.bin").read_bytes()
    for record in ROWS:
        for seed in range(5):
            yield record, Maker(f"{record} {seed}").record(record)
        for passed in range(3):
            long = Maker(f"{record} {passed}", LONG, passed)
            made = long.record(record)
            if len(made) >= LONG:
                yield record, made
                break


class Values(list):
    """The values of a record as zvuti's JSON has them: (name, value), texts not yet as bytes."""

    def __init__(self, record, shown):
        super().__init__()
        self.record(record, shown)

    def record(self, record, shown):
        prefix = record + "."
        rows = ROWS[record]
        for row in rows:
            name, field = prefix + row["field"], shown.get(row["field"])
            if row["role"] == "count":
                self.append((name, field if isinstance(field, int) else len(field or [])))
            elif row["role"] == "key":
                roles = {other["role"]: other for other in rows if other["field"] == row["field"]}
                for key, entry in pairs(field or {}):
                    self.append((name + ".key", key))
                    if "value" in roles:
                        self.record(roles["value"]["type"], entry)
                    else:
                        self.append((name + ".length", len(entry)))
                        self.extend((name + ".element", element) for element in entry)
            elif row["kind"] == "base":
                self.record(row["type"], shown)
            elif row["role"] == "field" and field is not None:
                self.row(name, row, field)

    def row(self, name, row, field):
        if row["kind"] == "tag":
            tag = row["tags"].get(field)
            self.append((name, int(field.split("0x")[1], 16) if tag is None else tag))
        elif row["kind"] == "text":
            self.append((name, Text(field)))
        elif row["kind"] == "reserved":
            self.append((name, bytes.fromhex(field)))
        elif row["kind"] in ("record", "block"):
            self.record(row["type"], field)
        elif row["kind"] in ("sequence", "map"):
            self.append((name, field if isinstance(field, int) else len(field)))
            for key, element in enumerate(field) if row["kind"] == "sequence" else pairs(field):
                if row["element"] == "record":
                    self.record(row["type"], element)
                elif row["element"] == "text":
                    self.append((name + ".element", Text(element)))
                else:
                    self.append((name + ".key", key))
                    self.append((name + ".value", element))
        else:
            self.append((name, packed(field) if row.get("packed time") and isinstance(field, str) else field))


def packed(date):
    """The word of "2013-08-29 12:34:56"."""
    word = 0
    for number, bits, first in zip(re.split("[- :]", date), (6, 4, 5, 5, 6, 6), (2000, 0, 0, 0, 0, 0), strict=True):
        word = word << bits | int(number) - first
    return word


class Text(str):
    """A text as zvuti shows it."""


def pairs(field):
    if isinstance(field, int):
        return []
    return field if isinstance(field, list) else [(int(key), value) for key, value in field.items()]


ESCAPED = re.compile(rb"\\x([0-9A-F]{2})|([\x81-\xFE][\x40-\xFE])|(.)", re.DOTALL)


def with_bytes(lists):
    """Turns the shown texts of the lists into their bytes: GBK, with escapes."""
    texts = sorted({value for values in lists for _, value in values if isinstance(value, Text)})
    source, target = WORK / "texts", WORK / "texts.gbk"
    source.write_text("\n".join(texts), "utf-8", newline="")
    zvuti("convert", "--from", "utf-8", "--to", "gbk", "-o", str(target), str(source))
    lines = target.read_bytes().split(b"\n")
    assert len(lines) == len(texts)
    raw = {text: b"".join(bytes([int(m[1], 16)]) if m[1] else m[0] for m in ESCAPED.finditer(line))
           for text, line in zip(texts, lines)}
    return [[(plain(name), raw[value] if isinstance(value, Text) else value) for name, value in values]
            for values in lists]


def plain(name):
    return name.replace("_", "").lower()


def kaitai_values(record, content):
    """The values that the compiled parser reads."""
    module = importlib.import_module(re.sub(r"(?<=.)([A-Z](?=[a-z])|(?<=[a-z0-9])[A-Z])", r"_\1", record).lower())
    kind = next(value for value in vars(module).values()
                if isinstance(value, type) and issubclass(value, KaitaiStruct) and value.__module__ == module.__name__)
    try:
        parsed = kind.from_bytes(content)
    except Exception as problem:
        sys.exit(f"compare.py: Kaitai cannot read {record}: {problem}")
    values = []

    def walk(part, prefix):
        fields = {name: value for name, value in vars(part).items() if not name.startswith("_")}
        for name, value in fields.items():
            if name.endswith("_count") and name[:-6] in fields:
                values.append((prefix + "." + name[:-6], value))
                continue
            for element in value if isinstance(value, list) else [value]:
                path = prefix + "." + name
                if type(element).__name__ == "GbkText":
                    values.append((path + (".element" if isinstance(value, list) else ""), element.bytes))
                elif isinstance(element, KaitaiStruct):
                    is_entry = "." in type(element).__qualname__
                    walk(element, path if is_entry else type(element).__name__)
                elif isinstance(value, list):
                    values.append((prefix + ".element", element))
                else:
                    values.append((path, getattr(element, "value", element)))

    walk(parsed, kind.__name__)
    if parsed._io.pos() != len(content):
        sys.exit(f"compare.py: Kaitai read {parsed._io.pos()} of {len(content)} bytes of {record}")
    return [(plain(name), value) for name, value in values]


def ip(protocol, payload):
    loopback = bytes([127, 0, 0, 1])
    return struct.pack(">BBHHHBBH", 0x45, 0, 20 + len(payload), 0, 0, 64, protocol, 0) + 2 * loopback + payload


def capture(path, packets):
    with open(path, "wb") as file:
        file.write(struct.pack("<IHHiIII", 0xA1B2C3D4, 2, 4, 0, 0, 1 << 17, 101))  # packets start with their IP header
        for second, packet in enumerate(packets):
            file.write(struct.pack("<IIII", second, 0, len(packet), len(packet)) + packet)


def datagram(port, payload):
    return ip(17, struct.pack(">HHHH", 61_000, port, 8 + len(payload), 0) + payload)


def stream(port, payload):
    """The segments of a connection that is already open."""
    for start in range(0, len(payload), SEGMENT):
        header = struct.pack(">HHIIBBHHH", 61_000, port, 1 + start, 1, 0x50, 0x18, 0xFFFF, 0, 0)
        yield ip(6, header + payload[start:start + SEGMENT])


def wireshark_values(path, options):
    """Of each record that Wireshark shows: its name in small letters, its size, its values."""
    nodes = {f"zvuti_{record}.{row['field']}".lower() for record, rows in ROWS.items() for row in rows
             if row["kind"] in ("record", "block") and row["role"] == "field"} | {"zvuti.element", "zvuti.length"}
    nodes |= {"zvuti.unknown", "_ws.expert", "_ws.expert.message", "_ws.expert.severity", "_ws.expert.group"}
    records = {f"zvuti_{record}".lower() for record in ROWS}
    kinds = {f"zvuti_{record}.{row['field']}".lower(): row for record, rows in ROWS.items() for row in rows
             if row["role"] == "field"}
    command = ["tshark", "-X", f"lua_script:{PLUGIN}", "-r", path, "-T", "pdml", *options]
    with open(WORK / "tshark.log", "w") as log, subprocess.Popen(command, stdout=subprocess.PIPE, stderr=log) as tshark:
        for _, proto in ElementTree.iterparse(tshark.stdout):
            if proto.tag == "packet":
                proto.clear()
            if proto.tag != "proto" or proto.get("name") not in records:
                continue
            values = []
            for field in proto.iter("field"):
                name = field.get("name")
                row = kinds.get(name.lower().removesuffix(".element"), {})
                if name.lower() in nodes:
                    continue
                if not name.startswith("zvuti_"):
                    sys.exit(f"compare.py: Wireshark shows {name}: {field.get('showname')}")
                is_bytes = row.get("kind") in ("text", "reserved") or (
                    row.get("element") == "text" and name.endswith(".element"))
                shown = bytes.fromhex(field.get("value", "")) if is_bytes else int(field.get("show"), 0)
                values.append((plain(name.removeprefix("zvuti_")), shown))
            yield proto.get("name").removeprefix("zvuti_"), int(proto.get("size")), values
    if tshark.returncode != 0:
        sys.exit(f"compare.py: tshark failed with {tshark.returncode}: {(WORK / 'tshark.log').read_text()}")


def compare(who, record, expected, found):
    if expected == found:
        return
    at = next((i for i, pair in enumerate(zip(expected, found)) if pair[0] != pair[1]), min(len(expected), len(found)))
    sys.exit(f"compare.py: {who} reads {record} differently at value {at}:\n"
             f"  zvuti {expected[at:at + 2]}\n  {who} {found[at:at + 2]}")


def main():
    sys.path.insert(0, str(WORK))
    contents = list(samples())
    shown = []
    for record, content in contents:
        decoded = zvuti("decode", record, "--json", given=content)
        if zvuti("encode", record, given=decoded) != content:
            sys.exit(f"compare.py: zvuti encodes {record} differently than it was")
        shown.append(Values(record, json.loads(decoded)))
    expected = with_bytes(shown)
    for (record, content), values in zip(contents, expected):
        compare("Kaitai", record, values, kaitai_values(record, content))

    ports = {record: FIRST_PORT + i for i, record in enumerate(ROWS)}
    streams = {record: b"".join(content for name, content in contents if name == record) for record in ROWS}
    capture(WORK / "udp.pcap", [datagram(ports[record], content) for record, content in contents])
    capture(WORK / "tcp.pcap", [packet for record in ROWS for packet in stream(ports[record], streams[record])])
    preferences = [part for record, port in ports.items() for part in ("-o", f"zvuti_{record.lower()}.ports:{port}")]
    decode_as = [part for record, port in ports.items() for part in ("-d", f"tcp.port=={port},zvuti_{record.lower()}")]
    in_streams = sorted(range(len(contents)), key=lambda i: ports[contents[i][0]])
    for who, name, options, order in (("Wireshark (UDP)", "udp.pcap", preferences, range(len(contents))),
                                      ("Wireshark (TCP)", "tcp.pcap", decode_as, in_streams)):
        count = 0
        for record, size, values in wireshark_values(WORK / name, options):
            if count == len(contents):
                sys.exit(f"compare.py: {who} shows more than {count} records")
            wanted, content = contents[order[count]]
            if (record, size) != (wanted.lower(), len(content)):
                sys.exit(f"compare.py: {who} shows {size} bytes of {record}, not {len(content)} of {wanted}")
            compare(who, wanted, expected[order[count]], values)
            count += 1
        if count != len(contents):
            sys.exit(f"compare.py: {who} shows {count} of {len(contents)} records")

    longest = max(len(content) for _, content in contents)
    if {record for record, _ in contents} != set(ROWS) or longest < LONG or not all(expected):
        sys.exit("compare.py: not every record was compared, or no long one")
    print(f"{len(ROWS)} kinds of records, {len(contents)} records of up to {longest} "
          f"bytes, {sum(map(len, expected))} values: Wireshark and Kaitai read what zvuti reads")


main()
