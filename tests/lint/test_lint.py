"""Each rule finds a breach that is planted in a small tree, and leaves its neighbour alone.
That of the twins has its list to show that it sees."""

import pathlib
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


if __name__ == "__main__":
    unittest.main()
