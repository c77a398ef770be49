#!/usr/bin/env python3
"""manual.py ZVUTI README FOLDER: writes into FOLDER, from what ZVUTI prints with --help and from the table of headers in
README, the manual pages man1/zvuti.1, man1/zvuti-COMMAND.1 and man3/zvutilib.3, and the completions zvuti.fish and
_zvuti (zsh). Help texts are changed in the sources of zvuti only.
"""
import pathlib
import re
import subprocess
import sys

SECTIONS = {"Positionals:": "ARGUMENTS", "Options:": "OPTIONS", "Subcommands:": "COMMANDS"}


def run(program, *arguments):
    return subprocess.run([program, *arguments], check=True, capture_output=True, text=True).stdout


class Help:
    """The parts of a help text: description, usage, {section: [(term, text)]}, and the lines after the sections."""

    def __init__(self, text):
        lines = text.splitlines()
        at = next(i for i, line in enumerate(lines) if line.startswith("Usage: "))
        self.description, self.usage = " ".join(lines[:at]), lines[at].removeprefix("Usage: ")
        self.sections, self.rest, rows = {}, [], None
        for line in lines[at + 1:]:
            if line in SECTIONS and not self.rest:
                rows = self.sections[SECTIONS[line]] = []
            elif rows is not None and re.match(r" {20,}\S", line):
                rows[-1] = rows[-1][0], f"{rows[-1][1]} {line.strip()}".strip()
            elif rows is not None and line.startswith("  "):
                term, _, text = re.sub(r"\s{2,}", "\t", line.strip(), count=1).partition("\t")
                rows.append((term, text))
            elif line or self.rest:
                rows = None
                self.rest.append(line)
            else:
                rows = None

    def options(self):
        """(names, name of its argument or "", values to choose from, text) of each option."""
        for term, text in self.sections.get("OPTIONS", []):
            names, _, argument = re.match(r"((-[\w-]+,?)+) ?([A-Z]*)", term).groups()
            argument = "" if argument in ("REQUIRED", "E") else argument
            listed = re.search(r"\{([^}]*)\}", term) or re.search(r": ([^;]*)", text)
            values = re.sub(r" ?\([^)]*\)", "", listed.group(1)).replace(", ", ",").split(",") if listed else []
            if argument == "KIND":
                values = [m.group(1) for m in (re.match(r"  ([a-z-]+)  +\S", line) for line in self.rest) if m]
            isList = argument and len(values) > 1 and all(re.fullmatch(r"[a-z0-9-]+", value) for value in values)
            yield names.split(","), argument, values if isList else [], text

    def places(self):
        return [term.split()[0] for term, _ in self.sections.get("ARGUMENTS", [])]


def roff(text):
    text = text.replace("\\", "\\e").replace("-", "\\-").replace("'", "\\(aq").replace("`", "\\(ga")
    return "\\&" + text if text.startswith(".") else text


def rest_as_roff(lines):
    """Paragraphs are filled; lines with a margin are shown as they are."""
    out, isShown = [], False
    for line in lines:
        if line and line.startswith("  ") != isShown:
            isShown = not isShown
            out.append(".nf\n.RS 2" if isShown else ".RE\n.fi")
        out.append(roff(line[2:] if isShown else line) if line else ".sp" if isShown else ".PP")
    return out + [".RE\n.fi"] * isShown


def page(name, version, summary, usage, sections, rest, also):
    out = [f'.TH {name.upper().replace("-", chr(92) + "-")} 1 "" "zvuti {version}" "ZvUtiLib"', ".SH NAME",
           f"{roff(name)} \\- {roff(summary)}", ".SH SYNOPSIS", f".B {roff(usage)}"]
    for title, rows in sections.items():
        out.append(f".SH {title}")
        for term, text in rows:
            out += [".TP", f".B {roff(term)}", roff(text)]
    out += [".SH DESCRIPTION", *rest_as_roff(rest), ".SH SEE ALSO", " ,\n".join(f".BR {roff(a)} (1)" for a in also)]
    return "\n".join(out).replace("(1) ,", "(1),") + "\n"


def library_page(version, readme):
    rows = re.findall(r"^\| (`[^|]*`) \| ([^|]*) \|$", re.search(r"^\| Header .*?\n\n", readme, re.M | re.S).group(), re.M)
    out = [f'.TH ZVUTILIB 3 "" "ZvUtiLib {version}" "ZvUtiLib"', ".SH NAME",
           "zvutilib \\- utilities of an online card and board game client", ".SH SYNOPSIS", ".nf",
           ".B #include <ZvUtiLib/ZvUtiLib.h>", ".PP",
           ".B g++ \\-std=c++17 game.cpp $(pkg\\-config \\-\\-cflags \\-\\-libs ZvUtiLib)", ".PP",
           ".B find_package(ZvUtiLib CONFIG REQUIRED)",
           ".B target_link_libraries(game PRIVATE ZvUtiLib::ZvUtiLib)", ".fi", ".SH DESCRIPTION",
           "Text is GBK, code page 936, and lengths are in bytes.",
           "Failures are plain values: 0, an empty text, an unchanged target.",
           "Each header says what failure looks like and which threads may use it.",
           "The headers, below <ZvUtiLib/...>:"]
    for headers, text in rows:
        out += [".TP", ".B " + roff(headers.replace("`", "")), roff(text.replace("`", ""))]
    return "\n".join([*out, ".SH SEE ALSO", ".BR zvuti (1)"]) + "\n"


def kind_of(argument):
    return {"RECORD": "records", "APPDIR": "folders"}.get(argument, "files" if argument in ("FILE", "WORDS", "A", "B", "NAME") else "")


def fish(helps):
    def quoted(text):
        return "'" + text.replace("\\", "\\\\").replace("'", "\\'") + "'"

    out = ["# Made from the help texts of zvuti.", "complete -c zvuti -f"]
    commands = [name for name in helps if name]
    for name, text in helps[""].sections["COMMANDS"]:
        out.append(f"complete -c zvuti -n 'not __fish_seen_subcommand_from {' '.join(commands)}' -a {name} -d {quoted(text)}")
    for command, help in helps.items():
        seen = f"-n '{'__fish_seen_subcommand_from ' + command if command else 'not __fish_seen_subcommand_from ' + ' '.join(commands)}'"
        for names, argument, values, text in help.options():
            flags = " ".join(("-l " + name[2:]) if name.startswith("--") else "-s " + name[1:] for name in names)
            value = f" -x -a '{' '.join(values)}'" if values else " -r -F" if kind_of(argument) == "files" else " -x" if argument else ""
            out.append(f"complete -c zvuti {seen} {flags}{value} -d {quoted(text)}")
        for kind in sorted({kind_of(place) for place in help.places()} - {""}):
            source = {"records": "-a '(zvuti records --names)'", "folders": "-a '(__fish_complete_directories)'", "files": "-F"}[kind]
            out.append(f"complete -c zvuti {seen} {source}")
    return "\n".join(out) + "\n"


def zsh(helps):
    def quoted(text):
        return text.replace("'", "'\\''").replace("[", "\\[").replace("]", "\\]").replace(":", "\\:")

    actions = {"records": "_zvuti_records", "folders": "_files -/", "files": "_files", "": " "}

    def arguments(help):
        for names, argument, values, text in help.options():
            value = f":{argument}:({' '.join(values)})" if values else f":{argument}:{actions[kind_of(argument)]}" if argument else ""
            group = f"({' '.join(names)})" if len(names) > 1 else ""
            for name in names:
                yield f"'{group}{name}[{quoted(text)}]{value}'"

    out = ["#compdef zvuti", "# Made from the help texts of zvuti.", "_zvuti_records() {",
           "  local -a names=(${(f)\"$(zvuti records --names 2>/dev/null)\"})", "  compadd -a names", "}", "_zvuti() {",
           "  local curcontext=$curcontext state line", "  local -A opt_args", "  _arguments -C \\"]
    out += [f"    {argument} \\" for argument in arguments(helps[""])]
    out += ["    '1:command:->command' '*::argument:->arguments'", "  case $state in", "    command)", "      local -a commands=("]
    out += [f"        '{name}:{quoted(text)}'" for name, text in helps[""].sections["COMMANDS"]]
    out += ["      )", "      _describe command commands", "      ;;", "    arguments)", "      case $line[1] in"]
    for command, help in helps.items():
        if command:
            places = help.places()
            repeated = places and "..." in help.usage
            rows = list(arguments(help)) + [
                f"'{'*' if repeated and i == len(places) - 1 else i + 1}:{place}:{actions[kind_of(place)]}'" for i, place in enumerate(places)]
            out += [f"        {command})", "          _arguments " + " \\\n            ".join(rows), "          ;;"]
    return "\n".join([*out, "      esac", "      ;;", "  esac", "}", "_zvuti \"$@\""]) + "\n"


def main():
    program, readme, folder = sys.argv[1], pathlib.Path(sys.argv[2]).read_text(encoding="utf-8"), pathlib.Path(sys.argv[3])
    version = run(program, "--version").split()[1]
    helps = {"": Help(run(program, "--help"))}
    commands = [name for name, _ in helps[""].sections["COMMANDS"]]
    helps.update((name, Help(run(program, name, "--help"))) for name in commands)
    (folder / "man1").mkdir(parents=True, exist_ok=True)
    (folder / "man3").mkdir(exist_ok=True)
    top = helps[""]
    (folder / "man1/zvuti.1").write_text(page(
        "zvuti", version, "show what ZvUtiLib reads and writes", top.usage, top.sections,
        [top.description, "", *top.rest], [f"zvuti-{name}" for name in commands]))
    for name in commands:
        help = helps[name]
        (folder / f"man1/zvuti-{name}.1").write_text(
            page(f"zvuti-{name}", version, help.description, help.usage, help.sections, help.rest, ["zvuti"]))
    (folder / "man3/zvutilib.3").write_text(library_page(version, readme))
    (folder / "zvuti.fish").write_text(fish(helps))
    (folder / "_zvuti").write_text(zsh(helps))


main()
