#!/usr/bin/env python3
"""Keeps docs/rules.md from going stale: each row's file exists and holds the name beside it.

Usage: check_rules.py SOURCE_FOLDER
"""
import re
import sys
from pathlib import Path

ROW = re.compile(r"^\| (?P<rule>[^|]+?) \| `(?P<file>[^`|]+)` \| `(?P<name>\w+)` \|$")
LEAST_RULES = 60


def rows_of(text):
    """The rules of the index, and the lines that look like one but cannot be read."""
    rows, odd = [], []
    for line in text.splitlines():
        if not line.startswith("| ") or line.startswith("| Rule ") or set(line) <= set("|- "):
            continue
        match = ROW.match(line)
        if match:
            rows.append((match["rule"], match["file"], match["name"]))
        else:
            odd.append(line)
    return rows, odd


def fault_of(file, name, read):
    """Why a row is stale; None where it is not. `read` gives a file's text, or None."""
    text = read(file)
    if text is None:
        return f"there is no {file}"
    return None if re.search(rf"\b{re.escape(name)}\b", text) else f"{file} holds no {name}"


def check_the_checker():
    """A check that cannot fail is worth nothing."""
    files = {"src/a.h": "int answer();\n"}
    assert fault_of("src/a.h", "answer", files.get) is None
    assert fault_of("src/a.h", "answ", files.get)
    assert fault_of("src/b.h", "answer", files.get)
    assert rows_of("| A rule | `src/a.h` | `answer` |\n") == ([("A rule", "src/a.h", "answer")], [])
    assert rows_of("| A rule | src/a.h | answer |\n")[1]


def main():
    check_the_checker()
    root = Path(sys.argv[1])

    def read(file):
        path = root / file
        return path.read_text(encoding="utf-8") if path.is_file() else None

    rows, odd = rows_of((root / "docs/rules.md").read_text(encoding="utf-8"))
    faults = [f"cannot be read: {line}" for line in odd]
    faults += [f"{rule}: {fault}" for rule, file, name in rows if (fault := fault_of(file, name, read))]
    if len(rows) < LEAST_RULES:
        faults.append(f"{len(rows)} rules; there were at least {LEAST_RULES}")
    print("\n".join(faults) if faults else f"{len(rows)} rules are where the index says.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
