"""A document: its blocks of code, the code and the links in its sentences, and its headings."""

import dataclasses
import pathlib
import re

COMMANDS = "sh"


@dataclasses.dataclass
class Block:
    """Code on lines of its own. An indented block holds commands."""

    line: int
    language: str
    lines: list = dataclasses.field(default_factory=list)
    follows: "Block | None" = None  # the block above, when nothing but blank lines is between


@dataclasses.dataclass
class Document:
    path: pathlib.Path
    blocks: list = dataclasses.field(default_factory=list)
    spans: list = dataclasses.field(default_factory=list)  # (line, code)
    links: list = dataclasses.field(default_factory=list)  # (line, target)
    anchors: set = dataclasses.field(default_factory=set)
    broken: list = dataclasses.field(default_factory=list)  # lines that end within code


def slug(heading):
    """The anchor that a heading gets from those who show Markdown."""
    kept = re.sub(r"[^\w\- ]", "", heading.replace("`", "").strip().lower())
    return kept.replace(" ", "-")


def read(path):
    document = Document(path)
    block = None  # that is being read
    last = None  # that may be followed
    blank = True
    for number, line in enumerate(path.read_text(encoding="utf-8").splitlines(), 1):
        if block is not None and block.language != "indented":
            if line.strip() == "```":
                last, block = block, None
            else:
                block.lines.append(line)
            continue
        if line.startswith("    ") and (blank or block is not None):
            if block is None:
                block = Block(number, "indented", follows=last)
                document.blocks.append(block)
            block.lines.append(line[4:])
            blank = False
            continue
        if not line.strip():
            if block is not None:
                block.lines.append("")
            blank = True
            continue
        if block is not None:
            last, block = block, None
        if line.startswith("```"):
            block = Block(number, line[3:].strip(), follows=last)
            document.blocks.append(block)
        else:
            last = None
            read_sentence(document, number, line)
        blank = False
    return document


def read_sentence(document, number, line):
    heading = re.match(r"#+ (.*)", line)
    if heading:
        add_anchor(document.anchors, slug(heading[1]))
    document.spans += [(number, code.strip()) for code in re.findall(r"`([^`]+)`", line)]
    if line.count("`") % 2:
        document.broken.append(number)
    without_code = re.sub(r"`[^`]*`", "", line)
    document.links += [(number, target) for target in re.findall(r"\]\(([^)\s]+)\)", without_code)]


def add_anchor(anchors, name):
    number, free = 1, name
    while free in anchors:
        free, number = f"{name}-{number}", number + 1
    anchors.add(free)


def commands_of(block):
    """The commands of a block as (line, text, exit status)."""
    text, first = "", 0
    for number, line in enumerate(block.lines, block.line + (block.language != "indented")):
        if not text and (not line.strip() or line.startswith("#")):
            continue
        first = first if text else number
        text += line.strip()
        if text.endswith("\\"):
            text = text[:-1]
            continue
        status = re.search(r"# exit status (\d+)$", text)
        yield first, re.sub(r"\s+# .*$", "", text), int(status[1]) if status else 0
        text = ""


def holds_commands(block):
    return block.language in (COMMANDS, "indented")
