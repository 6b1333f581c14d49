"""Switch buttons: the dark and the lit key side by side. The lit one also serves while the switch is held down.

The dark face suits a white caption and the lit one a black.
"""

from canvas import mix, side_by_side
from hardware import BLUE_LAMP, GREEN_LAMP, RED_LAMP, YELLOW_LAMP, key_well
from paints import fade, pool
from palette import BLACK, WHITE
from picture import lamp_pictures
from shapes import box

RADIUS = 3


def lamp_key(width, height, lamp, is_lit):
    canvas = key_well(width, height, RADIUS)
    face = box(1, 1, width - 1, height - 1, RADIUS - 1)
    if is_lit:
        glow = pool(width / 2, height / 2, width * 0.62, height * 0.75, mix(lamp.light, lamp.core, 0.6), lamp.light)
        canvas.fill(face, glow)
        canvas.fill(box(2, 1, width - 2, 2), lamp.core)
        canvas.fill(box(2, height - 2, width - 2, height - 1), BLACK, opacity=0.22)
    else:
        canvas.fill(face, fade(1, height - 1, mix(lamp.dark, WHITE, 0.13), mix(lamp.dark, BLACK, 0.15)))
        canvas.fill(box(2, 1, width - 2, 2), mix(lamp.dark, WHITE, 0.34))
        canvas.fill(box(2, height - 2, width - 2, height - 1), BLACK, opacity=0.4)
    return canvas


def switch_button(width, height, lamp):
    return side_by_side(*(lamp_key(width, height, lamp, is_lit) for is_lit in (False, True)))


LAMPS = {"red": RED_LAMP, "yellow": YELLOW_LAMP, "green": GREEN_LAMP, "blue": BLUE_LAMP}
SIZES = ((26, 16), (38, 24), (48, 24), (56, 16), (104, 24))


def pictures():
    return lamp_pictures("SWITCHBUTTON", switch_button, SIZES, LAMPS)
