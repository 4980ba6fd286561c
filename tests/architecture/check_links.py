#!/usr/bin/env python3
"""Fails with one line for each dead link of the documents: a file that is not there, a heading that no longer is.

Usage: check_links.py SOURCE_FOLDER
"""
import re
import sys
from pathlib import Path

LINK = re.compile(r"!?\[[^\]]*\]\(([^)\s]+)\)")
FENCE = re.compile(r"^```.*?^```", re.MULTILINE | re.DOTALL)


def anchors_of(text):
    """The anchors that readers of Markdown give to the headings of a text."""
    found = set()
    for heading in re.findall(r"^#+ +(.+?) *$", FENCE.sub("", text), re.MULTILINE):
        plain = re.sub(r"[^\w\- ]", "", heading.replace("`", "").lower())
        anchor = plain.strip().replace(" ", "-")
        number = 0
        while (anchor if number == 0 else f"{anchor}-{number}") in found:
            number += 1
        found.add(anchor if number == 0 else f"{anchor}-{number}")
    return found


def faults_of(document, text, read):
    """Dead links of one document; `read` gives the text of a path ("" for what is no text), or None."""
    faults = []
    for target in LINK.findall(FENCE.sub("", text)):
        if re.match(r"[a-z]+:", target):
            continue
        path, _, anchor = target.partition("#")
        where = document if not path else (document.parent / path)
        other = text if not path else read(where)
        if other is None:
            faults.append(f"{document}: no file {target}")
        elif anchor and anchor not in anchors_of(other):
            faults.append(f"{document}: no heading {target}")
    return faults


def check_the_checker():
    """A check that cannot fail is worth nothing."""
    files = {Path("docs/b.md"): "# Some `code`, and more\n"}
    here = Path("docs/a.md")
    assert not faults_of(here, "[b](b.md) [c](b.md#some-code-and-more) [d](https://x.example)", files.get)
    assert faults_of(here, "[b](c.md)", files.get)
    assert faults_of(here, "[b](b.md#other)", files.get)
    assert faults_of(here, "![picture](pictures/none.png)", files.get)
    assert not faults_of(here, "# Here\n[up](#here)\n```\n[no](link.md)\n```\n", files.get)


def main():
    check_the_checker()
    root = Path(sys.argv[1])

    def read(path):
        file = root / path
        if not file.exists():
            return None
        return file.read_text(encoding="utf-8") if file.suffix == ".md" else ""

    documents = sorted(root.glob("*.md")) + sorted((root / "docs").rglob("*.md"))
    faults = []
    for file in documents:
        faults += faults_of(file.relative_to(root), file.read_text(encoding="utf-8"), read)
    print("\n".join(faults) if faults else f"{len(documents)} documents, no dead link.")
    return 1 if faults or not documents else 0


if __name__ == "__main__":
    sys.exit(main())
