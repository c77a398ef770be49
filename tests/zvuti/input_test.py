"""Tests the forms in which bytes are given: text of many kinds, captures, and several messages in one file."""
import json
import struct
import tempfile
import unittest

from support import SOURCE, run

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


def ipv4(protocol, body, fragment=0):
    return struct.pack(">BBHHHBBHII", 0x45, 0, 20 + len(body), 1, fragment, 64, protocol, 0, 1, 2) + body


def ipv6(protocol, body, extension=b""):
    return struct.pack(">IHBB32x", 0x60000000, len(extension + body), 0 if extension else protocol, 64) + extension + body


def udp(payload):
    return struct.pack(">HHHH", 1000, 2000, 8 + len(payload), 0) + payload


def tcp(payload, options=b""):
    return struct.pack(">HHIIBBHHH", 1, 2, 3, 4, (20 + len(options)) * 4, 24, 0, 0, 0) + options + payload


def pcap(link, *packets, order="<", magic=0xA1B2C3D4, cut=0):
    data = struct.pack(order + "IHHiIII", magic, 2, 4, 0, 0, 65535, link)
    for packet in packets:
        data += struct.pack(order + "IIII", 1, 2, len(packet) - cut, len(packet)) + packet[:len(packet) - cut]
    return data


def block(order, kind, body):
    body += bytes(-len(body) % 4)
    return struct.pack(order + "II", kind, len(body) + 12) + body + struct.pack(order + "I", len(body) + 12)


def pcapng(link, *packets, order="<"):
    data = block(order, 0x0A0D0D0A, struct.pack(order + "IHHq", 0x1A2B3C4D, 1, 0, -1))
    data += block(order, 1, struct.pack(order + "HHI", link, 0, 0)) + block(order, 5, bytes(12))
    for packet in packets:
        data += block(order, 6, struct.pack(order + "IIIII", 0, 0, 0, len(packet), len(packet)) + packet)
    return data + block(order, 3, struct.pack(order + "I", len(packets[-1])) + packets[-1])


ETHERNET = bytes(12)
IN_UDP = ipv4(17, udp(WIRE))
PADDED = ETHERNET + b"\x08\x00" + IN_UDP + bytes(9)
ARP = ETHERNET + b"\x08\x06" + bytes(28)

# Captures whose packet 2 carries WIRE.
CAPTURES = [
    pcap(1, ARP, PADDED),
    pcap(1, ARP, PADDED, order=">"),
    pcap(1, ARP, PADDED, order=">", magic=0xA1B23C4D),
    pcap(1, ARP, ETHERNET + b"\x81\x00\x00\x05\x86\xdd" + ipv6(6, tcp(WIRE, bytes(12)), b"\x06" + bytes(7))),
    pcap(101, b"", ipv6(17, udp(WIRE)), order=">"),
    pcap(101, b"", ipv4(6, tcp(WIRE))),
    pcap(0, b"", b"\x02\0\0\0" + IN_UDP),
    pcap(0, b"", b"\0\0\0\x1e" + ipv6(17, udp(WIRE)), order=">"),
    pcap(108, b"", b"\0\0\0\x02" + IN_UDP),
    pcap(113, b"", bytes(14) + b"\x08\x00" + IN_UDP),
    pcap(276, b"", b"\x08\x00" + bytes(18) + IN_UDP),
    pcapng(1, ARP, PADDED),
    pcapng(1, ARP, PADDED, order=">"),
]

# A capture, the number of a packet in it, and what the message says after the name of the input.
BROKEN = [
    (b"", 1, " is not a capture"),
    (WIRE * 9, 1, " is not a capture"),
    (pcap(1, PADDED), 2, "there is no packet 2; the capture has 1 packet"),
    (pcap(1, PADDED)[:20], 1, "the file ends in the file header: 24 bytes needed, 20 left"),
    (pcap(1, PADDED)[:30], 1, "the file ends in the header of packet 1: 16 bytes needed, 6 left"),
    (pcap(1, PADDED)[:-1], 1, "the file ends in packet 1: 64 bytes needed, 63 left"),
    (pcap(1) + b"\0" * 8 + b"\xff" * 8, 1, "the file ends in packet 1: 4294967295 bytes needed, 0 left"),
    (pcapng(1, PADDED)[:-1], 9, "the file ends in the block at offset 168: 80 bytes needed, 79 left"),
    (pcapng(1, PADDED)[:48] + b"\x06\0\0\0\x05\0\0\0" + bytes(40), 1, "impossible length, 5"),
    (block("<", 0x0A0D0D0A, bytes(16)), 1, "the block at offset 0 has no byte order"),
    (block("<", 0x0A0D0D0A, struct.pack("<IHHq", 0x1A2B3C4D, 1, 0, -1)) + block("<", 6, bytes(20)), 1, "names no interface"),
    (pcap(1, ARP), 1, "packet 1 does not carry IP (its type is 2054)"),
    (pcap(105, PADDED), 1, "has the link type 105"),
    (pcap(101, ipv4(1, bytes(8))), 1, "carries neither UDP nor TCP (its IP protocol is 1)"),
    (pcap(101, ipv4(17, udp(WIRE), 0x2000)), 1, "is a fragment"),
    (pcap(101, ipv6(17, udp(WIRE))[:44]), 1, "ends in the UDP header: 8 bytes needed, 4 left"),
    (pcap(101, ipv4(6, tcp(b""))), 1, "packet 1 has no payload"),
    (pcap(101, b"\x41" + bytes(30)), 1, "has no valid IPv4 header"),
    (pcap(101, ipv4(6, bytes(20))), 1, "has no valid TCP header"),
    (pcap(1, bytes(10)), 1, "ends in the Ethernet header"),
]


class Captures(unittest.TestCase):
    def test_reads_the_payload_of_a_packet(self):
        for number, capture in enumerate(CAPTURES):
            with self.subTest(number):
                code, out, error = run("decode", "AccountExtra", "--packet", 2, "--json", stdin=capture)
                self.assertEqual((code, error), (0, b""))
                self.assertEqual(run("encode", "AccountExtra", stdin=out)[1], WIRE)
        halves = pcap(101, ipv4(17, udp(WIRE[:5])), ipv4(17, udp(WIRE[5:])))
        self.assertEqual(run("decode", "AccountExtra", "--packet", "1,2", stdin=halves)[0], 0)

    def test_says_what_is_wrong_with_a_capture(self):
        for capture, packet, message in BROKEN:
            with self.subTest(message):
                code, out, error = run("decode", "AccountExtra", "--packet", packet, stdin=capture)
                self.assertEqual((code, out), (2, b""), error)
                self.assertIn(message, error.decode())
        code, _, error = run("decode", "AccountExtra", "--packet", 1, stdin=pcap(101, IN_UDP, cut=3))
        self.assertEqual((code, b"was cut when it was captured" in error), (1, True))
        self.assertIn(b"--packet N", run("decode", "AccountExtra", stdin=CAPTURES[0])[2])


ITEM = run("encode", "ItemRecord", stdin=b'{"StartTime": "2013-08-29 12:34:56", "Count": 2}')[1]
ITEM_JSON = json.loads(run("decode", "ItemRecord", "--json", stdin=ITEM)[1])

# A layout, bytes, the JSON or the message.
LAYOUTS = [
    ("u16, ItemRecord, ItemRecord*", b"\5\0" + ITEM * 3, [5] + [ITEM_JSON] * 3),
    ("(u8,ItemRecord)*", (b"\xff" + ITEM) * 2, [255, ITEM_JSON] * 2),
    (" i8 * 2 , u16be, i32be, u64 ", b"\xff\x80\1\2\xff\xff\xff\xfe" + b"\xff" * 8, [-1, -128, 258, -2, 2**64 - 1]),
    ("ItemRecord*", b"", []),
    ("ItemRecord*1", ITEM, [ITEM_JSON]),
    ("u8, ItemRecord*", b"\1" + ITEM + ITEM[:3],
     "ItemRecord [2], which starts at offset 27, is incomplete: the bytes end in ItemKey at offset 1"),
    ("u8,u32", b"1234", "the bytes end in u32 [1] at offset 1: 4 needed, 3 left"),
    ("u8*2", b"123", "1 byte left after the messages, from offset 2: 33"),
    ("u8*", bytes(1000001), "more than 1000000 messages"),
    ("u16,", b"", "the layout, character 5: its end stands where a record or an integer is needed"),
    ("u16 x", b"", "the layout, character 5: 'x' stands where a comma is needed"),
    ("u16*0", b"", "'0' is not a number of times"),
    ("u8*, u8", b"", "'u8' stands after *, which takes all bytes"),
    ("(u8*)*", b"", "ends a group that takes all bytes"),
    ("(" * 20, b"", "opens too many groups"),
    ("u8)", b"", "has no opening parenthesis"),
    ("ItmRecord*", b"", "did you mean ItemRecord?"),
]


class Layouts(unittest.TestCase):
    def test_decodes_and_encodes_several_messages(self):
        for layout, wire, expected in LAYOUTS:
            with self.subTest(layout):
                code, out, error = run("decode", layout, "--json", stdin=wire)
                if isinstance(expected, str):
                    self.assertNotEqual(code, 0)
                    self.assertIn(expected, error.decode())
                    continue
                self.assertEqual((code, error, json.loads(out)), (0, b"", expected))
                self.assertEqual(run("encode", layout, stdin=out), (0, wire, b""))
        for given, message in ((b"[1]", "ends where u8 [1] is needed"), (b"[1,2,3]", "ends before [2] of 3 messages"),
                               (b"[1,256]", "[1]: not a number that u8 can hold"), (b"{}", "an array of messages")):
            code, out, error = run("encode", "u8*2", stdin=given)
            self.assertEqual((code, out, message in error.decode()), (2, b"", True), error)

    def test_compares_by_path(self):
        cases = [
            ("ItemRecord", ITEM, ITEM, 0, []),
            ("u8, ItemRecord", b"\1" + ITEM, b"\2" + ITEM[:9] + bytes(4) + ITEM[13:], 1,
             [("[0]", 1, 2), ("[1].StartTime", "2013-08-29 12:34:56", 0)]),
            ("ItemRecord*", ITEM[:-1] + b"\1" + b"x", ITEM, 1, [("[0].TailByte", 1, 0), ("[1].Tag", 120, None)]),
            ("CUtiCounterTable", struct.pack("<5i", 2, 7, 1, 7, 2), struct.pack("<5i", 2, 7, 1, 8, 2), 1,
             [("Counters[7]", 2, None), ("Counters[8]", None, 2)]),
            ("ItemRecord", ITEM, ITEM + b"more", 1, []),
        ]
        for layout, a, b, code, differences in cases:
            with self.subTest(layout), tempfile.NamedTemporaryFile() as file:
                file.write(a)
                file.flush()
                done = run("diff", layout, file.name, "-", "--json", stdin=b)
                self.assertEqual((done[0], [tuple(one.values()) for one in json.loads(done[1])]), (code, differences))
        self.assertEqual(run("diff", "ItemRecord", "no-such-file", "-")[0], 2)

    def test_a_page_is_complete_and_escaped(self):
        text = "<\u67ab\u53f6>&\x01\xff".encode("gbk", "replace")
        code, page, _ = run("decode", "TextPair", "--html", "-", stdin=struct.pack("<H", len(text)) + text + b"\0\0left")
        page = page.decode()
        self.assertEqual((code, "http" in page, "<\u67ab" in page), (1, False, False))
        self.assertIn("&lt;\u67ab\u53f6&gt;&amp;\\x01", page)
        self.assertEqual(page.count("<i data-at="), len(text) + 8)
        self.assertEqual(run("decode", "u8*", "--html", "-", stdin=bytes(300000))[0], 2)

    def test_scan_finds_the_inbox_among_other_bytes(self):
        inbox = SOURCE / "examples/lobby/app/inbox"
        names = [("account", "AccountRecord"), ("bundles", "CUtiBundleTable"), ("reward", "RewardRecord"),
                 ("snapshot", "PlayerSnapshot")]
        wire, expected = bytes(50), []
        for name, record in names:
            expected.append((str(len(wire)), record))
            wire += (inbox / f"{name}.bin").read_bytes() + bytes(30)
        code, out, _ = run("guess", "--scan", stdin=wire)
        found = [line.split() for line in out.decode().splitlines()[1:]]
        self.assertEqual((code, [(line[0], line[3]) for line in found]), (0, expected))
        self.assertEqual(run("guess", "--scan", stdin=bytes(20000))[0], 1)


if __name__ == "__main__":
    unittest.main()
