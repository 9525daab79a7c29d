"""Each rule finds a breach that is planted in a small tree, and leaves its neighbour alone."""

import pathlib
import re
import tempfile
import unittest

import lint


def found(rule, files):
    with tempfile.TemporaryDirectory() as folder:
        root = pathlib.Path(folder)
        for name, text in files.items():
            path = root / name
            path.parent.mkdir(parents=True, exist_ok=True)
            path.write_text(text, encoding="utf-8")
        return [breach.split(" ")[0] for breach in lint.RULES[rule](root.resolve())]


class Lint(unittest.TestCase):
    def test_layers(self):
        breaches = found("layers", {
            "src/logic/video/open.cpp": '#include "contract/window.h"\n#include <vector>\n#include <QString>\n'
                                        '#include "contract/core/runtime.h"\n#include <unistd.h>\n',
            "src/contract/window.h": '#include "contract/core/forms.h"\n#include "contract/ref.h"\n',
            "src/contract/window.cpp": '#include "contract/core/forms.h"\n#include "backends/qt/peer.h"\n',
            "src/backends/qt/peer.cpp": '#include "backends/mpv/player.h"\n#include <QWidget>\n#include "peer.h"\n'
                                        '#include "contract/core/forms.h"\n',
            "src/main.cpp": '#include <QWidget>\n',
        })
        self.assertEqual(sorted(breaches), [
            "src/backends/qt/peer.cpp:1:", "src/backends/qt/peer.cpp:4:", "src/contract/window.cpp:2:",
            "src/contract/window.h:1:", *(f"src/logic/video/open.cpp:{line}:" for line in (3, 4, 5))])

    def test_sleeps(self):
        breaches = found("sleeps", {
            "src/a.cpp": "std::this_thread::sleep_for(1s);\nasleep();\nQTest::qWait(5);\nQTest::qWaitFor(done);\n",
            "run": "sleep 3\nif x; then sleep 0.1; fi\necho asleep 3\n",
            "tests/t.py": "time.sleep(1)\n",
        })
        self.assertEqual(sorted(breaches), ["run:1:", "run:2:", "src/a.cpp:1:", "src/a.cpp:3:", "tests/t.py:1:"])

    def test_words(self):
        word = "s" + "pec"
        breaches = found("words", {
            "src/a.h": f"// as the {word} says\n// a species, a {word}trum\n// see Part" + " 3.1\n",
            f"docs/{word}.md": "",
            "README.md": "cd /wo" + "rk/main\nhome/work/x\n",
            "build/x.h": f"// {word}\n",
        })
        self.assertEqual(sorted(breaches), ["README.md:1:", f"docs/{word}.md:", "src/a.h:1:", "src/a.h:3:"])

    def test_links(self):
        breaches = found("links", {
            "docs/a.md": "[b](b.md) ![c](../c.png) [x](x.md)\n[web](https://x.example/y) [d](b.md#d) [e](gone.md#e)\n",
            "docs/b.md": "", "c.png": ""})
        self.assertEqual(breaches, ["docs/a.md:1:", "docs/a.md:2:"])

    def test_twins(self):
        movie = "void Mainform::A() {\n    QTM()->Stop();\n    Beep();\n    File_Number = kMovieStep;\n}\n"
        other = "void Mainform::B() {\n    File_Number = QTM()->Position();\n}\n"
        sound = ("void Mainform::mA() {\n    const auto form = Instance<MusicForm>();\n    form->QTM()->Stop();\n"
                 "    mFile_Number = kSoundStep;\n}\n")
        sound += re.sub("(?=B|File)", "m", other).replace("QTM", "Instance<MusicForm>()->QTM")
        tree = {"src/logic/steps.h": "int kSoundStep = 1;\n", "src/logic/video/a.cpp": movie + other,
                "tests/lint/twins.diff": "A\n- Beep();\n"}
        for right, slip in [("", ""), ("Stop", "Play"), ("form->QTM", "QTM"), ("mFile_", "File_"),
                            ("kSound", "kMovie"), ("kSound", "k"), ("mA", "mNew")]:
            breaches = found("twins", {**tree, "src/logic/sound/a.cpp": sound.replace(right, slip, 1)})
            self.assertEqual(bool(breaches), right != slip, slip)


if __name__ == "__main__":
    unittest.main()
