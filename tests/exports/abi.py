#!/usr/bin/env python3
"""abi.py LIB.so INCLUDE FILE [--store]: compares the binary interface of a library with that of a release.

A program that was built with the release must run with the library. libabigail's abidw reads the interface from the
debug information: the exported symbols, and of the public classes and enumerations the size, the members with their
places and types, the bases, the virtual functions and the numbers. FILE has one line for each of these. A line of FILE
that the library lacks is an error, unless abi_changes.txt gives a reason for it; new lines are additions.
With --store, writes FILE instead.

Parameters of functions are part of the symbols' names. abidw shows the value type of one SizedMap for another of the
same key; the size of the values' own class is checked.
"""
import pathlib
import re
import subprocess
import sys
import xml.etree.ElementTree as ElementTree

CHANGES = pathlib.Path(__file__).with_name("abi_changes.txt")
STRING = "std::__cxx11::basic_string<char, std::char_traits<char>, std::allocator<char> >"
FOREIGN = re.compile(r"(std|__gnu_cxx|__cxxabiv1|tm)\b")


class Interface:
    def __init__(self, library, include):
        text = subprocess.run(["abidw", "--exported-interfaces-only", "--drop-private-types", "--headers-dir", include,
                               "--no-show-locs", "--no-comp-dir-path", "--no-assume-odr-for-cplusplus", library],
                              stdout=subprocess.PIPE, check=True).stdout
        self.types, self.names, self.lines = {}, {}, set()
        root = ElementTree.fromstring(text)
        for symbol in root.iter("elf-symbol"):
            self.lines.add(f"symbol {symbol.get('name')}")
        for unit in root.iter("abi-instr"):
            self.collect(unit, "")
        for identity, node in self.types.items():
            name = self.names.get(identity, "")
            if name and not FOREIGN.match(name) and node.get("is-declaration-only") != "yes":
                self.describe(node, name)

    def collect(self, scope, prefix):
        for node in scope:
            if node.tag == "member-type":
                self.collect(node, prefix)
                continue
            identity, name = node.get("id"), node.get("name", "")
            if identity and (identity not in self.types or self.types[identity].get("is-declaration-only") == "yes"):
                self.types[identity] = node
                if node.tag in ("class-decl", "union-decl", "enum-decl") and not node.get("is-anonymous"):
                    self.names[identity] = prefix + name
            if node.tag in ("namespace-decl", "class-decl", "union-decl"):
                self.collect(node, prefix + name + "::")

    def type(self, identity):
        """The name of a type. Typedefs are resolved, since several names of one type are the same interface."""
        node = self.types[identity]
        inner = node.get("type-id")
        if identity in self.names:
            return self.names[identity].replace(STRING, "std::string")
        if node.tag == "typedef-decl":
            return self.type(inner)
        if node.tag == "qualified-type-def":
            return self.type(inner) + "".join(f" {word}" for word in ("const", "volatile") if node.get(word) == "yes")
        if node.tag == "pointer-type-def":
            return self.type(inner) + "*"
        if node.tag == "reference-type-def":
            return self.type(inner) + ("&" if node.get("kind") == "lvalue" else "&&")
        if node.tag == "array-type-def":
            return self.type(inner) + "".join(f"[{part.get('length')}]" for part in node.iter("subrange"))
        if node.tag == "function-type":
            return "function"
        return node.get("name") or node.tag

    def describe(self, node, name):
        if node.tag == "enum-decl":
            for member in node.iter("enumerator"):
                self.lines.add(f"enum {name}: {member.get('name')} = {member.get('value')}")
            return
        self.lines.add(f"class {name}: {int(node.get('size-in-bits', 0)) // 8} bytes")
        for part in node:
            place = int(part.get("layout-offset-in-bits", 0)) // 8
            if part.tag == "base-class":
                self.lines.add(f"class {name}: at {place:3} base {self.type(part.get('type-id'))}")
            elif part.tag == "data-member" and part.get("static") != "yes":
                field = part.find("var-decl")
                self.lines.add(f"class {name}: at {place:3} {field.get('name')}, {self.type(field.get('type-id'))}")
            elif part.tag == "member-function" and part.get("vtable-offset"):
                function = part.find("function-decl")
                called = function.get("mangled-name") or function.get("name")
                is_destructor = part.get("destructor") == "yes"
                self.lines.add(f"class {name}: virtual " + ("destructor" if is_destructor else
                                                            f"{part.get('vtable-offset')} {called}"))


def reasons():
    """[(pattern, reason)] of the intended changes."""
    found = []
    for line in CHANGES.read_text().splitlines():
        if line and not line.startswith("#"):
            pattern, _, reason = line.partition("  # ")
            if not reason.strip():
                sys.exit(f"abi: {CHANGES.name} gives no reason for '{pattern}'")
            found.append((re.compile(pattern), reason.strip()))
    return found


def main():
    library, include, file = sys.argv[1:4]
    now = Interface(library, include).lines
    if sys.argv[4:] == ["--store"]:
        pathlib.Path(file).write_text("".join(f"{line}\n" for line in sorted(now)))
        print(f"abi: stored {len(now)} lines in {file}")
        return
    before = set(pathlib.Path(file).read_text().splitlines())
    if not before or not now:
        sys.exit("abi: nothing to compare was found")
    changes, used, missing = reasons(), set(), []
    for line in sorted(before - now):
        pattern, reason = next((change for change in changes if change[0].match(line)), (None, None))
        if pattern:
            used.add(pattern)
            print(f"abi: intended: {line}: {reason}")
        else:
            missing.append(f"gone or changed: {line}")
    missing += [f"nothing matches '{pattern.pattern}' of {CHANGES.name}" for pattern, _ in changes if pattern not in used]
    for problem in missing:
        print(f"abi: {problem}", file=sys.stderr)
    if missing:
        sys.exit(1)
    print(f"abi: {len(before & now)} of {len(before)} lines are as in the release, {len(now - before)} are additions")


main()
