"""What a picture module hands to make.py."""

from dataclasses import dataclass
from typing import Callable

from canvas import Canvas
from imagefile import bmp32


@dataclass(frozen=True)
class Picture:
    """One generated file: its path below the project folder, its images, and the writer that encodes them."""

    path: str
    images: tuple[Canvas, ...]
    encode: Callable[..., bytes]

    def encoded(self):
        return self.encode(*self.images)


def lamp_pictures(prefix, draw, sizes, lamps):
    """A control's picture in each size with each of the named lamps, drawn by `draw(width, height, lamp)`."""
    for width, height in sizes:
        for name, lamp in lamps.items():
            path = f"app/Controls/{prefix}_{name}_{width}x{height}.bmp"
            yield Picture(path, (draw(width, height, lamp),), bmp32)
