#!/usr/bin/env python3
"""doxygen_filter.py FILE: prints a header or a Markdown page, changed so that Doxygen reads it as we mean it.

Headers:
  - The comment at the top becomes the description of the file.
  - A comment applies to all declarations on the lines immediately after it.
  - Special members without a comment are hidden; they do what compiler-generated ones would do.
  - Each class gets its thread rules, from the table in docs/reliability.md, and what its header says about text.
  - Small records and fields without a comment get a description from docs/wire-format.md.
Pages:
  - The headings of records get the anchors that links refer to.
  - Pictures are named without their folder, which Doxygen knows.
  - The file name after the language of a fenced block is removed; only the tests use it.
Line numbers do not change, so warnings refer to the right lines.
"""
import html
import itertools
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


def thread_rules():
    """{class: its thread rules}, read from the table in docs/reliability.md."""
    rules, column = {}, None
    for line in (ROOT / "docs/reliability.md").read_text().splitlines():
        cells = [cell.strip() for cell in line.strip("|").split("|")]
        if cells[0] == "Class" and "Threads" in cells:
            column = cells.index("Threads")
        elif not line.startswith("|"):
            column = None
        elif column:
            rules.update((name, cells[column]) for name in re.findall(r"`(\w+)`", cells[0]))
    return rules


def rules_of(name, file_comment, code):
    """Thread rules and encoding of a class, in HTML without line breaks."""
    threads = thread_rules().get(name, "while one thread changes an object, no other thread uses it; different objects "
                                       "do not disturb each other")
    about_text = [sentence for sentence in re.split(r"(?<=\.)\s+", file_comment) if re.search(r"GBK|UTF-|\bencod|code page", sentence)]
    has_text = re.search(r"CString|CTextString|\bchar\b|std::string", code)
    text = " ".join(about_text) or ("GBK, code page 936; lengths are in bytes." if has_text else "none.")
    safe = html.escape(f"{threads[0].upper()}{threads[1:]}.", quote=False), html.escape(text, quote=False)
    safe = [re.sub(r"`([^`]*)`", lambda code: as_html(code.group(1)), part) for part in safe]
    return f'<dl class="section note"><dt>Threads</dt><dd>{safe[0]}</dd></dl><dl class="section note"><dt>Text</dt><dd>{safe[1]}</dd></dl>'


def describe_rules(lines, file_comment):
    code = "\n".join(line for line in lines if not line.startswith("//"))
    for number, line in enumerate(lines):
        opening = re.match(r"(?:class|struct) (?:ZVUTILIB_API )?(\w+)[^;]*\{", line)
        before = number - 1
        if opening and lines[before].startswith("template"):
            before -= 1
        if opening and is_comment(lines[before]):
            lines[before] += " " + rules_of(opening.group(1), file_comment, code)


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
            lines[number] = re.sub(r"(!\[[^]]*\]\()[^)]*/", r"\1", lines[number])


name = sys.argv[1]
text = pathlib.Path(name).read_text(encoding="utf-8").splitlines()
if name.endswith(".h"):
    about = " ".join(line.removeprefix("//").strip() for line in itertools.takewhile(lambda line: line.startswith("//"), text))
    describe_file(text)
    describe_members(text)
    describe_rules(text, about)
    group_declarations(text)
else:
    page(text)
print("\n".join(text))
