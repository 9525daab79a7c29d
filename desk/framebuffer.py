"""The virtual screen's memory, which the X server keeps in a file: read without asking anyone."""

import mmap
import struct
import zlib


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
        at = self._start + y * self._row_bytes + x * 4
        blue, green, red = self._memory[at:at + 3]
        return red, green, blue

    def row(self, x, y, width):
        """The bytes red, green, blue of a stretch of one row."""
        at = self._start + y * self._row_bytes + x * 4
        source = self._memory[at:at + width * 4]
        pixels = bytearray(width * 3)
        pixels[0::3], pixels[1::3], pixels[2::3] = source[2::4], source[1::4], source[0::4]
        return bytes(pixels)

    def area(self, x, y, width, height):
        return b"".join(self.row(x, y + line, width) for line in range(height))

    def few_pixels(self, x, y, width, height):
        """Enough to tell one picture from the next."""
        return tuple(self.pixel(x + column * width // 32, y + row * height // 16)
                     for column in range(1, 32) for row in range(1, 16))

    def save_png(self, path, x=0, y=0, width=None, height=None):
        width = width or self.width
        height = height or self.height
        rows = b"".join(b"\0" + self.row(x, y + line, width) for line in range(height))

        def chunk(kind, data):
            return struct.pack(">I", len(data)) + kind + data + struct.pack(">I", zlib.crc32(kind + data))

        with open(path, "wb") as file:
            file.write(b"\x89PNG\r\n\x1a\n")
            file.write(chunk(b"IHDR", struct.pack(">IIBBBBB", width, height, 8, 2, 0, 0, 0)))
            file.write(chunk(b"IDAT", zlib.compress(rows, 6)))
            file.write(chunk(b"IEND", b""))
