"""Push buttons: the released and the pressed key side by side. The program writes the caption over the face."""

from dataclasses import dataclass

from canvas import mix, rgb, side_by_side
from hardware import key_well
from imagefile import bmp32
from paints import fade
from palette import BLACK, WHITE
from picture import Picture
from shapes import box, union

RADIUS = 3
ENGRAVED = rgb(30, 33, 38)


@dataclass(frozen=True)
class Key:
    """The colours of a key, light enough for black captions, which are the default."""

    high: tuple
    face: tuple
    low: tuple


GREY = Key(high=rgb(222, 226, 231), face=rgb(172, 177, 184), low=rgb(126, 131, 139))
BLUE_KEY = Key(high=rgb(176, 214, 255), face=rgb(92, 156, 230), low=rgb(60, 120, 192))
RED_KEY = Key(high=rgb(255, 182, 170), face=rgb(228, 92, 80), low=rgb(194, 68, 58))
GREEN_KEY = Key(high=rgb(184, 240, 194), face=rgb(92, 188, 112), low=rgb(58, 148, 80))


def plus(cx, cy):
    return union(box(cx - 5, cy - 1, cx + 5, cy + 1), box(cx - 1, cy - 5, cx + 1, cy + 5))


def minus(cx, cy):
    return box(cx - 5, cy - 1, cx + 5, cy + 1)


def draw_released(canvas, width, height, key):
    """The key stands out of its frame: a bright upper edge, a gradient, and its front in shadow."""
    front = mix(key.low, BLACK, 0.45)
    canvas.fill(box(1, 1, width - 1, height - 1, RADIUS - 1), front)
    face = fade(1, height - 2, mix(key.face, key.high, 0.45), mix(key.face, key.low, 0.4))
    canvas.fill(box(1, 1, width - 1, height - 2, RADIUS - 1), face)
    canvas.fill(box(2, 1, width - 2, 2), key.high)
    canvas.fill(box(1, 2, 2, height - 3), key.high, opacity=0.35)
    canvas.fill(box(width - 2, 2, width - 1, height - 3), key.low, opacity=0.6)


def draw_pressed(canvas, width, height, key):
    """The key lies in its frame, which throws a shadow on it from above."""
    face = fade(1, height, mix(key.low, key.face, 0.1), mix(key.low, key.face, 0.75))
    canvas.fill(box(1, 1, width - 1, height - 1, RADIUS - 1), face)
    canvas.fill(box(1, 1, width - 1, 2), BLACK, opacity=0.42)
    canvas.fill(box(1, 2, width - 1, 3), BLACK, opacity=0.18)
    canvas.fill(box(1, 2, 2, height - 2), BLACK, opacity=0.2)


def key_frame(width, height, key, is_pressed, sign):
    canvas = key_well(width, height, RADIUS)
    draw = draw_pressed if is_pressed else draw_released
    draw(canvas, width, height, key)
    if sign:
        # A pressed key's sign moves as captions do.
        shift = 1 if is_pressed else 0
        cx, cy = width / 2 + shift, height / 2 + shift
        canvas.fill(sign(cx, cy + 1), WHITE, opacity=0.35)
        canvas.fill(sign(cx, cy), ENGRAVED)
    return canvas


def push_button(width, height, key, sign=None):
    return side_by_side(*(key_frame(width, height, key, is_pressed, sign) for is_pressed in (False, True)))


BUTTONS = {
    "BUTTON_grey_64x24": (64, 24, GREY),
    "BUTTON_blue_64x24": (64, 24, BLUE_KEY),
    "BUTTON_red_64x24": (64, 24, RED_KEY),
    "BUTTON_green_64x24": (64, 24, GREEN_KEY),
    "BUTTON_grey_32x24": (32, 24, GREY),
    "BUTTON_grey_96x32": (96, 32, GREY),
    "BUTTON_plus_24x24": (24, 24, GREY, plus),
    "BUTTON_minus_24x24": (24, 24, GREY, minus),
}


def pictures():
    for name, description in BUTTONS.items():
        yield Picture(f"app/Controls/{name}.bmp", (push_button(*description),), bmp32)
