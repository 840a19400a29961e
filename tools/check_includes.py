#!/usr/bin/env python3
"""Fails on an include that goes up the house, or that brings Qt into the engine.

Usage: check_includes.py ROOT. Prints every offence and exits with 1 if there is one.
"""

import pathlib
import re
import sys

FLOORS = {"common": 1, "hash": 2, "numbers": 3, "values": 4, "script": 5, "cell": 6}
UI_FLOOR = 7
INCLUDE = re.compile(r'^\s*#\s*include\s*([<"])([^>"]+)[>"]', re.MULTILINE)


def source_files(folder):
    return sorted(p for p in folder.rglob("*") if p.suffix in (".h", ".cpp"))


def floor_of_header(name):
    """The floor that a quoted include path names; paths start at src."""
    first = name.split("/")[0] if "/" in name else ""
    return FLOORS.get(first, UI_FLOOR)


def offences_in(path, floor, root):
    text = path.read_text(encoding="utf-8")
    for match in INCLUDE.finditer(text):
        bracket, name = match.groups()
        line = text.count("\n", 0, match.start()) + 1
        place = f"{path.relative_to(root)}:{line}"
        is_qt = bracket == "<" and re.match(r"Q[A-Z]|Qt", name)
        if is_qt and floor < UI_FLOOR:
            yield f"{place}: {name}: the engine knows no Qt"
        elif bracket == '"' and floor_of_header(name) > floor:
            yield f"{place}: {name}: stands on a higher floor"


def offences_in_tool(path, root):
    """The console tool takes what it likes of the engine, and nothing of the window."""
    text = path.read_text(encoding="utf-8")
    for match in INCLUDE.finditer(text):
        bracket, name = match.groups()
        from_engine = name.split("/")[0] in FLOORS or name.startswith("cli/")
        if bracket == "<" and re.match(r"Q[A-Z]|Qt", name) or bracket == '"' and not from_engine:
            yield f"{path.relative_to(root)}: {name}: the console tool has no window"


def main():
    root = pathlib.Path(sys.argv[1]).resolve()
    found = []
    for folder, floor in FLOORS.items():
        for path in source_files(root / "src" / folder):
            found += offences_in(path, floor, root)
        cmake = (root / "src" / folder / "CMakeLists.txt").read_text(encoding="utf-8")
        if re.search(r"\bQt\d?::", cmake):
            found.append(f"src/{folder}/CMakeLists.txt: links Qt")
    for path in source_files(root / "cli"):
        found += offences_in_tool(path, root)
    print("\n".join(found) if found else "no include goes up")
    return 1 if found else 0


if __name__ == "__main__":
    sys.exit(main())
