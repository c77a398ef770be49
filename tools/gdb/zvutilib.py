"""Pretty-printers of ZvUtiLib for gdb: texts as text, buffers as bytes, packed times as dates.

gdb loads them by itself with a library that is installed where gdb looks; otherwise: source THIS-FILE
Texts are GBK; bytes that are none are shown as \\x and two digits. Needs no debug symbols of the library.
"""
import locale

import gdb
import gdb.printing

MOST_BYTES = 200  # shown of one value


def memory(address, length):
    if length == 0:
        return b""
    return bytes(gdb.selected_inferior().read_memory(address, length))


# Compilers describe some classes in the library alone, which has no symbols. Those are read by place.
def pointers_at(address):
    """The memory there as numbers of the size of a pointer."""
    number = "unsigned long long" if gdb.lookup_type("void").pointer().sizeof == 8 else "unsigned int"
    return gdb.Value(int(address)).cast(gdb.lookup_type(number).pointer())


def ints_at(address):
    return gdb.Value(int(address)).cast(gdb.lookup_type("int").pointer())


def can_show(text):
    charset = gdb.host_charset() if hasattr(gdb, "host_charset") else locale.getpreferredencoding(False)
    try:
        text.encode(charset)
    except (UnicodeEncodeError, LookupError):
        return False
    return True


ESCAPES = {0: "\\0", 9: "\\t", 10: "\\n", 13: "\\r", 34: '\\"', 92: "\\\\"}


def character(data, at):
    """The character at a place as it is shown, and how many bytes it has."""
    byte = data[at]
    if byte >= 0x80:
        try:
            text = data[at : at + 2].decode("gbk")
            if can_show(text):
                return text, 2
        except UnicodeDecodeError:
            pass
    elif byte in ESCAPES:
        return ESCAPES[byte], 1
    elif 0x20 <= byte < 0x7F:
        return chr(byte), 1
    return f"\\x{byte:02x}", 1


def quoted(data):
    shown, at = "", 0
    while at < min(len(data), MOST_BYTES):
        text, length = character(data, at)
        shown += text
        at += length
    return f'"{shown}"' + ("..." if len(data) > at else "")


def counted(number, what):
    return f"{number} {what}" + ("" if number == 1 else "s")


class StringPrinter:
    """CString: "text" (4 bytes)"""

    def __init__(self, value):
        text = pointers_at(value.address)  # a std::string
        self.length = int(text[1])
        self.data = memory(int(text[0]), min(self.length, MOST_BYTES + 1))

    def to_string(self):
        return f"{quoted(self.data)} ({counted(self.length, 'byte')})"


class TextStringPrinter:
    """CTextString: "text" (4 bytes, capacity 15)"""

    def __init__(self, value):
        self.length, self.capacity = int(value["length_"]), int(value["capacity_"])
        storage = value["storage_"]
        is_inline = self.capacity < storage["bytes"].type.sizeof
        address = storage["bytes"].address if is_inline else storage["block"]
        self.data = memory(int(address), min(self.length, MOST_BYTES + 1))

    def to_string(self):
        return f"{quoted(self.data)} ({counted(self.length, 'byte')}, capacity {self.capacity})"


class BufferPrinter:
    """CByteBuffer and the streams: 3 bytes of 1024: 01 02 03"""

    def __init__(self, value):
        members = pointers_at(value.address) + 1  # behind the pointer to the virtual functions
        self.capacity, self.length = (int(ints_at(members + 1)[i]) for i in (0, 1))
        self.data = memory(int(members[0]), max(0, min(self.length, MOST_BYTES)))

    def to_string(self):
        shown = f"{counted(self.length, 'byte')} of {self.capacity}"
        if self.data:
            shown += ": " + self.data.hex(" ").upper()
        return shown + (" ..." if self.length > MOST_BYTES else "")


class TimePrinter:
    """tag_KxTimeDWord: 2013-08-29 12:34:56 (0x363AC8B8)"""

    def __init__(self, value):
        self.word = int(value["word"])

    def to_string(self):
        word = self.word
        return "%04d-%02d-%02d %02d:%02d:%02d (0x%08X)" % (
            2000 + (word >> 26), word >> 22 & 15, word >> 17 & 31, word >> 12 & 31, word >> 6 & 63, word & 63, word)


class StringListPrinter:
    """CStringList: its number of texts, and each of them"""

    def __init__(self, value):
        members = pointers_at(value.address)  # head, tail, count
        self.head, self.count = int(members[0]), int(ints_at(members + 2)[0])

    def to_string(self):
        return f"list of {counted(self.count, 'text')}"

    def display_hint(self):
        return "array"

    def children(self):
        # An element is a CString and, behind it, the pointer to the next one.
        text = gdb.lookup_type("CString")
        at = self.head
        for index in range(self.count):
            if at == 0:
                return
            yield f"[{index}]", gdb.Value(at).cast(text.pointer()).dereference()
            at = int(pointers_at(at + text.sizeof)[0])


def printers():
    collection = gdb.printing.RegexpCollectionPrettyPrinter("ZvUtiLib")
    collection.add_printer("CString", "^CString$", StringPrinter)
    collection.add_printer("CTextString", "^CTextString$", TextStringPrinter)
    collection.add_printer("CByteBuffer", "^(CByteBuffer|CStreamReader|CStreamWriter)$", BufferPrinter)
    collection.add_printer("tag_KxTimeDWord", "^tag_KxTimeDWord$", TimePrinter)
    collection.add_printer("CStringList", "^CStringList$", StringListPrinter)
    return collection


gdb.printing.register_pretty_printer(gdb.current_objfile(), printers(), replace=True)
