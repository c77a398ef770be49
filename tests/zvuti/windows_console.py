#!/usr/bin/env python3
"""windows_console.py COMMAND...: checks zvuti.exe on a console. COMMAND starts a program of Windows under Wine; its
current folder is that of zvuti.exe."""
import os
import pty
import sys

NUMERALS = "\u62fe\u8d30"  # of 12
STYLE = "\x1b[1m"


def shown(code_page, arguments):
    """What zvuti.exe shows on a console with a code page."""
    process, terminal = pty.fork()
    if process == 0:
        line = f"chcp {code_page} & zvuti.exe {arguments}"
        os.execvp(sys.argv[1], [*sys.argv[1:], "cmd", "/c", line])
    text = b""
    try:
        while chunk := os.read(terminal, 65536):
            text += chunk
    except OSError:  # the way in which Linux reports the end
        pass
    os.waitpid(process, 0)
    return text.decode()


for page in ("936", "65001"):
    for arguments, part, is_there in (("number 12", NUMERALS, True), ("records ItemRecord", STYLE, True),
                                      ("--color never records ItemRecord", STYLE, False),
                                      ("decode ItemRecord \u62fe", "cannot read \u62fe: No such file", True)):
        text = shown(page, arguments)
        if (part in text) != is_there:
            sys.exit(f"windows_console: in code page {page} zvuti {arguments} shows {text!r}")
print("windows_console: characters and styles are shown in code pages 936 and 65001")
