"""Proves that each kind of failure is found: one at a time, in a tree that is otherwise fine."""

import contextlib
import io
import pathlib
import tempfile

from documents import check

PROGRAM = """#!/bin/sh
[ "$1" != --simulate ] || shift
case "$*" in
  --help) printf 'Options:\\n  --json\\n\\nSubcommands:\\n  read   Reads\\n  fail   Fails\\n' ;;
  "read --help") echo "Options:" ;;
  read) printf 'FF   65 (%s ms)\\nSEN  900\\n%s/presets\\n' "$(date +%N | cut -c 1-3)" "$HOME" ;;
  monitor) trap 'exit 0' INT; echo arrival; while :; do sleep 1; done ;;
  fail) echo "it failed" >&2; exit 1 ;;
  *) exit 2 ;;
esac
"""

GUIDE = """# Guide

`quorvanectl read`; the command `fail`; see [above](#guide).

![Picture](pictures/one.png)
"""

TREE = {
    "README.md": "# Title\n\nSee [the guide](docs/user-guide.md#guide).\n",
    "docs/user-guide.md": GUIDE,
    "docs/pictures/one.png": "",
    "scripts/screenshots": "cp one.png\n",
    "scripts/tool": "#!/bin/sh\nexit 0\n",
    ".ci/run": "# scripts/never\nstage tool scripts/tool --all\n",
    "build/bin/quorvanectl": PROGRAM,
}
EXECUTABLE = ("scripts/tool", "build/bin/quorvanectl")

READ = "```sh\nquorvanectl read\n```\n"

# The end of the README, and the expected finding; None if it is fine.
TEXTS = [
    (READ, None),
    (READ + "```text\nFF   65 (250 ms)\nSEN  900\n/home/you/presets\n```\n", None),
    (READ + "\n```text\nFF   65 (1 ms)\n...\n```\n", None),
    (READ + "A sentence.\n\n```text\nanything\n```\n", None),
    ("```sh\nquorvanectl \\\n  read\n```\n", None),
    ("```sh\nquorvanectl fail  # exit status 1\n```\n```text\nit failed\n```\n", None),
    ("```sh\nquorvanectl monitor\n```\n```text\narrival\n```\n", None),
    ("```sh\n# A remark.\nquorvanectl read  # another\n```\n", None),
    ("    quorvanectl read\n", None),
    ("`quorvanectl read WHICH`, `quorvanectl [--json] read`\n", None),
    ("`scripts/tool --all`, `scripts/tool`, `cmake`\n", None),
    ("[web](https://quorvane.example), `[no](link)`\n", None),
    ("```sh\noutside --row\n```\n", None),

    ("```sh\nquorvanectl fail\n```\n", "README.md:6: quorvanectl fail: exit status 1 instead of 0"),
    ("```sh\nquorvanectl read # exit status 1\n```\n", "exit status 0 instead of 1"),
    ("```sh\nquorvanectl read | quorvanectl fail\n```\n", "exit status 1 instead of 0"),
    ("    quorvanectl fail\n", "README.md:5: quorvanectl fail: exit status 1 instead of 0"),
    ("`quorvanectl fail --now`\n", "exit status 2 instead of 0"),
    (READ + "```text\nFF   66 (250 ms)\n...\n```\n", "README.md:8: the command prints something else"),
    (READ + "```text\nFF   65 (250 ms)\nSEN  900\n```\n", "the command prints something else"),
    (READ + "```text\n...\nSEN  900\n```\n", "the command prints something else"),
    ("```sh\noutside --row\n```\n```text\nfine\n```\n", "the output of a command that is not run here"),
    ("```sh\nrm -rf everything\n```\n", "rm -rf everything: nothing runs this command"),
    ("```sh\nquorvanectl read > file\n```\n", "nothing runs this command"),
    ("```sh\nscripts/tool --other\n```\n", "scripts/tool --other: nothing runs this command"),
    ("`cmake --build elsewhere`\n", "cmake --build elsewhere: nothing runs this command"),
    ("```sh\nfalse --row\n```\n", "scripts/tool does not run it: absent"),
    ("`quorvanectl bogus FILE`\n", "there is no such command"),
    ("`quorvanectl read --bogus FILE`\n", "there is no option --bogus"),
    ("[gone](docs/gone.md)\n", "docs/gone.md: the link leads nowhere"),
    ("![gone](docs/pictures/gone.png)\n", "docs/pictures/gone.png: the link leads nowhere"),
    ("[gone](#gone)\n", "#gone: there is no such heading"),
    ("[gone](docs/user-guide.md#gone)\n", "docs/user-guide.md#gone: there is no such heading"),
    ("`code over\n", "README.md:5: code has to end on the line where it begins"),
    ("`scripts/gone`\n", "scripts/gone: there is no such file or folder"),
]

# The changed files of the tree, and the expected finding.
FILES = [
    ({}, None),
    ({"docs/user-guide.md": GUIDE.replace("`fail`", "fail")}, "the command fail is not in the guide"),
    ({"docs/user-guide.md": GUIDE.replace("![Picture](pictures/one.png)", "")},
     "docs/pictures/one.png: no document shows it"),
    ({"README.md": TREE["README.md"] + "\n`scripts/tool --all`\n",
      ".ci/run": "# scripts/tool --all\n"}, "scripts/tool --all: nothing runs this command"),
    ({"scripts/screenshots": "cp other.png\n"},
     "docs/pictures/one.png: scripts/screenshots does not make it"),
    ({"docs/pictures/one.png": "." * 1_600_000}, "docs/pictures: 1600000 bytes, more than 1500000"),
]

ROWS = [(r"outside --row", "scripts/tool", "exit 0"), (r"false --row", "scripts/tool", "absent")]
UNUSED = "no document has the command"


def plant(root, files):
    for name, text in files.items():
        path = root / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_text(text, encoding="utf-8")
        if name in EXECUTABLE:
            path.chmod(0o755)


def outcome(files, rows):
    with tempfile.TemporaryDirectory() as directory:
        root = pathlib.Path(directory)
        plant(root, {**TREE, **files})
        printed = io.StringIO()
        with contextlib.redirect_stdout(printed):
            status = check.run(root, root / "build", rows)
        return status, printed.getvalue()


def judge(what, wanted, status, printed):
    """Says what went wrong with a case; nothing when it came as wanted."""
    if wanted is None and status != 0:
        return f"self-test: {what!r} is fine, but:\n{printed}"
    if wanted is not None and (status == 0 or wanted not in printed):
        return f"self-test: {what!r} should be told as {wanted!r}, but:\n{printed}"
    if wanted is not None and " 1 problems" not in printed:
        return f"self-test: {what!r} has one thing wrong, but:\n{printed}"
    return None


def run():
    cases = [(text, wanted, {"README.md": TREE["README.md"] + "\n" + text},
              [row for row in ROWS if row[0] in text]) for text, wanted in TEXTS]
    cases += [(list(files), wanted, files, []) for files, wanted in FILES]
    cases.append(("a row that nothing needs", UNUSED, {}, ROWS[:1]))
    failures = 0
    for what, wanted, files, rows in cases:
        failure = judge(what, wanted, *outcome(files, rows))
        if failure:
            print(failure)
            failures += 1
    print(f"docs self-test: {len(cases)} cases, {failures} failures")
    return 1 if failures or not cases else 0
