"""The table of style.txt: the colours of panels, and the contrast between two."""

from dataclasses import dataclass
from pathlib import Path

from canvas import rgb

FILE = Path(__file__).with_name("style.txt")


@dataclass(frozen=True)
class Colour:
    name: str
    digits: str  # rrggbb
    kind: str

    @property
    def bytes(self):
        return tuple(int(self.digits[at : at + 2], 16) for at in (0, 2, 4))

    @property
    def paint(self):
        return rgb(*self.bytes)

    @property
    def luminance(self):
        """Of the red, green and blue light, as contrasts are computed from: 0 to 1."""
        light = [value / 255 for value in self.bytes]
        linear = [value / 12.92 if value <= 0.03928 else ((value + 0.055) / 1.055) ** 2.4 for value in light]
        return 0.2126 * linear[0] + 0.7152 * linear[1] + 0.0722 * linear[2]


def _read():
    rows = (line.split(maxsplit=3) for line in FILE.read_text().splitlines())
    return {row[0]: Colour(*row[:3]) for row in rows if row and row[0] != "#"}


COLOURS = _read()


def paint(name):
    return COLOURS[name].paint


def contrast(one, other):
    """From 1 for the same to 21 for black and white."""
    light, dark = sorted((one.luminance, other.luminance), reverse=True)
    return (light + 0.05) / (dark + 0.05)
