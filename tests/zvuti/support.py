"""Runs the program under test. The environment variable ZVUTI names it."""
import os
import subprocess
from pathlib import Path

PROGRAM = os.environ["ZVUTI"]
SOURCE = Path(os.environ["ZVUTI_SOURCE"])


def run(*arguments, stdin=b"", cwd=None):
    """Runs the program. Returns its exit code, and its standard output and error as bytes."""
    environment = {**os.environ, "TZ": "Asia/Shanghai", "NO_COLOR": "1"}
    done = subprocess.run([PROGRAM, *map(str, arguments)], input=stdin, capture_output=True, cwd=cwd,
                          env=environment, timeout=120)
    return done.returncode, done.stdout, done.stderr
