"""Grounds of whole panels in the style of panels: raised plates for groups, and sunk places in them."""

from dataclasses import dataclass

from canvas import Canvas, mix, with_alpha
from imagefile import png
from paints import fade
from palette import BLACK
from picture import Picture
from shapes import box, everywhere
from style import paint

RADIUS = 4
SHADOW = 4
TITLE_RULE = 28  # below the upper edge of a group


@dataclass(frozen=True)
class Ground:
    """Sizes in pixels; groups and wells as (left, top, right, bottom)."""

    width: int
    height: int
    groups: tuple
    wells: tuple = ()


def raised(width, height):
    """A plate on its shadow, which takes up the canvas beyond it; lit from above left."""
    canvas = Canvas(width + 2 * SHADOW, height + 2 * SHADOW)
    left, top, right, bottom = SHADOW, SHADOW, SHADOW + width, SHADOW + height
    canvas.fill(box(left + 1, top + 2, right + 1, bottom + 2, RADIUS), with_alpha(BLACK, 0.55), softness=4.0)
    plate, text = paint("plate"), paint("text")
    canvas.fill(box(left, top, right, bottom, RADIUS), mix(plate, BLACK, 0.45))
    canvas.fill(box(left, top, right - 1, bottom - 1, RADIUS), mix(plate, text, 0.16))
    inside = fade(top, bottom, mix(plate, text, 0.03), plate)
    canvas.fill(box(left + 1, top + 1, right - 1, bottom - 1, RADIUS - 1), inside)
    return canvas


def rule(width):
    """A line cut into a plate."""
    canvas = Canvas(width, 2)
    canvas.fill(box(0, 0, width, 1), mix(paint("plate"), BLACK, 0.4))
    canvas.fill(box(0, 1, width, 2), mix(paint("plate"), paint("text"), 0.1))
    return canvas


def sunk(width, height):
    """The rim of a well, one pixel wide, and its ground."""
    canvas = Canvas(width + 2, height + 2)
    canvas.fill(box(0, 0, width + 2, height + 2, 2), mix(paint("plate"), paint("text"), 0.16))
    canvas.fill(box(0, 0, width + 1, height + 1, 2), mix(paint("well"), BLACK, 0.6))
    canvas.fill(box(1, 1, width + 1, height + 1, 1), paint("well"))
    return canvas


def picture_of(ground):
    canvas = Canvas(ground.width, ground.height)
    canvas.fill(everywhere, paint("ground"))
    for left, top, right, bottom in ground.groups:
        canvas.draw(raised(right - left, bottom - top), left - SHADOW, top - SHADOW)
        canvas.draw(rule(right - left - 16), left + 8, top + TITLE_RULE)
    for left, top, right, bottom in ground.wells:
        canvas.draw(sunk(right - left, bottom - top), left - 1, top - 1)
    return canvas


CONSOLE = Ground(
    1024,
    640,
    groups=(
        *((left, 16, left + 104, 360) for left in range(16, 912, 112)),
        (912, 16, 1008, 360),
        (16, 376, 560, 624),
        (576, 376, 1008, 624),
    ),
    wells=(
        *((left + 24, 20, left + 96, 40) for left in range(16, 912, 112)),
        *((left + 8, 52, left + 96, 68) for left in range(16, 912, 112)),
        *((left, 424, left + 16, 584) for left in range(624, 1008, 24)),
    ),
)


LEVELS = Ground(
    752,
    416,
    groups=(
        (16, 16, 272, 296),
        (288, 16, 480, 296),
        (496, 16, 736, 296),
        (16, 312, 272, 400),
        (288, 312, 480, 400),
        (496, 312, 736, 400),
    ),
    wells=(
        *((left, 56, left + 24, 264) for left in (72, 112, 152, 192)),
        (32, 352, 256, 368),
        (304, 352, 464, 368),
    ),
)


STAGE = Ground(
    752,
    432,
    groups=(
        (16, 16, 288, 416),
        (304, 16, 480, 224),
        (304, 240, 480, 416),
        (496, 16, 736, 152),
        (496, 168, 736, 304),
        (496, 320, 736, 416),
    ),
    wells=((24, 56, 280, 408), (312, 280, 472, 360), (504, 360, 728, 408)),
)


PROCESSOR = Ground(
    1128,
    792,
    groups=(
        (16, 16, 112, 400),
        (128, 16, 320, 400),
        (336, 16, 904, 400),
        (920, 16, 1112, 400),
        (16, 416, 176, 616),
        (16, 632, 176, 776),
        (192, 416, 472, 776),
        (488, 416, 1112, 776),
    ),
    wells=(
        (56, 56, 80, 344),
        *((left + 16, 56, left + 176, 200) for left in (128, 920)),
        (272, 224, 288, 368),
        (352, 56, 888, 200),
        (32, 456, 160, 512),
        (32, 552, 160, 608),
        (208, 456, 456, 688),
        *((left, 704, left + 8, 760) for left in range(216, 457, 32)),
        (504, 456, 1096, 584),
    ),
)


def pictures():
    yield Picture("app/Controls/Panel_processor.png", (picture_of(PROCESSOR),), png)
    yield Picture("app/Controls/Panel_stage.png", (picture_of(STAGE),), png)
    yield Picture("app/Controls/Panel_levels.png", (picture_of(LEVELS),), png)
    yield Picture("app/Controls/Panel_console.png", (picture_of(CONSOLE),), png)
