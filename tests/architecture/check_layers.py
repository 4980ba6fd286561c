#!/usr/bin/env python3
"""Checks the house rules that a compiler does not see, and fails with one line per breach:

- an include only points down the list of floors, so that no two folders include in a circle;
- the plain floors, the tools and the fuzz targets include no Qt;
- no file is longer than 600 lines, except named tables of facts;
- every header opens with a comment on what it is and guards itself with #pragma once.

Usage: check_layers.py SOURCE_FOLDER
"""
import re
import sys
from pathlib import Path

# Lowest first. A file belongs to the floor with the longest matching folder.
FLOORS = [
    "jet", "sql", "validation/reporting", "validation/rules", "settings/rules", "db",
    "app/form", "validation", "links", "settings", "browser", "editing", "app",
]
PLAIN = FLOORS[:6]
# Beside the house: what each may look at. Tests may look at everything.
GUESTS = {
    "tools": {"jet", "sql", "db", "validation/reporting", "tools"},
    "data": {"jet", "data"},
    "benchmarks": {"jet", "sql", "db", "validation/reporting", "data", "benchmarks"},
    "fuzz": {"jet", "sql", "data", "fuzz"},
}
MAX_LINES = 600
# Pure tables of facts, long by nature.
TABLES = {"jet/collation_table.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.MULTILINE)


def owner(path):
    """The floor or guest folder that a path relative to the source folder belongs to, or None."""
    homes = [home for home in [*FLOORS, *GUESTS, "tests"] if path.startswith(home + "/")]
    return max(homes, key=len, default=None)


def include_fault(home, target):
    """Why a file of `home` may not include the project file `target`; None where it may."""
    other = owner(target)
    if other is None or home == "tests":
        return None
    if other == "tests":
        return None if home in ("benchmarks", "fuzz") else "includes test code"
    if home in GUESTS:
        return None if other in GUESTS[home] else f"{home}/ may not look at {other}/"
    if other in GUESTS:
        return f"{home}/ may not look at {other}/"
    return None if FLOORS.index(other) <= FLOORS.index(home) else f"points up, to {other}/"


def faults_of(path, text):
    """All breaches of one source file, as texts without the file's name."""
    found = []
    home = owner(path)
    for kind, target in INCLUDE.findall(text):
        reason = include_fault(home, target) if kind == '"' else None
        if reason:
            found.append(f'#include "{target}": {reason}')
        if kind == "<" and (home in PLAIN or home in GUESTS) and re.match(r"Q[A-Z]|Qt", target):
            found.append(f"#include <{target}>: no Qt here")
    lines = text.count("\n") + 1
    if lines > MAX_LINES and path not in TABLES:
        found.append(f"{lines} lines; the limit is {MAX_LINES}")
    if path.endswith(".h") and not text.startswith("//"):
        found.append("a header opens with a comment on what it is")
    if path.endswith(".h") and "#pragma once" not in text:
        found.append("#pragma once is missing")
    return found


def check_the_checker():
    """A check that cannot fail is worth nothing: known breaches must be seen, known good files pass."""
    header = "// What it is.\n#pragma once\n"
    breaches = [
        ("jet/a.cpp", '#include "db/connection.h"\n'),
        ("settings/rules/a.cpp", '#include "settings/setting_inputs.h"\n'),
        ("validation/a.cpp", '#include "links/selection_list.h"\n'),
        ("app/form/a.cpp", '#include "app/frm_main.h"\n'),
        ("db/a.cpp", "#include <QString>\n"),
        ("tools/a.cpp", '#include "editing/save_record.h"\n'),
        ("jet/a.cpp", '#include "tests/support/samples.h"\n'),
        ("jet/a.cpp", "\n" * MAX_LINES),
        ("jet/a.h", "#pragma once\n"),
        ("jet/a.h", "// What it is.\n"),
    ]
    good = [
        ("app/a.h", header + '#include "jet/database.h"\n#include <QWidget>\n'),
        ("settings/a.cpp", '#include "settings/rules/setting_rules.h"\n'),
        ("db/a.cpp", '#include "sql/engine.h"\n#include <vector>\n'),
        ("tests/jet/a.cpp", '#include "jet/database.h"\n'),
    ]
    for path, text in breaches:
        assert faults_of(path, text), f"not seen: {path}: {text[:60]}"
    for path, text in good:
        assert not faults_of(path, text), f"wrongly seen: {path}: {faults_of(path, text)}"


def main():
    check_the_checker()
    root = Path(sys.argv[1])
    count = 0
    faults = []
    for top in sorted({home.split("/")[0] for home in [*FLOORS, *GUESTS, "tests"]}):
        for file in sorted(p for p in (root / top).rglob("*") if p.suffix in (".h", ".cpp")):
            path = file.relative_to(root).as_posix()
            count += 1
            faults += [f"{path}: {fault}" for fault in faults_of(path, file.read_text(encoding="utf-8"))]
    print("\n".join(faults) if faults else f"{count} files keep the rules.")
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
