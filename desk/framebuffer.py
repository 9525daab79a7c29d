"""The virtual screen's memory, which the X server keeps in a file: read without asking anyone."""

import mmap
import struct
import subprocess


class FrameBuffer:
    def __init__(self, path):
        with open(path, "rb") as file:
            self._memory = mmap.mmap(file.fileno(), 0, access=mmap.ACCESS_READ)
        # An X window dump: big-endian words, the first its length; then the colour map; then rows of pixels.
        words = struct.unpack(">25I", self._memory[:100])
        self.width, self.height = words[4], words[5]
        self._row_bytes = words[12]
        self._start = words[0] + words[19] * 12
        if words[11] != 32 or words[7] != 0:
            raise RuntimeError("the screen is not kept as blue, green, red and a spare byte")

    def pixel(self, x, y):
        """(red, green, blue)"""
        return tuple(self.area(x, y, 1, 1))

    def area(self, x, y, width, height):
        """The bytes red, green, blue, row by row."""
        starts = (self._start + (y + line) * self._row_bytes + x * 4 for line in range(height))
        source = b"".join(self._memory[at:at + width * 4] for at in starts)
        pixels = bytearray(width * height * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = source[2::4], source[1::4], source[0::4]
        return bytes(pixels)

    def save_png(self, path, x=0, y=0, width=None, height=None):
        width = width or self.width
        height = height or self.height
        subprocess.run(["ffmpeg", "-nostdin", "-v", "error", "-y", "-f", "rawvideo", "-pix_fmt", "rgb24", "-s",
                        f"{width}x{height}", "-i", "-", "-frames:v", "1", path], input=self.area(x, y, width, height),
                       check=True)
