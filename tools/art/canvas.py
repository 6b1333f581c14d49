"""The drawing surface: anti-aliased filling of signed-distance shapes with alpha compositing."""

from contextlib import contextmanager
from math import floor


def rgb(red, green, blue, alpha=1.0):
    """A colour from components 0..255 and an alpha 0..1."""
    return (red / 255.0, green / 255.0, blue / 255.0, alpha)


def mix(first, second, amount):
    """The colour `amount` (0..1) of the way from `first` to `second`."""
    return tuple(a + (b - a) * amount for a, b in zip(first, second))


def with_alpha(colour, alpha):
    return colour[:3] + (alpha,)


def clamp(value, low=0.0, high=1.0):
    return low if value < low else high if value > high else value


def edge_coverage(distance, softness):
    """Part of a pixel that a shape covers, from the distance of the pixel's centre to the shape's edge.

    An edge of one pixel is a straight ramp, which is exact for edges along the pixel grid. Wider ones are
    shadows and glows, and roll off smoothly at both ends.
    """
    covered = clamp(0.5 - distance / softness)
    return covered if softness <= 1.0 else covered * covered * (3.0 - 2.0 * covered)


# Pixels for each unit of the coordinates that pictures are drawn in.
_scale = 1.0


@contextmanager
def drawn_at(scale):
    """All that is drawn within has `scale` pixels for each unit, with edges that are as sharp as ever."""
    global _scale
    before, _scale = _scale, scale
    try:
        yield
    finally:
        _scale = before


def scale():
    return _scale


def to_pixels(length):
    return floor(length * _scale + 0.5)


class Canvas:
    """Pixels as premultiplied red, green, blue, alpha in 0..1, at first all transparent.

    Coordinates are in units from the upper left corner, y downwards. A unit is a pixel, unless larger pictures are
    drawn; pixel centres lie at halves.
    """

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self.columns = to_pixels(width)
        self.lines = to_pixels(height)
        self._pixels = [(0.0, 0.0, 0.0, 0.0)] * (self.columns * self.lines)

    def fill(self, shape, paint, softness=1.0, opacity=1.0):
        """Composites `paint` over the pixels inside `shape`.

        `shape` is a function (x, y) -> signed distance in pixels, negative inside. `paint` is a colour or a
        function (x, y) -> colour. `softness` is the width of the edge in pixels.
        """
        paint_at = paint if callable(paint) else lambda x, y: paint
        edge = softness * _scale if softness > 1.0 else softness
        for row in range(self.lines):
            for column in range(self.columns):
                x, y = (column + 0.5) / _scale, (row + 0.5) / _scale
                coverage = edge_coverage(shape(x, y) * _scale, edge) * opacity
                if coverage > 0.0:
                    self._blend(row * self.columns + column, paint_at(x, y), coverage)

    def draw(self, image, left, top):
        """Composites another canvas with its upper left corner at the position (left, top)."""
        self._paste(image, to_pixels(left), to_pixels(top))

    def _paste(self, image, left, top):
        for row in range(max(0, -top), min(image.lines, self.lines - top)):
            for column in range(max(0, -left), min(image.columns, self.columns - left)):
                source = image._pixels[row * image.columns + column]
                at = (top + row) * self.columns + left + column
                self._pixels[at] = _over(source, self._pixels[at])

    def in_pixels(self):
        """The same with a unit for each pixel."""
        with drawn_at(1.0):
            copy = Canvas(self.columns, self.lines)
        copy._pixels = self._pixels
        return copy

    def flattened(self, background):
        """An opaque copy over one colour."""
        copy = Canvas(self.width, self.height)
        below = background[:3] + (1.0,)
        copy._pixels = [_over(pixel, below) for pixel in self._pixels]
        return copy

    def keyed(self, key, background):
        """An opaque copy for drawing with a colour key: `key` where nothing is drawn, soft edges over `background`."""
        copy = self.flattened(background)
        hole = key[:3] + (1.0,)
        copy._pixels = [new if old[3] >= 0.1 else hole for new, old in zip(copy._pixels, self._pixels)]
        return copy

    def enlarged(self, scale):
        """A copy with every pixel repeated `scale` times in both directions."""
        copy = Canvas(self.width * scale, self.height * scale)
        copy._pixels = []
        for row in range(self.height):
            line = self._pixels[row * self.width : (row + 1) * self.width]
            wide = [pixel for pixel in line for _ in range(scale)]
            copy._pixels.extend(wide * scale)
        return copy

    def is_opaque(self):
        return all(round(pixel[3] * 255.0) == 255 for pixel in self._pixels)

    def rows(self):
        """The rows from top to bottom, as lists of (red, green, blue, alpha) 0..255 with straight alpha."""
        for row in range(self.height):
            yield [_to_bytes(pixel) for pixel in self._pixels[row * self.width : (row + 1) * self.width]]

    def _blend(self, at, colour, coverage):
        alpha = colour[3] * coverage
        source = (colour[0] * alpha, colour[1] * alpha, colour[2] * alpha, alpha)
        self._pixels[at] = _over(source, self._pixels[at])


def side_by_side(*images):
    """The images in one, from left to right."""
    with drawn_at(1.0):
        strip = Canvas(sum(image.columns for image in images), max(image.lines for image in images))
    left = 0
    for image in images:
        strip._paste(image, left, 0)
        left += image.columns
    return strip


def stacked(*images):
    """The images in one, from top to bottom."""
    with drawn_at(1.0):
        strip = Canvas(max(image.columns for image in images), sum(image.lines for image in images))
    top = 0
    for image in images:
        strip._paste(image, 0, top)
        top += image.lines
    return strip


def _over(source, below):
    rest = 1.0 - source[3]
    return tuple(s + b * rest for s, b in zip(source, below))


def _to_bytes(pixel):
    alpha = round(clamp(pixel[3]) * 255.0)
    if alpha == 0:
        return (0, 0, 0, 0)
    straight = (round(clamp(channel / pixel[3]) * 255.0) for channel in pixel[:3])
    return (*straight, alpha)
