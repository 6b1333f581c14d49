"""Faders: the track and the knob, each of the control's size, in one image.

The knob is drawn over the track. Of its part only the first `knob_length` pixels along the travel are used. The line
on the cap marks the value: it runs from the first to the last mark of the scale.
"""

from dataclasses import dataclass, replace
from functools import partial

from canvas import Canvas, mix, rgb, side_by_side, stacked, with_alpha
from imagefile import bmp32, png
from paints import fade
from palette import AMBER, BLACK, BLUE, CHALK, GREEN, RED, WHITE
from picture import Picture
from shapes import box, frame
from style import paint

KNOB_LENGTH = 22
# The slot goes on this far beyond the cap's line at either end.
SLOT_OVERRUN = 5
# Beside a white line, so that it stays one sharp pixel; coloured lines are wider to tell their colour.
GROOVE = rgb(36, 38, 42)


@dataclass(frozen=True)
class Fader:
    """The sizes of one fader in pixels: `length` runs along the travel, `breadth` across it."""

    is_vertical: bool
    length: int
    breadth: int
    cap_margin: int
    slot_breadth: int
    knob_length: int = KNOB_LENGTH
    # Marks of the scale, as steps of the travel: a multiple of four, or 0 for a bare slot.
    scale_steps: int = 0

    @property
    def line(self):
        """The pixel of the knob that its line lies on."""
        return (self.knob_length - 1) // 2

    @property
    def travel(self):
        """How far the knob runs; a horizontal control lets it go one pixel past its own end."""
        return self.length - self.knob_length + (0 if self.is_vertical else 1)

    def canvas(self, length):
        return Canvas(self.breadth, length) if self.is_vertical else Canvas(length, self.breadth)

    def oriented(self, shape, start, near, end, far, *more):
        """`shape` (a box or a frame) from `start` to `end` along the travel and `near` to `far` across it."""
        if self.is_vertical:
            return shape(near, start, far, end, *more)
        return shape(start, near, end, far, *more)


def draw_plate(canvas):
    width, height = canvas.width, canvas.height
    canvas.fill(box(0, 0, width, height, 3), fade(0, height, rgb(20, 22, 25), rgb(88, 93, 101)))
    canvas.fill(box(1, 1, width - 1, height - 1, 2), fade(0, height, rgb(27, 29, 32), rgb(42, 45, 50)))


def draw_scale(canvas, fader):
    """Marks on both sides of the cap, the quarters of the travel longer and brighter."""
    for step in range(fader.scale_steps + 1):
        is_major = step * 4 % fader.scale_steps == 0
        at = fader.line + round(fader.travel * step / fader.scale_steps)
        inner = fader.cap_margin - 1
        outer = 2 if is_major else 3
        for near, far in ((outer, inner), (fader.breadth - inner, fader.breadth - outer)):
            mark = fader.oriented(box, at, near, at + 1, far)
            canvas.fill(mark, CHALK, opacity=0.95 if is_major else 0.5)


def draw_slot(canvas, fader):
    overrun = min(SLOT_OVERRUN, fader.line - 1)
    start, end = fader.line - overrun, fader.line + fader.travel + 1 + overrun
    near = (fader.breadth - fader.slot_breadth) // 2
    far = near + fader.slot_breadth
    top, bottom = (start, end) if fader.is_vertical else (near, far)
    canvas.fill(fader.oriented(box, start, near, end, far, 2), rgb(9, 10, 12))
    lip = fader.oriented(frame, start, near, end, far, 1, 2)
    canvas.fill(lip, fade(top, bottom, rgb(6, 7, 8), rgb(74, 78, 85)))


def track(fader):
    canvas = fader.canvas(fader.length)
    if fader.scale_steps:
        draw_plate(canvas)
        draw_scale(canvas, fader)
    draw_slot(canvas, fader)
    return canvas


def cap(fader, line, line_edge):
    """The cap on its shadow: ridges for the finger on both sides of the line."""
    canvas = fader.canvas(fader.length)
    start, end = 1, 2 * fader.line
    near, far = fader.cap_margin, fader.breadth - fader.cap_margin
    left, top, right, bottom = (near, start, far, end) if fader.is_vertical else (start, near, end, far)

    canvas.fill(box(left, top + 2, right, bottom + 1.5, 2), with_alpha(BLACK, 0.7), softness=3.0)
    canvas.fill(box(left, top, right, bottom, 2), fade(top, bottom, rgb(118, 124, 133), rgb(46, 50, 56)))
    canvas.fill(box(left + 1, top, right - 1, top + 1), rgb(190, 196, 204))
    canvas.fill(box(left + 1, bottom - 1, right - 1, bottom), rgb(22, 24, 27))
    middle = fader.line
    for groove in range(3, middle - 1, 2):
        for at in (middle - groove, middle + groove):
            dark = fader.oriented(box, at, near + 1, at + 1, far - 1)
            canvas.fill(dark, BLACK, opacity=0.42)
            light = fader.oriented(box, at + 1, near + 1, at + 2, far - 1)
            canvas.fill(light, WHITE, opacity=0.10)
    canvas.fill(fader.oriented(box, middle - 1, near, middle + 2, far), line_edge)
    canvas.fill(fader.oriented(box, middle, near, middle + 1, far), line)
    return canvas


def whole(fader, line=WHITE, line_edge=GROOVE):
    parts = (track(fader), cap(fader, line, line_edge))
    return side_by_side(*parts) if fader.is_vertical else stacked(*parts)


# These two stand on ground with a scale of its own, which shows beside the slot.
STRIP = Fader(is_vertical=True, length=101, breadth=14, cap_margin=1, slot_breadth=4)
STRIP_PAN = Fader(is_vertical=False, length=44, breadth=14, cap_margin=1, slot_breadth=4, knob_length=9)

TALL = Fader(is_vertical=True, length=200, breadth=30, cap_margin=7, slot_breadth=6, scale_steps=20)
SHORT = Fader(is_vertical=True, length=150, breadth=24, cap_margin=6, slot_breadth=4, scale_steps=16)
WIDE = Fader(is_vertical=False, length=200, breadth=30, cap_margin=7, slot_breadth=6, scale_steps=20)
NARROW = Fader(is_vertical=False, length=150, breadth=24, cap_margin=6, slot_breadth=4, scale_steps=16)

# In the style of panels, for a ground with a scale beside them.
SLIM = Fader(is_vertical=True, length=208, breadth=32, cap_margin=3, slot_breadth=4)
SLIM_WIDE = Fader(is_vertical=False, length=208, breadth=32, cap_margin=3, slot_breadth=4)

LINES = {"blue": BLUE, "amber": AMBER, "red": RED, "green": GREEN}


# The caps besides the one of 22: their length, and how far they stay from the edges of a slim fader.
CAPS = {"small": (14, 6), "large": (34, 1)}


def images():
    """The faders with their caps of 22, by name, each as what draws it from its sizes."""
    faders = {
        "FADER_vertical_30x200": TALL,
        "FADER_vertical_24x150": SHORT,
        "FADER_horizontal_200x30": WIDE,
        "FADER_horizontal_150x24": NARROW,
    }
    for name, fader in faders.items():
        yield name, fader, whole
    for name, fader in {"vertical_32x208": SLIM, "horizontal_208x32": SLIM_WIDE}.items():
        yield f"FADER_slim_{name}", fader, lambda sizes: whole(sizes, paint("text"), paint("well"))
    for name, colour in LINES.items():
        line = partial(whole, line=colour, line_edge=mix(colour, BLACK, 0.35))
        yield f"FADER_vertical_30x200_{name}", TALL, line


def with_cap(fader, length, margin):
    return replace(fader, knob_length=length, cap_margin=fader.cap_margin if fader.scale_steps else margin)


def pictures():
    for name, fader in {"Fader": STRIP, "Fader_horizontal": STRIP_PAN}.items():
        yield Picture(f"app/Controls/{name}.bmp", (whole(fader),), bmp32)
    for name, fader, draw in images():
        yield Picture(f"app/Controls/{name}.bmp", (draw(fader),), bmp32)
    for cap_name, sizes in CAPS.items():
        for name, fader, draw in images():
            yield Picture(f"app/Controls/{cap_name}/{name}.png", (draw(with_cap(fader, *sizes)),), png)
