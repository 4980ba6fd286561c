#!/usr/bin/env python3
"""Turns CHANGELOG.md into debian/changelog, so that versions and dates stand in one place.

Usage: debian_changelog.py CHANGELOG.md
"""
import re
import sys
from datetime import datetime, timezone

HEADING = re.compile(r"^## (\d+\.\d+\.\d+), (\d{4}-\d{2}-\d{2})$")
MAINTAINER = "The Stelvan developers <maintainers@stelvan.example>"


def releases(text):
    """(version, date, [entry]) of each release, newest first; an entry is one line."""
    found = []
    for line in text.splitlines():
        heading = HEADING.match(line)
        if heading:
            found.append((heading.group(1), heading.group(2), []))
        elif found and line.startswith("- "):
            found[-1][2].append(line[2:])
        elif found and line.startswith("  "):
            found[-1][2][-1] += " " + line.strip()
    return found


def wrapped(entry, width=76):
    lines = ["  *"]
    for word in entry.replace("`", "").split():
        if len(lines[-1]) + 1 + len(word) > width:
            lines.append("   ")
        lines[-1] += " " + word
    return lines


def main():
    with open(sys.argv[1], encoding="utf-8") as source:
        found = releases(source.read())
    if not found:
        sys.exit(f"{sys.argv[1]}: no release, such as '## 1.0.0, 2026-11-22'")
    for version, date, entries in found:
        when = datetime.strptime(date, "%Y-%m-%d").replace(tzinfo=timezone.utc)
        print(f"stelvan ({version}) stable; urgency=medium\n")
        for entry in entries:
            print("\n".join(wrapped(entry)))
        print(f"\n -- {MAINTAINER}  {when.strftime('%a, %d %b %Y %H:%M:%S +0000')}\n")


if __name__ == "__main__":
    main()
