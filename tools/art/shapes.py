"""Shapes as functions (x, y) -> signed distance in pixels to the edge, negative inside.

Angles are in degrees, counter-clockwise from three o'clock, as the controls measure them.
"""

from math import atan2, cos, degrees, hypot, radians, sin

from canvas import scale, to_pixels


def point_at(cx, cy, radius, angle):
    """The point at `angle` on a circle."""
    return (cx + cos(radians(angle)) * radius, cy - sin(radians(angle)) * radius)


def everywhere(x, y):
    return -1e9


def circle(cx, cy, radius):
    return lambda x, y: hypot(x - cx, y - cy) - radius


def ring(cx, cy, radius, width):
    return lambda x, y: abs(hypot(x - cx, y - cy) - radius) - width / 2


def _sharp(edge):
    """What lies on a whole unit lies on a whole pixel of a larger picture, too."""
    return to_pixels(edge) / scale() if edge == int(edge) else edge


def box(left, top, right, bottom, radius=0.0):
    """A rectangle, with round corners when `radius` is not 0."""
    left, top, right, bottom = map(_sharp, (left, top, right, bottom))
    cx, cy = (left + right) / 2, (top + bottom) / 2
    half_width, half_height = (right - left) / 2 - radius, (bottom - top) / 2 - radius

    def distance(x, y):
        dx, dy = abs(x - cx) - half_width, abs(y - cy) - half_height
        return hypot(max(dx, 0.0), max(dy, 0.0)) + min(max(dx, dy), 0.0) - radius

    return distance


def frame(left, top, right, bottom, width=1.0, radius=0.0):
    """The outline of a rectangle, drawn inwards."""
    inner_radius = max(radius - width, 0.0)
    inner = box(left + width, top + width, right - width, bottom - width, inner_radius)
    return subtract(box(left, top, right, bottom, radius), inner)


def segment(x0, y0, x1, y1, width):
    """A line with round ends."""
    dx, dy = x1 - x0, y1 - y0
    length_squared = dx * dx + dy * dy

    def distance(x, y):
        along = 0.0
        if length_squared > 0.0:
            along = min(max(((x - x0) * dx + (y - y0) * dy) / length_squared, 0.0), 1.0)
        return hypot(x - x0 - along * dx, y - y0 - along * dy) - width / 2

    return distance


def bar(x0, y0, x1, y1, width):
    """A line with square ends at its two points."""
    length = hypot(x1 - x0, y1 - y0)
    ux, uy = (x1 - x0) / length, (y1 - y0) / length
    upright = box(0.0, -width / 2, length, width / 2)
    return lambda x, y: upright((x - x0) * ux + (y - y0) * uy, (y - y0) * ux - (x - x0) * uy)


def polyline(points, width):
    """Joined lines with round ends and joints."""
    return union(*(segment(*a, *b, width) for a, b in zip(points, points[1:])))


def polygon(*points):
    edges = list(zip(points, points[1:] + points[:1]))
    outline = polyline(points + points[:1], 0.0)

    def distance(x, y):
        inside = False
        for (x0, y0), (x1, y1) in edges:
            if (y0 > y) != (y1 > y) and x < x0 + (y - y0) * (x1 - x0) / (y1 - y0):
                inside = not inside
        return -outline(x, y) if inside else outline(x, y)

    return distance


def arc(cx, cy, radius, start, end, width):
    """Part of a ring from angle `start` counter-clockwise to `end`, with round ends."""
    start_cap = circle(*point_at(cx, cy, radius, start), width / 2)
    end_cap = circle(*point_at(cx, cy, radius, end), width / 2)
    whole = ring(cx, cy, radius, width)

    def distance(x, y):
        angle = degrees(atan2(cy - y, x - cx))
        if (angle - start) % 360.0 <= end - start:
            return whole(x, y)
        return min(start_cap(x, y), end_cap(x, y))

    return distance


def below(curve):
    """Everything under a curve, a function x -> y on the canvas."""
    return lambda x, y: curve(x) - y


def union(*shapes):
    return lambda x, y: min(shape(x, y) for shape in shapes)


def intersect(*shapes):
    return lambda x, y: max(shape(x, y) for shape in shapes)


def subtract(shape, *holes):
    return lambda x, y: max(shape(x, y), *(-hole(x, y) for hole in holes))


def expand(shape, by):
    return lambda x, y: shape(x, y) - by


def place(shape, left, top, scale=1.0):
    """The shape enlarged by `scale`, its origin moved to (left, top)."""
    return lambda x, y: shape((x - left) / scale, (y - top) / scale) * scale


def turn(shape, cx, cy, angle):
    """The shape turned counter-clockwise by `angle` about a point."""
    c, s = cos(radians(angle)), sin(radians(angle))

    def distance(x, y):
        dx, dy = x - cx, y - cy
        return shape(cx + dx * c - dy * s, cy + dx * s + dy * c)

    return distance
