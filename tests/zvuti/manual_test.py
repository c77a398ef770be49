"""Compares the manual with the help texts, and tries the completions in their shells."""
import os
import re
import shutil
import subprocess
import unittest
from pathlib import Path

from support import PROGRAM, run

MANUAL = Path(os.environ["ZVUTI_MANUAL"])


def help_of(*command):
    return run(*command, "--help")[1].decode()


def commands():
    return re.findall(r"^  ([a-z]+)  ", help_of().partition("Subcommands:")[2], re.M)


def words_of(text):
    return re.sub(r"\s+", " ", text)


class Manual(unittest.TestCase):
    @unittest.skipUnless(shutil.which("man"), "man is not installed")
    def test_has_every_line_of_the_help_texts(self):
        for command in [[], *([name] for name in commands())]:
            page = MANUAL / "man1" / ("-".join(["zvuti", *command]) + ".1")
            shown = subprocess.run(["man", "--warnings", "-l", page], capture_output=True, text=True, check=True,
                                   env={**os.environ, "MANWIDTH": "1000", "MANROFFOPT": "-c", "LC_ALL": "C.UTF-8"})
            self.assertEqual(shown.stderr, "", page)
            text = words_of(re.sub("[^\n]\x08", "", shown.stdout))
            for line in re.sub(r"^(Usage: |Positionals:$|Options:$|Subcommands:$)", "", help_of(*command), flags=re.M).splitlines():
                for part in re.split(r"\s{2,}", line.strip()):
                    self.assertIn(words_of(part), text, page)
        self.assertEqual(len(list((MANUAL / "man1").iterdir())), 1 + len(commands()))

    @unittest.skipUnless(shutil.which("fish"), "fish is not installed")
    def test_fish_completes(self):
        def completed(line):
            script = f"set -x PATH {Path(PROGRAM).parent} $PATH; source {MANUAL}/zvuti.fish; complete -C '{line}'"
            done = subprocess.run(["fish", "--no-config", "-c", script], capture_output=True, text=True, check=True)
            return {line.split("\t")[0] for line in done.stdout.splitlines()}

        self.assertEqual(completed("zvuti "), set(commands()))
        self.assertLessEqual({"ItemRecord", "BundleEntry"}, completed("zvuti decode "))
        self.assertLessEqual({"--hex", "--skip"}, completed("zvuti decode --"))
        self.assertEqual(completed("zvuti --color "), {"auto", "always", "never"})
        self.assertEqual(completed("zvuti convert --to u"), {"utf-8", "utf-16"})

    @unittest.skipUnless(shutil.which("zsh"), "zsh is not installed")
    def test_zsh_completes(self):
        def completed(line):
            # A shell of its own on a pseudo-terminal, in which compadd prints what it is given.
            script = f"""
zmodload zsh/zpty
zpty shell zsh -f -i
zpty -w shell 'PS1=; PROMPT=; path=({Path(PROGRAM).parent} $path); fpath=({MANUAL} $fpath); autoload -Uz compinit && compinit -u -D'
zpty -w shell 'zstyle ":completion:*" list-prompt ""; zstyle ":completion:*" menu no; LISTMAX=100000; COLUMNS=60; stty rows 1000; bindkey "^I" list-choices; print READY'
zpty -r -m shell text '*READY*READY*'
zpty -w -n shell $'{line}\\t'
sleep 2
zpty -r -t shell more
while zpty -r -t shell part; do more+=$part; done
print -r -- $more"""
            done = subprocess.run(["zsh", "-f", "-c", script], capture_output=True, text=True, timeout=60)
            return done.stdout

        for line, expected in (("zvuti ", commands()), ("zvuti decode ", ["ItemRecord", "BundleEntry"]),
                               ("zvuti decode --", ["--hex", "--skip"]), ("zvuti --color ", ["always", "never"])):
            shown = completed(line)
            for word in expected:
                self.assertIn(word, shown, line)
