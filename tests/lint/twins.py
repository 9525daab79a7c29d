"""The movie's methods of the console and their sound twins, side by side.

The two transports are near-copies on purpose, each with bodies of its own. What differs beyond the names stands in
twins.diff: "-" is the movie's statement, "+" the sound's. A change on one side alone shows here, and is either a
mistake or a line for that list; `twins.py ROOT` prints the list as it would have to be. Statements about what the
other does not have at all, be it the audience's window or the sound's own, are left out.
"""

import difflib
import pathlib
import re
import sys

LIST = pathlib.Path("tests/lint/twins.diff")
OURS = r"form->|Instance<MusicForm>\(\)->"  # before a control of the sound's window
ALONE = r"\b([mM]onitor|Dummy|MovieSize|TimingLabel|SizePlayers|Refresh|MusicForm_Flag|SetTitle)|^(Show|Hide)\b"
TWIN = r"m(?=k?[A-Z]|file\b|folder\b|f_)"  # before a name that has a twin
METHOD = re.compile(r"^(?:void|bool|Task) Mainform::(\w+)\([^)]*\)[^{]*\{(.*?)^\}", re.M | re.S)


def texts(root):
    """Of all files of the logic, without comments. kSoundTypes is written mkTypes."""
    for path in sorted((root / "src" / "logic").rglob("*.*")):
        text = re.sub(r"//.*|/\*.*?\*/", "", path.read_text(encoding="utf-8"))
        yield re.sub(r"\b(k[A-Za-z]*?|)Sound(?=[A-Z])", r"m\1", text)


def movie_name(name):
    return "PosTIme" if name == "PosTime" else name  # sic, on the console


def sound_names(text):
    """What is taken of the sound's window, and what has a twin for sound, in movie names."""
    return set(map(movie_name, re.findall(rf"(?:{OURS}|\b{TWIN})(\w+)", text)))


def in_movie_names(body, names):
    """A sound method's body as its twin would be written: the window's controls as the console's own, no m. What
    is the movie's, though there is one for sound, is told apart."""
    def translated(match):
        ours, twin, name = match.groups()
        return movie_name(name) if ours or twin or name not in names else f"movie's {name}"
    body = body.replace("const auto form = Instance<MusicForm>();", "")
    return re.sub(rf"(?<![\w.>\"])({OURS})?({TWIN})?([A-Za-z]\w*)\b(?!<)", translated, body)


def statements(body):
    text = " ".join(body.split())
    parts = [part.strip() for part in re.findall(r"[^;{}]+[;{]?|\}", text)]
    return [part for part in parts if part and not re.search(ALONE, part)]


def differences(root):
    """A block of lines for each pair that differs, and a line for each sound method without a twin."""
    text = "\n".join(texts(root))
    bodies = dict(METHOD.findall(text))
    names = sound_names(text)
    for sound in sorted(name for name in bodies if re.match(r"m[A-Z]", name)):
        movie = sound[1:]
        if movie not in bodies:
            yield f"{sound}: no twin"
            continue
        lines = difflib.unified_diff(statements(bodies[movie].replace("kMovie", "k")),
                                     statements(in_movie_names(bodies[sound], names)), n=0,
                                     lineterm="")
        differing = [f"{line[0]} {line[1:]}" for line in list(lines)[2:] if not line.startswith("@")]
        if differing:
            yield "\n".join([movie, *differing])


def twins(root):
    blocks = {block.split("\n", 1)[0]: block for block in differences(root)}
    wanted = {block.split("\n", 1)[0]: block for block in (root / LIST).read_text(encoding="utf-8").split("\n\n")}
    wanted = {name: block.rstrip("\n") for name, block in wanted.items()}
    for name in sorted(blocks.keys() | wanted.keys()):
        if blocks.get(name) != wanted.get(name):
            yield f"{LIST}: {name}: not as listed, but:\n{blocks.get(name, '(alike)')}"


if __name__ == "__main__":
    print(*differences(pathlib.Path(sys.argv[1])), sep="\n\n")
