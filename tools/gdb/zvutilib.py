"""Pretty-printers for gdb: show ZvUtiLib's strings as text, buffers as bytes and packed times as dates.

gdb loads this file automatically if the library is installed below /usr; otherwise use the gdb command
`source THIS-FILE`. Strings are decoded as GBK; bytes that are not GBK are shown as \\x and two digits. The
printers do not need debug symbols of the library.
"""
import locale

import gdb
import gdb.printing

MAX_BYTES = 200  # shown per value


def memory(address, length):
    if length == 0:
        return b""
    return bytes(gdb.selected_inferior().read_memory(address, length))


# Compilers emit the debug information of some classes only in the library, which may have none. The members of
# these classes are read by offset.
def pointers_at(address):
    """The memory at `address` as an array of unsigned integers of pointer size."""
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
    """The character at index `at` as it is shown, and its length in bytes."""
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
    while at < min(len(data), MAX_BYTES):
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
        self.data = memory(int(text[0]), min(self.length, MAX_BYTES + 1))

    def to_string(self):
        return f"{quoted(self.data)} ({counted(self.length, 'byte')})"


class TextStringPrinter:
    """CTextString: "text" (4 bytes, capacity 15)"""

    def __init__(self, value):
        self.length, self.capacity = int(value["length_"]), int(value["capacity_"])
        storage = value["storage_"]
        is_inline = self.capacity < storage["bytes"].type.sizeof
        address = storage["bytes"].address if is_inline else storage["block"]
        self.data = memory(int(address), min(self.length, MAX_BYTES + 1))

    def to_string(self):
        return f"{quoted(self.data)} ({counted(self.length, 'byte')}, capacity {self.capacity})"


class BufferPrinter:
    """CByteBuffer and the streams: 3 bytes of 1024: 01 02 03"""

    def __init__(self, value):
        members = pointers_at(value.address) + 1  # skips the vtable pointer
        self.capacity, self.length = (int(ints_at(members + 1)[i]) for i in (0, 1))
        self.data = memory(int(members[0]), max(0, min(self.length, MAX_BYTES)))

    def to_string(self):
        shown = f"{counted(self.length, 'byte')} of {self.capacity}"
        if self.data:
            shown += ": " + self.data.hex(" ").upper()
        return shown + (" ..." if self.length > MAX_BYTES else "")


class TimePrinter:
    """tag_KxTimeDWord: 2013-08-29 12:34:56 (0x363AC8B8)"""

    def __init__(self, value):
        self.word = int(value["word"])

    def to_string(self):
        word = self.word
        return "%04d-%02d-%02d %02d:%02d:%02d (0x%08X)" % (
            2000 + (word >> 26), word >> 22 & 15, word >> 17 & 31, word >> 12 & 31, word >> 6 & 63, word & 63, word)


class StringListPrinter:
    """CStringList: list of 2 texts = {"one" (3 bytes), "two" (3 bytes)}"""

    def __init__(self, value):
        members = pointers_at(value.address)  # head, tail, count
        self.head, self.count = int(members[0]), int(ints_at(members + 2)[0])

    def to_string(self):
        return f"list of {counted(self.count, 'text')}"

    def display_hint(self):
        return "array"

    def children(self):
        # An element is a CString followed by the pointer to the next element.
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
