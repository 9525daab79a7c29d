"""Clips whose pictures carry their own number, and reading that number off the screen.

A picture is two rows of 16 blocks, white for a set bit: 4 bits of clip, 12 of frame, the lowest first. The lower
row is the upper one turned over, so that a torn or foreign picture is told apart.
"""

import subprocess

COLUMNS = 16
CLIP_BITS = 4
FRAMES_PER_SECOND = 30


def make_movie(path, clip, seconds=20, tone=440, rate=FRAMES_PER_SECOND):
    bit = f"mod(floor(({clip}+{1 << CLIP_BITS}*N)/pow(2,X)),2)"
    make(path,
         "-f", "lavfi", "-i", f"color=s={COLUMNS}x2:r={rate},format=gray,"
                              f"geq=lum='if(mod({bit}+Y,2),255,0)',scale=320:240:flags=neighbor",
         "-f", "lavfi", "-i", f"sine=frequency={tone}:sample_rate=48000",
         "-c:v", "libx264", "-preset", "veryfast", "-pix_fmt", "yuv420p", "-g", str(rate), "-c:a", "aac",
         "-t", str(seconds))


def make(path, *arguments):
    """A file is there under its name only when it is whole."""
    if path.exists():
        return
    part = path.with_name("part-" + path.name)
    subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", *arguments, str(part)], check=True)
    part.rename(path)


def read_code(picture, area, upper_seen=True):
    """(clip, frame) as shown in that area of the screen, None where no such picture stands. Without its upper half
    no other picture is told apart."""
    left, top, width, height = area
    value = 0
    for column in range(COLUMNS):
        x = left + (2 * column + 1) * width // (2 * COLUMNS)
        upper, lower = (sum(picture.pixel(x, top + part * height // 4)) > 384 for part in (1, 3))
        if upper_seen and upper == lower:
            return None
        value |= (not lower) << column
    return value & ((1 << CLIP_BITS) - 1), value >> CLIP_BITS


if __name__ == "__main__":
    import pathlib
    import sys

    folder = pathlib.Path(sys.argv[1])
    folder.mkdir(parents=True, exist_ok=True)
    for number in (1, 2, 3):
        make_movie(folder / f"{number} 番.mp4", number, tone=200 * number)
    make_movie(folder / "0 長.mp4", 4, seconds=150, rate=10)
    make(folder / "音.wav", "-f", "lavfi", "-i", "sine=frequency=440:sample_rate=48000", "-t", "20")
    make_movie(folder / "長編.mp4", 5, seconds=900, rate=2)
    samples = folder / "samples"
    samples.mkdir(exist_ok=True)
    subprocess.run(["bash", pathlib.Path(__file__).parents[1] / "packaging/samples.sh", samples], check=True)
