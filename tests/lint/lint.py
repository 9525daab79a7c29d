"""lint.py RULE ROOT: checks one rule over the tree and prints a line "file:line: what" for each breach.

Rules: layers, sleeps, words, links, twins. Status 0 without a breach, 1 with one.
"""

import pathlib
import re
import sys

from twins import twins

# What the sources of a folder may include beside the standard headers and what lies in the folder itself: contract
# and interfaces for all, and for a back end what its trade needs, but never another back end. A pattern of names
# tells files of one folder apart; what no row names is not checked.
STANDARD = r"<[a-z_]+>"  # as nobody else names a header
CONTRACT = r'"contract/\w+\.h"'
INTERFACES = r'"contract/backend/\w+\.h"'
CORE = r'"contract/core/\w+\.h"'
SYSTEM = r"<[a-z0-9_/]+\.h>"
LAYERS = {
    "src/logic/**/*": [r'"logic/\w+/\w+\.h"', CONTRACT],
    "src/contract/*.h": [CONTRACT],
    "src/contract/*.cpp": [CONTRACT, INTERFACES, CORE, r"<utf8proc\.h>"],
    "src/contract/backend/*": [CONTRACT, INTERFACES],
    "src/contract/core/*": [CONTRACT, INTERFACES, CORE, r"<utf8proc\.h>"],
    "src/backends/headless/*": [CONTRACT, INTERFACES],
    "src/backends/posix/*": [CONTRACT, INTERFACES, SYSTEM],
    "src/wire/*": [INTERFACES, SYSTEM],
    "src/engine/box/*": [SYSTEM],
    "src/engine/*": [INTERFACES, r'"engine/box/box\.h"', r'"wire/\w+\.h"', r'"backends/mpv/mpv_media\.h"', SYSTEM],
    "src/backends/remote/*": [INTERFACES, r'"wire/\w+\.h"', SYSTEM],
    "src/backends/mpv/*": [CONTRACT, INTERFACES, r'"wire/\w+\.h"', r"<(mpv|libav\w+|fluidsynth)(/\w+)?\.h>", SYSTEM],
    "src/backends/qt/*": [CONTRACT, INTERFACES, r"<Q\w+>", r"<(X11|fontconfig)/[\w/]+\.h>",
                          r'"backends/qt/presenter/\w+\.h"'],
    "src/backends/qt/presenter/*": [CONTRACT, INTERFACES, r"<Q\w+>", r'"backends/qt/\w+\.h"', SYSTEM],
}

SOURCES = {".cpp", ".h"}
SCRIPTS = {".py", ".sh", ""}


def tree(root):
    """All files of the project, without what is built and what the version control keeps."""
    for path in sorted(root.rglob("*")):
        parts = path.relative_to(root).parts
        ignored = any(p in (".git", ".cache", "__pycache__") or p.startswith("build") for p in parts)
        if not ignored and path.is_file() and not path.is_symlink():
            yield path


def lines(path):
    try:
        return path.read_text(encoding="utf-8").splitlines()
    except UnicodeDecodeError:
        return []  # a picture


def matches(root, files, pattern, what):
    for path in files:
        for number, line in enumerate(lines(path), 1):
            found = re.search(pattern, line)
            if found:
                yield f"{path.relative_to(root)}:{number}: {what}: {found.group(0)}"


def layers(root):
    for files, patterns in LAYERS.items():
        for path in sorted(root.glob(files)):
            if path.suffix not in SOURCES:
                continue
            own = r'"(%s/)?\w+\.h"' % re.escape(str(path.parent.relative_to(root / "src")))
            for number, line in enumerate(lines(path), 1):
                include = re.match(r"\s*#\s*include\s*([<\"][^>\"]+[>\"])", line)
                if include and not any(re.fullmatch(p, include.group(1)) for p in [STANDARD, own, *patterns]):
                    yield f"{path.relative_to(root)}:{number}: not for this layer: {include.group(1)}"


def sleeps(root):
    code = r"\b(sleep_(for|until)|[mu]?sleep|nanosleep|q[SW](leep|ait))\s*\("
    command = r"(^|[;&|({]|\bdo|\bthen)\s*sleep\s+[0-9.$\"]"
    files = [p for p in tree(root) if p.suffix in SOURCES | SCRIPTS and p.parent.name != "lint"]
    yield from matches(root, files, code + "|" + command, "waits for no event")


def words(root):
    # In parts, so that the rule does not find itself.
    private = r"\b[Ss]" + r"pec(ification)?s?\b|\bPart [1-7]\.[1-9]\b"
    machine = r"(?<![\w.$}*-])/(wo" + r"rk|ro" + r"ot|tmp(?!/\.X))/"
    hosts = r"\b(deb|snapshot)\.deb" + r"ian\.org|\bpypi\.o" + r"rg|proxy\.gol" + r"ang"
    files = [p for p in tree(root) if p.name not in ("DEVELOPERS.md", ".clang-tidy")]
    for path in files:
        if re.search(private, path.stem):
            yield f"{path.relative_to(root)}: file name"
    yield from matches(root, files, f"{private}|{machine}|{hosts}", "not for this project")


def links(root):
    """Those of documents that lead to a file of the tree."""
    for path in [p for p in tree(root) if p.suffix == ".md"]:
        for number, line in enumerate(lines(path), 1):
            for target in re.findall(r"\]\(([^)#:\s]+)(?:#[^)]*)?\)", line):
                if not (path.parent / target).exists():
                    yield f"{path.relative_to(root)}:{number}: leads nowhere: {target}; name a file that is there"


RULES = {"layers": layers, "sleeps": sleeps, "words": words, "links": links, "twins": twins}

if __name__ == "__main__":
    breaches = list(RULES[sys.argv[1]](pathlib.Path(sys.argv[2]).resolve()))
    print(*breaches, sep="\n", end="\n" if breaches else "")
    sys.exit(1 if breaches else 0)
