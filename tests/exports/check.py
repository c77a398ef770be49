#!/usr/bin/env python3
"""check.py INCLUDE LIB.so LIB.dll: checks that both libraries export exactly what the public headers declare.

The declared names come from clang++, the exported ones from nm and objdump. Prints each difference and exits with 1
if there is one.
"""
import json
import re
import subprocess
import sys

# Names that only the Linux library exports, with the reason.
LINUX_ONLY = [
    # On Windows types are compared by name, and each module has its own typeinfo.
    r"typeinfo (name )?for ",
    # Windows provides these itself.
    r"(SetEvent|WaitForSingleObject|GetExitCodeThread|CloseHandle)\(",
    r"(OpenClipboard|CloseClipboard|IsClipboardFormatAvailable|GetClipboardData|GlobalLock|GlobalUnlock)\(",
    r"(Sys\w*String\w*|Variant\w+|Co\w+)\(",
    r"(vtable for )?IXMLDOM\w+|(vtable for )?IUnknown",
    # On Linux a nested class has the visibility of the class around it; on Windows it is not exported.
    r"CUtiBlackList::WordList::",
]


def run(*command, text=None):
    return subprocess.run(command, input=text, text=True, stdout=subprocess.PIPE, check=True).stdout


def demangled(names):
    names = sorted(names)
    return dict(zip(names, run("c++filt", text="\n".join(names)).splitlines()))


def top_level_declarations(include):
    """Yields the AST of each declaration in the global namespace and in namespace zvuti."""
    command = ["clang++", "-std=c++17", f"-I{include}", "-fsyntax-only", "-Xclang", "-ast-dump=json", "-x", "c++", "-"]
    process = subprocess.Popen(command, stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True)
    process.stdin.write("#include <ZvUtiLib/ZvUtiLib.h>\n")
    process.stdin.close()
    # The compiler prints one AST after another. Most are namespaces of the standard library, which are too large to
    # parse. Skip them as soon as their name is known; it comes before their content.
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
        """True for instances of member templates. On Linux they have the visibility of their class; only the library
        calls them."""
        return any(template in name for template in self.templates)

    def add_function(self, node):
        if node.get("pure") or node.get("explicitlyDeleted") or "mangledName" not in node:
            return
        if node.get("isImplicit") or is_inline(node):
            self.inline.add(node["mangledName"])
        else:
            self.out_of_line.add(node["mangledName"])


def exports_of_so(path):
    # The name is in the third column; an at sign separates it from its version.
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
    """Makes the names of both systems comparable: size_t, va_list and 64-bit integers have different types there."""
    name = name.replace("std::__cxx11::", "std::").replace("[abi:cxx11]", "")
    name = name.replace("__va_list_tag*", "va_list").replace("FormatV(char const*, char*)", "FormatV(char const*, va_list)")
    name = re.sub(r"\bunsigned (long long|long|int)\b", "unsigned", name)
    return re.sub(r"\blong long\b|\blong\b", "int", name)


def main():
    include, so, dll = sys.argv[1:]
    headers = Headers(include)
    linux, windows = demangled(exports_of_so(so)), demangled(exports_of_dll(dll))
    declared = demangled(headers.out_of_line | headers.inline)
    differences = []

    if not headers.out_of_line or not windows:
        differences.append("no names to compare were found")
    for name in headers.out_of_line - set(linux):
        differences.append(f"declared, but not exported on Linux: {declared[name]}")
    known = set(declared.values())
    for kind in ("vtable", "typeinfo", "typeinfo name"):
        known |= {f"{kind} for {name}" for name in headers.classes}
    for name in set(linux.values()) - known:
        if not headers.is_template(name):
            differences.append(f"exported on Linux, but in no public header: {name}")

    on_linux = {common_form(name) for name in linux.values()}
    on_windows = {common_form(name) for name in windows.values()}
    for name in on_linux - on_windows:
        if not headers.is_template(name) and not any(re.match(reason, name) for reason in LINUX_ONLY):
            differences.append(f"exported on Linux only: {name}")
    for name in on_windows - on_linux:
        differences.append(f"exported on Windows only: {name}")

    for difference in sorted(differences):
        print(f"exports: {difference}", file=sys.stderr)
    if differences:
        sys.exit(1)
    print(f"exports: {len(on_windows)} names, all as declared in the headers")


main()
