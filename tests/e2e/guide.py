"""guide.py PROGRAM CLIPS FOLDER: runs what docs/guide.md tells and saves the guide's pictures in FOLDER.

CLIPS is the folder that `python3 -m desk.clips` fills.
"""

import os
import pathlib
import sys
import tempfile
import unittest

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parents[2]))  # where desk/ lies

if __name__ == "__main__":
    program, clips, folder = (pathlib.Path(argument).resolve() for argument in sys.argv[1:])
    with tempfile.TemporaryDirectory(prefix="kirolane-") as shots:
        os.environ.update(KIROLANE_PROGRAM=str(program), KIROLANE_CLIPS=str(clips), KIROLANE_SHOTS=shots,
                          KIROLANE_LOGO="", KIROLANE_GUIDE=str(folder))
        unittest.main("test_evening", argv=sys.argv[:1])
