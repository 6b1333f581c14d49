"""Knob faces. The program paints the pointer itself: a dot of 5 x 5 pixels that runs at radius 14."""

from dataclasses import dataclass, replace

from canvas import Canvas, rgb, with_alpha
from imagefile import bmp32
from paints import fade, lit_from, spun
from palette import AMBER, BLACK, BLUE, WHITE
from picture import Picture
from shapes import bar, circle, point_at, ring

SIZE = 47
CENTRE = SIZE / 2

# The dot is placed on whole pixels and so reaches from radius 10.9 to 17.1. Between these two radii the face keeps
# an even dark tone, on which the dot stands out; only the cap's shadow falls there.
TRACK_INNER = 10.9
TRACK_OUTER = 17.4

# The dot's sweep, clockwise from the minimum to the maximum.
MINIMUM_ANGLE = 225.0
SWEEP = 270.0
TICKS = 21


@dataclass(frozen=True)
class Finish:
    """The metal and print colours of one face; pairs are lit and shaded ends of a vertical gradient."""

    plate: tuple
    body: tuple
    track: tuple
    cap: tuple
    cap_edge: tuple
    sheen: tuple
    tick: tuple


ANODISED = Finish(
    plate=(rgb(27, 29, 32), rgb(42, 45, 50)),
    body=(rgb(104, 109, 117), rgb(30, 32, 36)),
    track=(rgb(19, 20, 23), rgb(35, 37, 42)),
    cap=(rgb(82, 87, 95), rgb(42, 45, 50)),
    cap_edge=(rgb(136, 142, 151), rgb(24, 26, 29)),
    sheen=rgb(255, 255, 255, 0.10),
    tick=rgb(206, 211, 218),
)
BLUE_CAP = replace(
    ANODISED,
    cap=(rgb(52, 128, 214), rgb(16, 62, 128)),
    cap_edge=(rgb(150, 206, 255), rgb(9, 34, 74)),
    sheen=rgb(190, 224, 255, 0.22),
    tick=BLUE,
)
AMBER_CAP = replace(
    ANODISED,
    cap=(rgb(240, 164, 44), rgb(158, 88, 10)),
    cap_edge=(rgb(255, 222, 150), rgb(92, 48, 4)),
    sheen=rgb(255, 240, 200, 0.24),
    tick=AMBER,
)
SILVER = Finish(
    plate=(rgb(158, 162, 168), rgb(196, 200, 205)),
    body=(rgb(238, 240, 243), rgb(122, 127, 134)),
    track=(rgb(44, 46, 50), rgb(66, 69, 75)),
    cap=(rgb(226, 229, 233), rgb(158, 163, 170)),
    cap_edge=(rgb(255, 255, 255), rgb(96, 100, 107)),
    sheen=rgb(255, 255, 255, 0.55),
    tick=rgb(24, 27, 32),
)


def draw_scale(canvas, finish):
    """The dished plate below the knob with its fine radial ticks, longer at every second step."""
    lip = lit_from(CENTRE, CENTRE, 270, 100, with_alpha(WHITE, 0.22))
    canvas.fill(circle(CENTRE, CENTRE, 23.4), fade(0.0, SIZE, *finish.plate))
    canvas.fill(ring(CENTRE, CENTRE, 23.0, 0.8), lip)
    canvas.fill(ring(CENTRE, CENTRE, 23.0, 0.8), lit_from(CENTRE, CENTRE, 90, 110, with_alpha(BLACK, 0.45)))
    for index in range(TICKS):
        angle = MINIMUM_ANGLE - SWEEP * index / (TICKS - 1)
        is_major = index % 2 == 0
        inner = point_at(CENTRE, CENTRE, 20.2, angle)
        outer = point_at(CENTRE, CENTRE, 22.6 if is_major else 21.4, angle)
        canvas.fill(bar(*inner, *outer, 1.0), finish.tick, opacity=0.95 if is_major else 0.55)


def draw_body(canvas, finish):
    """The turned body with its shadow on the panel, and the even track that the dot runs in."""
    canvas.fill(circle(CENTRE, CENTRE + 1.4, 18.2), rgb(0, 0, 0, 0.62), softness=7.0)
    canvas.fill(circle(CENTRE, CENTRE + 0.5, 18.9), rgb(0, 0, 0, 0.55), softness=1.6)
    canvas.fill(circle(CENTRE, CENTRE, 18.6), fade(4.9, 42.1, *finish.body))
    canvas.fill(ring(CENTRE, CENTRE, 18.2, 0.8), lit_from(CENTRE, CENTRE, 90, 80, with_alpha(WHITE, 0.55)))
    canvas.fill(circle(CENTRE, CENTRE, TRACK_OUTER), fade(6.1, 40.9, *finish.track))


def draw_cap(canvas, finish):
    """The raised cap in the middle: a bright turned edge around a flat face with the sheen of the lathe."""
    canvas.fill(circle(CENTRE, CENTRE + 0.9, 10.4), with_alpha(BLACK, 0.5), softness=2.6)
    canvas.fill(circle(CENTRE, CENTRE, TRACK_INNER - 0.3), fade(12.9, 34.1, *finish.cap_edge))
    face = circle(CENTRE, CENTRE, 9.5)
    canvas.fill(face, fade(14.0, 33.0, *finish.cap))
    canvas.fill(face, spun(CENTRE, CENTRE, finish.sheen, lobes=2, turned=35.0))


def knob_face(finish):
    canvas = Canvas(SIZE, SIZE)
    draw_scale(canvas, finish)
    draw_body(canvas, finish)
    draw_cap(canvas, finish)
    return canvas


def pictures():
    finishes = {"Knob": ANODISED, "KNOB_blue": BLUE_CAP, "KNOB_amber": AMBER_CAP, "KNOB_silver": SILVER}
    for name, finish in finishes.items():
        yield Picture(f"app/Controls/{name}.bmp", (knob_face(finish),), bmp32)
