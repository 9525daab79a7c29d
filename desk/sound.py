"""A sound device that takes all that it is given at once and keeps it in a file."""

BYTES_A_SECOND = 48000 * 2 * 2  # two channels of two bytes
HEADER_BYTES = 44

CONFIGURATION = """pcm.!default {{
    type plug
    slave {{
        pcm {{ type file slave.pcm null file "{file}" format wav }}
        rate 48000
        channels 2
        format S16_LE
    }}
}}
"""


class FileDevice:
    """The only one of a desk; start the program with this environment. In its box an engine could write no file."""

    environment = {"PULSE_SERVER": "unix:/nonexistent", "PIPEWIRE_REMOTE": "none", "KIROLANE_ENGINE_BOX": "off"}

    def __init__(self, desk):
        self.file = desk.folder / "heard.wav"
        (desk.home / ".asoundrc").write_text(CONFIGURATION.format(file=self.file))

    def seconds(self):
        """Of sound played so far."""
        size = self.file.stat().st_size if self.file.exists() else 0
        return max(0, size - HEADER_BYTES) / BYTES_A_SECOND
