#!/usr/bin/env python3
"""Checks the house rules that a compiler does not see, and fails with one line per breach:

- an include only points down the list of floors, so that no two folders include in a circle;
- no floor lies inside another's folder, and rooms of a floor include only rooms below them;
- the plain floors and the guests include no Qt;
- no file is longer than 600 lines and no line than 100 characters, except named tables of facts;
- every header opens with a comment on what it is and guards itself with #pragma once.

Usage: check_layers.py SOURCE_FOLDER
"""
import re
import sys
from pathlib import Path

# Lowest first; each is a folder of src/.
FLOORS = [
    "base", "jet", "sql", "db", "gem", "model", "form", "checks", "links", "settings", "browser", "editing",
    "tools", "app",
]
PLAIN = FLOORS[:FLOORS.index("form")]
# Rooms of a floor, lowest first, where a floor has rooms. What lies in the floor's own folder is its face:
# it may include every room, and no room includes the face.
ROOMS = {
    "jet": ["disk", "pages", "rows", "index", "tables", "check"],
    "browser": ["index", "grid"],
    "model": ["core", "check", "compare", "text", "publish"],
    "tools": ["dialogs", "findings", "picture"],
}
# Beside the house: what each may look at. Tests may look at everything.
GUESTS = {
    "gemdb": {"base", "jet", "sql", "db", "gem", "model", "gemdb"},
    "data": {"base", "jet", "data"},
    "tests/bench": {"base", "jet", "sql", "db", "data", "tests"},
    "tests/fuzz": {"base", "jet", "sql", "data", "tests"},
}
MAX_LINES = 600
MAX_COLUMNS = 100
# Pure tables of facts, long by nature.
TABLES = {"src/jet/index/collation_table.h"}
INCLUDE = re.compile(r'^\s*#\s*include\s*(["<])([^">]+)[">]', re.MULTILINE)


def home_of(path):
    """The floor, guest or "tests" that a file belongs to (path relative to the source folder), or None."""
    for guest in ("tests/bench", "tests/fuzz"):
        if path.startswith(guest + "/"):
            return guest
    top, _, rest = path.partition("/")
    if top == "src":
        floor = rest.partition("/")[0]
        return floor if floor in FLOORS or floor in GUESTS else None
    return top if top in ("data", "tests") else None


def home_of_include(target):
    """The same for what stands in an #include: relative to src/, or to the source folder."""
    top = target.partition("/")[0]
    return top if top in FLOORS or top in GUESTS or top == "tests" else None


def room_of(floor, path):
    """The room of a floor's file or include, None for the face."""
    inside = path.partition(floor + "/")[2]
    return inside.partition("/")[0] if "/" in inside else None


def room_fault(floor, path, target):
    """Why a file of a floor may not include another of the same floor; None where it may."""
    rooms = ROOMS.get(floor)
    if rooms is None:
        return None
    here, there = room_of(floor, path), room_of(floor, target)
    if here is None:
        return None
    if there is None:
        return "a room does not include the face"
    return None if rooms.index(there) <= rooms.index(here) else f"points up, to the room {there}/"


def include_fault(home, path, target):
    """Why a file of `home` may not include the project file `target`; None where it may."""
    other = home_of_include(target)
    if other is None or home == "tests":
        return None
    if home in GUESTS:
        return None if other in GUESTS[home] else f"{home}/ may not look at {other}/"
    if other == "tests":
        return "includes test code"
    if other in GUESTS:
        return f"{home}/ may not look at {other}/"
    if other == home:
        return room_fault(home, path, target)
    return None if FLOORS.index(other) < FLOORS.index(home) else f"points up, to {other}/"


def place_faults(home, path):
    """Faults of where a file lies."""
    if home is None:
        return ["belongs to no floor"]
    if home not in FLOORS:
        return []
    room = room_of(home, path.partition("src/")[2])
    if room is None:
        return []
    if room in FLOORS or room in GUESTS:
        return [f"a floor ({room}) inside another's folder"]
    return [] if room in ROOMS.get(home, ()) else [f"{home}/ has no room {room}/"]


def faults_of(path, text):
    """All breaches of one source file, as texts without the file's name."""
    home = home_of(path)
    found = place_faults(home, path)
    for kind, target in INCLUDE.findall(text):
        reason = include_fault(home, path, target) if kind == '"' and home else None
        if reason:
            found.append(f'#include "{target}": {reason}')
        if kind == "<" and (home in PLAIN or home in GUESTS) and re.match(r"Q[A-Z]|Qt", target):
            found.append(f"#include <{target}>: no Qt here")
    lines = text.split("\n")
    if path not in TABLES:
        if len(lines) > MAX_LINES:
            found.append(f"{len(lines)} lines; the limit is {MAX_LINES}")
        found += [f"line {number} is {len(line)} characters long; the limit is {MAX_COLUMNS}"
                  for number, line in enumerate(lines, 1) if len(line) > MAX_COLUMNS]
    if path.endswith(".h") and not text.startswith("//"):
        found.append("a header opens with a comment on what it is")
    if path.endswith(".h") and "#pragma once" not in text:
        found.append("#pragma once is missing")
    return found


def check_the_checker():
    """A check that cannot fail is worth nothing: known breaches must be seen, known good files pass."""
    header = "// What it is.\n#pragma once\n"
    breaches = [
        ("src/jet/a.cpp", '#include "db/connection.h"\n'),
        ("src/base/a.cpp", '#include "jet/error.h"\n'),
        ("src/gem/a.cpp", '#include "settings/setting_inputs.h"\n'),
        ("src/checks/a.cpp", '#include "links/selection_list.h"\n'),
        ("src/form/a.cpp", '#include "app/frm_main.h"\n'),
        ("src/db/a.cpp", "#include <QString>\n"),
        ("src/gem/a.cpp", "#include <QString>\n"),
        ("src/gemdb/a.cpp", '#include "editing/save_record.h"\n'),
        ("src/app/a.cpp", '#include "gemdb/commands.h"\n'),
        ("src/jet/a.cpp", '#include "tests/support/models.h"\n'),
        ("src/app/form/a.cpp", ""),
        ("src/links/room/a.cpp", ""),
        ("src/nowhere/a.cpp", ""),
        ("src/jet/disk/a.cpp", '#include "jet/pages/header.h"\n'),
        ("src/jet/rows/a.h", header + '#include "jet/tables/table.h"\n'),
        ("src/jet/tables/a.cpp", '#include "jet/database.h"\n'),
        ("src/jet/cellar/a.cpp", ""),
        ("src/jet/a.cpp", "\n" * MAX_LINES),
        ("src/jet/a.cpp", "x" * (MAX_COLUMNS + 1)),
        ("src/jet/a.h", "#pragma once\n"),
        ("src/jet/a.h", "// What it is.\n"),
    ]
    good = [
        ("src/app/a.h", header + '#include "jet/database.h"\n#include <QWidget>\n'),
        ("src/settings/a.cpp", '#include "gem/settings.h"\n'),
        ("src/db/a.cpp", '#include "sql/engine.h"\n#include <vector>\n'),
        ("src/db/b.cpp", '#include "jet/rows/value.h"\n'),
        ("src/jet/a.cpp", '#include "jet/check/check.h"\n#include "jet/database_impl.h"\n'),
        ("src/jet/index/a.cpp", '#include "jet/index/keys.h"\n#include "jet/disk/page.h"\n'),
        ("src/jet/a.cpp", "x" * MAX_COLUMNS),
        ("tests/jet/a.cpp", '#include "jet/database.h"\n'),
        ("tests/bench/a.cpp", '#include "tests/crash/faulty_file_system.h"\n'),
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
    for top in ("data", "src", "tests"):
        for file in sorted(p for p in (root / top).rglob("*") if p.suffix in (".h", ".cpp")):
            path = file.relative_to(root).as_posix()
            count += 1
            faults += [f"{path}: {fault}" for fault in faults_of(path, file.read_text(encoding="utf-8"))]
    print("\n".join(faults) if faults else f"{count} files keep the rules.")
    return 1 if faults or count == 0 else 0


if __name__ == "__main__":
    sys.exit(main())
