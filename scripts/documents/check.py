"""Checks the documents of a tree and prints what is wrong with them."""

import concurrent.futures
import os
import re
import shlex
import threading

from documents import elsewhere, links, markdown
from documents.sandbox import Sandbox, can_run, matches, plain

GUIDE = "docs/user-guide.md"
PLACEHOLDER = (r"\.\.\.|\[|\b(ARGUMENT|BYTES|CODE|COMMAND|DEGREES|FILE|N|NAME|OPTION|PRODUCT|SET|VALUE|"
               r"WHICH)\b|\w\|\w")
OUTSIDE = {"cmake", "ctest", "sudo", "apt-get", "git", "dpkg", "udevadm"}


def run(root, build, rows=None):
    """Returns the exit status: 0 when nothing is wrong."""
    found = Findings(root)
    documents = [markdown.read(path) for path in paths_of(root)]
    table = Table(root, elsewhere.ROWS if rows is None else rows, found)
    with concurrent.futures.ThreadPoolExecutor() as pool:
        jobs = [pool.submit(check_document, document, build, table, found)
                for document in documents]
    for job in jobs:
        job.result()
    for document, line, text in links.problems(documents, root):
        found.add(document, line, text)
    check_guide(root, documents, build, found)
    table.report_unused()
    print(f"docs: {len(documents)} documents, {found.commands} commands, {len(found.texts)} problems")
    return 1 if found.texts or not documents else 0


def paths_of(root):
    texts = [root / "README.md", root / "CONTRIBUTING.md", *sorted((root / "docs").glob("*.md"))]
    return [path for path in texts if path.exists()]


class Findings:
    def __init__(self, root):
        self._root = root
        self._lock = threading.Lock()  # documents are checked at the same time
        self.texts = []
        self.commands = 0

    def count_command(self):
        with self._lock:
            self.commands += 1

    def add(self, document, line, text):
        where = f"{document.path.relative_to(self._root)}:{line}: " if document else ""
        with self._lock:
            self.texts.append(where + text)
            print(where + text, flush=True)


class Table:
    """Who runs the commands that are not run here."""

    def __init__(self, root, rows, found):
        self._root = root
        self._rows = rows
        self._found = found
        self._used = set()
        self._stages = self._code(".ci/run")

    def _code(self, name):
        path = self._root / name
        if not path.exists():
            return ""
        lines = path.read_text(encoding="utf-8").splitlines()
        return "\n".join(line for line in lines if not line.lstrip().startswith("#"))

    def is_program(self, word):
        path = self._root / word
        return "/" in word and path.is_file() and os.access(path, os.X_OK)

    def check(self, document, line, command):
        for number, (pattern, file, text) in enumerate(self._rows):
            if re.fullmatch(pattern, command):
                self._used.add(number)
                if text not in self._code(file):
                    self._found.add(document, line, f"{command}: {file} does not run it: {text}")
                return
        stated = re.search(rf"(?m){re.escape(command)}($|\s)", self._stages)
        if not (stated and self.is_program(shlex.split(command)[0])):
            self._found.add(document, line, f"{command}: nothing runs this command")

    def report_unused(self):
        for number, (pattern, _, _) in enumerate(self._rows):
            if number not in self._used:
                self._found.add(None, 0, f"elsewhere.py: no document has the command {pattern}")


def check_document(document, build, table, found):
    with Sandbox(build) as sandbox:
        for block in document.blocks:
            if markdown.holds_commands(block):
                check_block(document, block, sandbox, table, found)
        for line, code in document.spans:
            check_span(document, line, code, sandbox, table, found)


def check_block(document, block, sandbox, table, found):
    printed = None
    for line, command, wanted in markdown.commands_of(block):
        found.count_command()
        printed = None
        if not can_run(command):
            table.check(document, line, command)
            continue
        status, printed = sandbox.run(command)
        if status != wanted:
            found.add(document, line, f"{command}: exit status {status} instead of {wanted}\n{printed}")
    for output in document.blocks:
        if output.follows is block and not markdown.holds_commands(output):
            compare(document, output, printed, found)


def compare(document, output, printed, found):
    if printed is None:
        found.add(document, output.line, "the output of a command that is not run here")
        return
    if not matches(plain("\n".join(output.lines)), plain(printed)):
        found.add(document, output.line, f"the command prints something else:\n{printed}")


def check_span(document, line, code, sandbox, table, found):
    word = code.split()[0]
    is_ours = word in ("quorvanectl", "quorvane") and " " in code
    if not (is_ours or (word in OUTSIDE and " " in code) or table.is_program(word)):
        return
    found.count_command()
    if re.search(PLACEHOLDER, code):
        check_usage(document, line, code, sandbox, found)
    elif can_run(code):
        status, printed = sandbox.run(code)
        if status != 0:
            found.add(document, line, f"{code}: exit status {status} instead of 0\n{printed}")
    else:
        table.check(document, line, code)


def check_usage(document, line, code, sandbox, found):
    """Code with words to fill in: its command exists and has its options."""
    words = code.replace("[", " ").replace("]", " ").split()
    if words[0] not in ("quorvanectl", "quorvane"):
        return
    command = [words[0]]
    for word in words[1:]:
        if not re.fullmatch(r"[a-z][a-z-]*", word):
            break
        command.append(word)
    status, printed = sandbox.run(shlex.join(command) + " --help")
    _, general = sandbox.run(words[0] + " --help")
    if status != 0:
        found.add(document, line, f"{code}: there is no such command\n{printed}")
        return
    for option in re.findall(r"(?<!\w)--[a-z-]+", code):
        if option not in printed + general:
            found.add(document, line, f"{code}: there is no option {option}")


def check_guide(root, documents, build, found):
    """Every command that quorvanectl lists stands in the guide as code."""
    guide = [document for document in documents if document.path == root / GUIDE]
    codes = {word for document in guide for _, code in document.spans for word in code.split()}
    with Sandbox(build) as sandbox:
        _, printed = sandbox.run("quorvanectl --help")
    listed = re.findall(r"(?m)^  ([a-z][a-z-]+)\s", printed.partition("Subcommands:")[2])
    if not listed:
        found.add(None, 0, "quorvanectl --help lists no commands")
    for name in listed:
        if guide and name not in codes and name != "quorvanectl":
            found.add(guide[0], 1, f"the command {name} is not in the guide")
