"""What is heard: the sound device is a file of the sound system's."""

import os
import struct

from case import CLIP_NAMES, Case, unittest

RATE = 48000
CHANNELS = 2
SAMPLE_BYTES = 2
HEADER_BYTES = 44

# A device that takes all that it is given at once and keeps it.
DEVICE = """pcm.!default {{
    type plug
    slave {{
        pcm {{ type file slave.pcm null file "{file}" format wav }}
        rate %d
        channels %d
        format S16_LE
    }}
}}
""" % (RATE, CHANNELS)


def tone(samples):
    """(frequency, amplitude) of a steady tone, by its crossings of zero and its largest sample"""
    crossings = sum(a < 0 <= b for a, b in zip(samples, samples[1:]))
    return crossings * RATE / len(samples), max(map(abs, samples))


class Sound(Case):
    def test_monitor_alone_is_heard(self):
        heard = self.desk.folder / "heard.wav"
        (self.desk.home / ".asoundrc").write_text(DEVICE.format(file=heard))
        show = self.start(environment={"PULSE_SERVER": "unix:/nonexistent", "PIPEWIRE_REMOTE": "none"})
        show.until_rows(CLIP_NAMES)
        self.assertFalse(heard.exists(), "no sound is played before a movie")
        show.click_row(1, times=2)
        show.until_playing(2, frame=30)
        descriptors = f"/proc/{show.program.process.pid}/fd"
        opened = [os.readlink(f"{descriptors}/{name}") for name in os.listdir(descriptors)]
        self.assertEqual(opened.count(str(heard)), 1, "one player, and one only, has the sound device")
        wanted = HEADER_BYTES + RATE * CHANNELS * SAMPLE_BYTES
        show.until(lambda: heard.stat().st_size >= wanted, "a second of sound")
        second = heard.read_bytes()[HEADER_BYTES:wanted]
        left = struct.unpack(f"<{RATE * CHANNELS}h", second)[::CHANNELS]
        frequency, amplitude = tone(left[RATE // 2:])
        self.assertAlmostEqual(frequency, 400, delta=4)
        self.assertGreater(amplitude, 500)


if __name__ == "__main__":
    unittest.main()
