"""What is heard: the sound device is a file of the sound system's."""

import os
import struct

from case import CLIP_NAMES, Case, unittest
from rig.sound import CHANNELS, HEADER_BYTES, RATE, SAMPLE_BYTES, FileDevice


def tone(samples):
    """(frequency, amplitude) of a steady tone, by its crossings of zero and its largest sample"""
    crossings = sum(a < 0 <= b for a, b in zip(samples, samples[1:]))
    return crossings * RATE / len(samples), max(map(abs, samples))


class Sound(Case):
    def test_monitor_alone_is_heard(self):
        device = FileDevice(self.desk)
        show = self.start(environment=device.environment)
        show.until_rows(CLIP_NAMES)
        self.assertFalse(device.file.exists(), "no sound is played before a movie")
        show.click_row(1, times=2)
        show.until_playing(2, frame=30)
        descriptors = f"/proc/{show.program.process.pid}/fd"
        opened = [os.readlink(f"{descriptors}/{name}") for name in os.listdir(descriptors)]
        self.assertEqual(opened.count(str(device.file)), 1, "one player, and one only, has the sound device")
        show.until(lambda: device.seconds() >= 1, "a second of sound")
        second = device.file.read_bytes()[HEADER_BYTES:HEADER_BYTES + RATE * CHANNELS * SAMPLE_BYTES]
        left = struct.unpack(f"<{RATE * CHANNELS}h", second)[::CHANNELS]
        frequency, amplitude = tone(left[RATE // 2:])
        self.assertAlmostEqual(frequency, 400, delta=4)
        self.assertGreater(amplitude, 500)


if __name__ == "__main__":
    unittest.main()
