"""Switch buttons with a lamp in a grey key: off, held down, and on side by side. A black caption suits all three."""

from buttons import GREY, draw_pressed, draw_released
from canvas import mix, side_by_side
from hardware import AMBER_LAMP, BLUE_LAMP, GREEN_LAMP, RED_LAMP, key_well
from paints import fade, pool
from palette import BLACK
from picture import lamp_pictures
from shapes import box

RADIUS = 3
INSET = 6
TOP = 4
LAMP_HEIGHT = 4


def draw_lamp(canvas, width, lamp, is_lit, shift):
    """A bar of light along the upper edge of the key, above the caption."""
    left, top, right, bottom = INSET + shift, TOP + shift, width - INSET + shift, TOP + LAMP_HEIGHT + shift
    canvas.fill(box(left - 1, top - 1, right + 1, bottom + 1, 2), BLACK, opacity=0.55)
    if is_lit:
        canvas.fill(box(left - 3, top - 3, right + 3, bottom + 3, 4), lamp.light, softness=5, opacity=0.35)
        glow = pool((left + right) / 2, (top + bottom) / 2, (right - left) * 0.7, LAMP_HEIGHT, lamp.core, lamp.light)
        canvas.fill(box(left, top, right, bottom, 1), glow)
    else:
        canvas.fill(box(left, top, right, bottom, 1), fade(top, bottom, lamp.dark, mix(lamp.dark, BLACK, 0.4)))


def frame(width, height, lamp, is_pressed, is_lit):
    canvas = key_well(width, height, RADIUS)
    (draw_pressed if is_pressed else draw_released)(canvas, width, height, GREY)
    draw_lamp(canvas, width, lamp, is_lit, 1 if is_pressed else 0)
    return canvas


def led_key(width, height, lamp):
    states = ((False, False), (True, False), (False, True))
    return side_by_side(*(frame(width, height, lamp, *state) for state in states))


LAMPS = {"red": RED_LAMP, "amber": AMBER_LAMP, "green": GREEN_LAMP, "blue": BLUE_LAMP}
SIZES = ((32, 28), (56, 28))


def pictures():
    return lamp_pictures("SWITCHBUTTON_lamp", led_key, SIZES, LAMPS)
