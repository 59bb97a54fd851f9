"""Where the commands of a document are run: a home of its own, and a simulated base."""

import os
import pathlib
import re
import shlex
import signal
import subprocess
import tempfile
import threading

PROGRAMS = {"quorvanectl", "quorvane", "jq", "cat", "echo", "ls", "cp"}
HOME = "/home/you"  # as documents write it
LIMIT = 15  # seconds; a command that takes longer is killed, and so fails

# What differs between runs, and its replacement.
VOLATILE = [
    (r"\(\d+ ms\)", "(250 ms)"),
    (r'"milliseconds": \d+', '"milliseconds": 250'),
    (r"\d{4}-\d\d-\d\dT\d\d:\d\d:\d\dZ", "2025-01-01T00:00:00Z"),
    (r"[0-9A-F]{8}(-[0-9A-F]{4}){3}-[0-9A-F]{12}", "UUID"),
]

SIMULATED = """#!/bin/sh
for word; do
  case $word in --simulate*) exec {program} "$@" ;; esac
done
exec {program} --simulate "$@"
"""


def can_run(command):
    """Whether the command is made of programs that are harmless in a home of their own."""
    if re.search(r"[;<>`]|\$\(", command):
        return False
    for part in re.split(r"&&|\|\|?", command):
        words = shlex.split(part)
        if not words or words[0] not in PROGRAMS:
            return False
        if words[0] == "quorvane" and words[1:] not in (["--help"], ["--version"]):
            return False
        if words[:2] == ["quorvanectl", "udev-rule"] and words[2:] in (["--install"], ["--remove"]):
            return False  # changes the system's files
    return True


def plain(text):
    for pattern, constant in VOLATILE:
        text = re.sub(pattern, constant, text)
    return [line.rstrip() for line in text.strip("\n").split("\n")]


def matches(wanted, printed):
    """Compares lines; a wanted "..." stands for any number of them."""
    if not wanted:
        return not printed
    if wanted[0].strip() == "...":
        return any(matches(wanted[1:], printed[start:]) for start in range(len(printed) + 1))
    return bool(printed) and wanted[0] == printed[0] and matches(wanted[1:], printed[1:])


def _take_interrupts():
    """The background jobs of scripts are started to ignore them, and so are their children."""
    signal.signal(signal.SIGINT, signal.SIG_DFL)


class Sandbox:
    def __init__(self, build):
        self._directory = tempfile.TemporaryDirectory()
        root = pathlib.Path(self._directory.name)
        self._home = root / "home"
        programs = root / "bin"
        for directory in (self._home, programs):
            directory.mkdir()
        for name in ("quorvanectl", "quorvane"):
            if (build / "bin" / name).exists():
                (programs / name).symlink_to(build / "bin" / name)
        simulated = programs / "quorvanectl"
        simulated.unlink()
        # Another process writes it. A file that this one had open for writing would be open in the
        # programs that other threads start, too, and could not be run until these end.
        subprocess.run(["install", "-m", "755", "/dev/stdin", str(simulated)], check=True, text=True,
                       input=SIMULATED.format(program=shlex.quote(str(build / "bin/quorvanectl"))))
        kept = {name: value for name, value in os.environ.items()
                if not re.match(r"(XDG|QUORVANE|QT)_", name)}
        self._environment = {**kept, "HOME": str(self._home), "LC_ALL": "C.UTF-8",
                             "PATH": f"{programs}:{kept.get('PATH', '/usr/bin:/bin')}"}

    def __enter__(self):
        return self

    def __exit__(self, *_):
        self._directory.cleanup()

    def run(self, command):
        """Returns the exit status and all that was printed. A monitor is ended by Ctrl-C."""
        process = subprocess.Popen(
            ["bash", "-c", "set -o pipefail; " + command], cwd=self._home, env=self._environment,
            stdin=subprocess.DEVNULL, stdout=subprocess.PIPE, stderr=subprocess.STDOUT, text=True,
            start_new_session=True, preexec_fn=_take_interrupts)
        overdue = threading.Timer(LIMIT, os.killpg, (process.pid, signal.SIGKILL))
        overdue.start()
        first = ""
        if re.search(r"\bmonitor\b(?!.*--help)", command):
            first = self._until_result(process)
            os.killpg(process.pid, signal.SIGINT)
        rest, _ = process.communicate()
        overdue.cancel()
        printed = (first + rest).replace(str(self._home), HOME)
        if "--simulate" not in command:
            printed = re.sub(r"(?m)^Simulated base: .*\n", "", printed)
            printed = printed.replace("/Quorvane/simulated/", "/Quorvane/")
        return process.returncode, printed

    @staticmethod
    def _until_result(process):
        text = ""
        for line in process.stdout:
            text += line
            if not line.startswith("Simulated base: "):
                break
        return text
