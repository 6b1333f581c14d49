"""The drawing surface: anti-aliased filling of signed-distance shapes with alpha compositing."""


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


class Canvas:
    """Pixels as premultiplied red, green, blue, alpha in 0..1, at first all transparent.

    Coordinates are in pixels from the upper left corner, y downwards; pixel centres lie at halves.
    """

    def __init__(self, width, height):
        self.width = width
        self.height = height
        self._pixels = [(0.0, 0.0, 0.0, 0.0)] * (width * height)

    def fill(self, shape, paint, softness=1.0, opacity=1.0):
        """Composites `paint` over the pixels inside `shape`.

        `shape` is a function (x, y) -> signed distance in pixels, negative inside. `paint` is a colour or a
        function (x, y) -> colour. `softness` is the width of the edge in pixels.
        """
        paint_at = paint if callable(paint) else lambda x, y: paint
        for row in range(self.height):
            for column in range(self.width):
                x, y = column + 0.5, row + 0.5
                coverage = edge_coverage(shape(x, y), softness) * opacity
                if coverage > 0.0:
                    self._blend(row * self.width + column, paint_at(x, y), coverage)

    def draw(self, image, left, top):
        """Composites another canvas with its upper left corner at the whole-pixel position (left, top)."""
        for row in range(max(0, -top), min(image.height, self.height - top)):
            for column in range(max(0, -left), min(image.width, self.width - left)):
                source = image._pixels[row * image.width + column]
                at = (top + row) * self.width + left + column
                self._pixels[at] = _over(source, self._pixels[at])

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
    strip = Canvas(sum(image.width for image in images), max(image.height for image in images))
    left = 0
    for image in images:
        strip.draw(image, left, 0)
        left += image.width
    return strip


def stacked(*images):
    """The images in one, from top to bottom."""
    strip = Canvas(max(image.width for image in images), sum(image.height for image in images))
    top = 0
    for image in images:
        strip.draw(image, 0, top)
        top += image.height
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
