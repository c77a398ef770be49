#!/usr/bin/env python3
"""check.py INCLUDE LIB.so LIB.dll: what the library exports is what its public headers declare.

The headers' names come from the compiler (clang++), the libraries' from nm and objdump. Prints each
breach and ends with 1 where there is one.
"""
import json
import re
import subprocess
import sys

# Exported by one library only, with the reason.
LINUX_ONLY = [
    # Windows tells types apart by their names; each module has its own records.
    r"typeinfo (name )?for ",
    # The system's own there.
    r"(SetEvent|WaitForSingleObject|GetExitCodeThread|CloseHandle)\(",
    r"(OpenClipboard|CloseClipboard|IsClipboardFormatAvailable|GetClipboardData|GlobalLock|GlobalUnlock)\(",
    r"(Sys\w*String\w*|Variant\w+|Co\w+)\(",
    r"(vtable for )?IXMLDOM\w+|(vtable for )?IUnknown",
    # Private members of an exported class share its visibility; members of a nested class do not there.
    r"CUtiBlackList::WordList::",
]


def run(*command, text=None):
    return subprocess.run(command, input=text, text=True, stdout=subprocess.PIPE, check=True).stdout


def demangled(names):
    names = sorted(names)
    return dict(zip(names, run("c++filt", text="\n".join(names)).splitlines()))


def top_level_declarations(include):
    """The declarations outside of namespaces and in our own, as the compiler's tree of each."""
    command = ["clang++", "-std=c++17", f"-I{include}", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-x", "c++", "-"]
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    process.stdin.write("#include <ZvUtiLib/ZvUtiLib.h>\n")
    process.stdin.close()
    # One tree is printed after the other. Nearly all of them are namespaces of the standard library, too
    # large to be read; the name stands in front of what is in them.
    lines, is_namespace = [], False
    for line in process.stdout:
        if line.startswith("    {"):
            lines, is_namespace = ["{"], False
        elif line.startswith("    }") and lines:
            yield from flattened(json.loads("".join(lines) + "}"))
            lines = []
        elif lines:
            lines.append(line)
            is_namespace = is_namespace or line.startswith('      "kind": "NamespaceDecl"')
            if is_namespace and line.startswith('      "name": ') and '"zvuti"' not in line:
                lines = []
    if process.wait() != 0:
        sys.exit("check: the headers do not compile")


def flattened(node):
    if node.get("kind") == "NamespaceDecl":
        for inner in node.get("inner", []):
            for found in flattened(inner):
                found["scope"] = f"{node['name']}::{found.get('scope', '')}"
                yield found
    elif "kind" in node:
        yield node


def is_exported(node):
    return any(child["kind"] == "VisibilityAttr" for child in node.get("inner", []) if "kind" in child)


def is_inline(function):
    has_body = any(child.get("kind") == "CompoundStmt" for child in function.get("inner", []))
    return has_body or function.get("inline", False) or function.get("constexpr", False) or "explicitlyDefaulted" in function


class Headers:
    def __init__(self, include):
        self.out_of_line, self.inline, self.classes, self.templates = set(), set(), set(), set()
        for node in top_level_declarations(include):
            if node["kind"] == "CXXRecordDecl" and "name" in node and is_exported(node):
                self.add_class(node, node.get("scope", "") + node["name"])
            elif node["kind"] in ("FunctionDecl", "VarDecl") and is_exported(node):
                self.add_function(node)

    def add_class(self, node, name):
        self.classes.add(name)
        for member in node.get("inner", []):
            if member.get("kind") in ("CXXMethodDecl", "CXXConstructorDecl", "CXXDestructorDecl", "CXXConversionDecl"):
                self.add_function(member)
            elif member.get("kind") == "FriendDecl":
                for friend in member.get("inner", []):
                    if is_exported(friend):
                        self.add_function(friend)
            elif member.get("kind") == "FunctionTemplateDecl":
                self.templates.add(f"{name}::{member['name']}<")
            elif member.get("kind") == "CXXRecordDecl" and member.get("completeDefinition") and "name" in member:
                self.add_class(member, name + "::" + member["name"])

    def is_template(self, name):
        """Members made of templates share the visibility of their class on Linux; nobody else calls them."""
        return any(template in name for template in self.templates)

    def add_function(self, node):
        if node.get("pure") or node.get("explicitlyDeleted") or "mangledName" not in node:
            return
        if node.get("isImplicit") or is_inline(node):
            self.inline.add(node["mangledName"])
        else:
            self.out_of_line.add(node["mangledName"])


def exports_of_so(path):
    # The third column; versions behind an at sign.
    return {line.split()[2].split("@")[0] for line in run("nm", "-D", "--defined-only", path).splitlines()}


def exports_of_dll(path):
    text = run("i686-w64-mingw32-objdump", "-p", path)
    table = text[text.index("[Ordinal/Name Pointer] Table"):].splitlines()[1:]
    names = set()
    for line in table:
        found = re.match(r"\s+\[ *\d+\] (\S+)$", line)
        if not found:
            break
        names.add(re.sub(r"@\d+$", "", found.group(1)))
    return names


def common_form(name):
    """The same text for both systems: they differ in the types under size_t, va_list and 64-bit numbers."""
    name = name.replace("std::__cxx11::", "std::").replace("[abi:cxx11]", "")
    name = name.replace("__va_list_tag*", "va_list").replace("FormatV(char const*, char*)", "FormatV(char const*, va_list)")
    name = re.sub(r"\bunsigned (long long|long|int)\b", "unsigned", name)
    return re.sub(r"\blong long\b|\blong\b", "int", name)


def main():
    include, so, dll = sys.argv[1:]
    headers = Headers(include)
    linux, windows = demangled(exports_of_so(so)), demangled(exports_of_dll(dll))
    declared = demangled(headers.out_of_line | headers.inline)
    breaches = []

    if not headers.out_of_line or not windows:
        breaches.append("nothing to compare was found")
    for name in headers.out_of_line - set(linux):
        breaches.append(f"declared, but not exported on Linux: {declared[name]}")
    known = set(declared.values())
    for kind in ("vtable", "typeinfo", "typeinfo name"):
        known |= {f"{kind} for {name}" for name in headers.classes}
    for name in set(linux.values()) - known:
        if not headers.is_template(name):
            breaches.append(f"exported on Linux, but in no public header: {name}")

    on_linux = {common_form(name) for name in linux.values()}
    on_windows = {common_form(name) for name in windows.values()}
    for name in on_linux - on_windows:
        if not headers.is_template(name) and not any(re.match(reason, name) for reason in LINUX_ONLY):
            breaches.append(f"exported on Linux only: {name}")
    for name in on_windows - on_linux:
        breaches.append(f"exported on Windows only: {name}")

    for breach in sorted(breaches):
        print(f"exports: {breach}", file=sys.stderr)
    if breaches:
        sys.exit(1)
    print(f"exports: {len(on_windows)} names, all as the headers declare them")


main()
