"""The cursor shown while a knob or fader is dragged: a closed hand between arrows for all four directions."""

from canvas import Canvas, rgb
from imagefile import cur
from palette import WHITE
from picture import Picture
from shapes import box, expand, polygon, segment, turn, union

SIZE = 32
HOT_SPOT = (16, 16)
CENTRE = 16.5  # of the hot spot's pixel, so that the picture is the same on all sides of it
OUTLINE = rgb(18, 20, 24)


def _hand():
    """Four folded fingers, the palm, the heel of the hand and the thumb."""
    fingers = [box(11 + 3 * index, top, 13 + 3 * index, 18, 0.8) for index, top in enumerate((11, 10, 10, 11))]
    palm = box(11, 15, 22, 22, 3)
    heel = box(13, 18, 21, 24, 1)
    thumb = segment(10.8, 16, 13, 19, 3)
    return union(*fingers, palm, heel, thumb)


def _arrows():
    tip = polygon((CENTRE, 1.5), (CENTRE + 4, 6), (CENTRE - 4, 6))
    return union(*(turn(tip, CENTRE, CENTRE, angle) for angle in (0, 90, 180, 270)))


def drag_cursor():
    canvas = Canvas(SIZE, SIZE)
    hand, arrows = _hand(), _arrows()
    canvas.fill(expand(union(hand, arrows), 1.0), OUTLINE)
    canvas.fill(arrows, WHITE)
    canvas.fill(hand, WHITE)
    canvas.fill(segment(12.5, 16.5, 14.5, 19.5, 1), OUTLINE, opacity=0.8)
    return canvas


def pictures():
    yield Picture("Controls/resources/drag.cur", (drag_cursor(),), lambda image: cur(image, HOT_SPOT))
