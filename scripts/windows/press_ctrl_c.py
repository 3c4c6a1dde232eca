#!/usr/bin/env python3
"""Presses Ctrl+C in the console of the small host of the tests, which is a pseudoterminal here.

    press_ctrl_c.py BUILD DEPENDENCIES

Once, the run must end with whole files. Again and again, the process must end at once, without
exit handlers. The caller limits the time."""

import json
import os
import pathlib
import pty
import select
import sys
import tempfile

WINE = pathlib.Path(__file__).with_name("wine.sh")
CONTROL_C_STATUS = 0xC000013A & 0xFF  # the part that this system passes on


def run(how, again):
    """Runs a step and returns the status of the host, its output and the outcome in its record."""
    folder = pathlib.Path(how)
    pathlib.Path("p.json").write_text(json.dumps({"modules": [{"Act": {"how": how}}]}))
    build, dependencies = sys.argv[1:]
    process, terminal = pty.fork()
    if process == 0:
        program = build + "/tests/host/varrow_orders.exe"
        command = [WINE, build, dependencies, "--console", program, "run", "p.json", "--out", how]
        os.execv(WINE, command)
    output = b""
    isPressed = False
    try:
        while True:
            if select.select([terminal], [], [], 0.25)[0]:
                output += os.read(terminal, 4096)
            if (again or not isPressed) and (folder / "waiting").exists():
                os.write(terminal, b"\x03")
                isPressed = True
    except OSError:  # the process has ended
        pass
    status = os.waitstatus_to_exitcode(os.waitpid(process, 0)[1])
    outcome = json.loads((folder / "run.json").read_text())["outcome"]
    return status, output.decode(errors="replace"), outcome


def expect(how, again, outcome, words, isThere):
    """Fails unless the host ends by Ctrl+C with this outcome, and with or without these words."""
    found = run(how, again)
    if found[0] != CONTROL_C_STATUS or found[2] != outcome or (words in found[1]) != isThere:
        sys.exit(f"{how}: {found}")


with tempfile.TemporaryDirectory() as work:
    os.chdir(work)
    expect("wait", False, "ended on request", "ended by Ctrl+C before the first step", True)
    expect("hang", True, "running", "exit()", False)
print("Ctrl+C ends the host")
