"""What a picture module hands to make.py."""

from dataclasses import dataclass
from typing import Callable

from canvas import Canvas


@dataclass(frozen=True)
class Picture:
    """One generated file: its path below the project folder, its images, and the writer that encodes them."""

    path: str
    images: tuple[Canvas, ...]
    encode: Callable[..., bytes]

    def encoded(self):
        return self.encode(*self.images)
