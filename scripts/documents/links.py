"""Whether links lead somewhere, paths and pictures are there, and code within sentences is whole."""

import re

LARGEST_PICTURES = 1_500_000  # bytes, all of them


def problems(documents, root):
    by_path = {document.path.resolve(): document for document in documents}
    for document in documents:
        for line in document.broken:
            yield document, line, "code has to end on the line where it begins"
        for line, target in document.links:
            reason = broken(document, target, by_path)
            if reason:
                yield document, line, f"{target}: {reason}"
        for line, code in document.spans:
            if names_missing_path(code, root):
                yield document, line, f"{code}: there is no such file or folder"
    yield from picture_problems(documents, root)


def broken(document, target, by_path):
    if re.match(r"(https?|mailto):", target):
        return None
    name, _, anchor = target.partition("#")
    path = (document.path.parent / name).resolve() if name else document.path.resolve()
    if not path.exists():
        return "the link leads nowhere"
    if anchor and anchor not in (by_path[path].anchors if path in by_path else ()):
        return "there is no such heading"
    return None


def names_missing_path(code, root):
    word = code.split()[0]
    folder, slash, _ = word.partition("/")
    if not slash or folder in ("", ".", "build") or re.search(r"[*<>{}=A-Z]", word):
        return False
    return (root / folder).is_dir() and not (root / word).exists()


def picture_problems(documents, root):
    shown = {(document.path.parent / target).resolve()
             for document in documents for _, target in document.links}
    makers = root / "scripts/screenshots"
    maker = makers.read_text(encoding="utf-8") if makers.exists() else ""
    pictures = sorted((root / "docs/pictures").glob("*"))
    for picture in pictures:
        if picture.resolve() not in shown:
            yield None, 0, f"{picture.relative_to(root)}: no document shows it"
        if picture.stem not in maker:
            yield None, 0, f"{picture.relative_to(root)}: scripts/screenshots does not make it"
    size = sum(picture.stat().st_size for picture in pictures)
    if size > LARGEST_PICTURES:
        yield None, 0, f"docs/pictures: {size} bytes, more than {LARGEST_PICTURES}"
