"""The keys of docs/keys.md: section to menu text to the chords that give the command."""

import pathlib

DOCUMENT = pathlib.Path(__file__).parents[1] / "docs" / "keys.md"

NAMES = {
    "Ctrl": "Control_L", "Alt": "Alt_L", "Shift": "Shift_L", "Super": "Super_L",
    "←": "Left", "→": "Right", "↑": "Up", "↓": "Down", "Space": "space",
    ".": "period", "/": "slash", ",": "comma",
}


def chord(text):
    """("Control_L", "b") for Ctrl+B"""
    return tuple(NAMES.get(key, key.lower() if len(key) == 1 else key) for key in text.split("+"))


def read():
    sections = {}
    for line in DOCUMENT.read_text(encoding="utf-8").splitlines():
        if line.startswith("## "):
            section = sections.setdefault(line[3:].split(":")[0], {})
        elif line.startswith("| ") and line.count(" | ") == 3 and not line.startswith("| Menu "):
            menu, first, second, _ = (cell.strip() for cell in line.strip("|").split("|"))
            section[menu] = [chord(key) for key in (first, second) if key]
    return sections
