#!/usr/bin/env python3
"""doxygen_filter.py FILE: prints a header or a Markdown page, changed so that Doxygen reads it as we mean it.

Headers:
  - The comment at the top becomes the description of the file.
  - A comment applies to all declarations on the lines immediately after it.
  - Special members without a comment are hidden; they do what compiler-generated ones would do.
  - Small records and fields without a comment get a description from docs/wire-format.md.
Pages:
  - The headings of records get the anchors that links refer to.
  - The file name after the language of a fenced block is removed; only the tests use it.
Line numbers do not change, so warnings refer to the right lines.
"""
import pathlib
import re
import sys

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent


def wire_format():
    """{record: (its size, {field: form})}, read from docs/wire-format.md."""
    records, size, fields = {}, None, None
    for line in (ROOT / "docs/wire-format.md").read_text().splitlines():
        if heading := re.match(r"### (\w+)$", line):
            size, fields = [], {}
            records[heading.group(1)] = (size, fields)
        elif fields is None:
            continue
        elif re.match(r"(At least )?\d+( or \d+)? bytes?\.$", line):
            size.append(line[0].lower() + line[1:])
        elif row := re.match(r"\| \d* \| `(\w+)` \| (.*?) \|", line):
            fields[row.group(1)] = re.sub(r"\[(\w+)\]\(#\w+\)", r"\1", row.group(2))
    return records


def is_comment(line):
    return line.lstrip().startswith("///")


def is_documented(lines, number):
    return "///" in lines[number] or is_comment(lines[number - 1])


def as_html(code):
    return "<code>" + code.replace("@", "\\@") + "</code>"


def describe_file(lines):
    for number, line in enumerate(lines):
        if not line.startswith("//"):
            break
        lines[number] = "/" + line
    lines[number] = "/// @file"  # replaces #pragma once and continues the comment
    for number, line in enumerate(lines):
        if is_comment(line):  # an at sign in code is not a Doxygen command
            lines[number] = re.sub(r"`([^`]*@[^`]*)`", lambda code: as_html(code.group(1)), line)


def describe_members(lines):
    records, name, fields = wire_format(), None, {}
    for number, line in enumerate(lines):
        if opening := re.match(r"(?:class|struct) (?:ZVUTILIB_API )?(\w+)[^;]*\{", line):
            name = opening.group(1)
            size, fields = records.get(name, ([], {}))
            if size and not is_documented(lines, number) and lines[number - 1] == "":
                lines[number - 1] = f'/// Plain data, {size[0]} See @ref {name.lower()} "the wire format".'
        elif line.startswith("};"):
            name = None
        elif name and not is_documented(lines, number):
            itself = rf"(const {name}&( \w+)?)?"
            if re.match(rf"  (explicit |virtual )?~?{name}\({itself}\)( override| = \w+)?;", line) or re.match(
                    rf"  {name}& operator=\({itself}\)( = \w+)?;", line):
                lines[number] = "//" + line
            elif field := re.match(r"  [\w:<>, ]+ (\w+)(?:\[\d+\])?(?: = [^;]*)?;$", line):
                if field.group(1) in fields:
                    lines[number] = f"{line}  ///< On the wire: {fields[field.group(1)]}."


STOPS_GROUP = re.compile(r"\s*(//|#|public:|private:|protected:|};|$)")
OPENS_SCOPE = re.compile(r"\s*(template|struct|class|union|enum)\b.*[^;]$")


def append_mark(lines, number, mark):
    if "///" in lines[number]:
        sys.exit(f"{sys.argv[1]}:{number + 1}: expected a blank line here")
    lines[number] = re.sub(r"\s*// .*", "", lines[number]) + " " + mark


def group_declarations(lines):
    """Makes a Doxygen group of each comment that is followed by several declarations."""
    number = 0
    while number < len(lines):
        if not is_comment(lines[number]):
            number += 1
            continue
        first = number
        while is_comment(lines[number]):
            number += 1
        margin = re.match(" *", lines[first]).group()
        ends, after = [], number
        while after < len(lines) and not STOPS_GROUP.match(lines[after]) and not (after == number and OPENS_SCOPE.match(lines[after])):
            # The last line of a declaration has the margin of the comment, or is a continuation line.
            if re.match(margin + r"(?:    +)?\S.*[;}](\s*//.*)?$|" + margin + r"}$", lines[after]):
                ends.append(after)
            after += 1
        bare = [end for end in ends if "///" not in lines[end]]
        if bare and bare[-1] != ends[0]:
            append_mark(lines, first - 1, "/**@{*/")
            append_mark(lines, bare[-1], "/**@}*/")


def page(lines):
    for number, line in enumerate(lines):
        if heading := re.match(r"### (\w+)$", line):
            lines[number] = f"{line} {{#{heading.group(1).lower()}}}"
        else:
            lines[number] = re.sub(r"^```(\w+) .*", r"```\1", line)


name = sys.argv[1]
text = pathlib.Path(name).read_text(encoding="utf-8").splitlines()
if name.endswith(".h"):
    describe_file(text)
    describe_members(text)
    group_declarations(text)
else:
    page(text)
print("\n".join(text))
