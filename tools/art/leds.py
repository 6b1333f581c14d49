"""Round signal lamps: dark and lit side by side."""

from canvas import Canvas, mix, rgb, side_by_side
from hardware import AMBER_LAMP, BLUE_LAMP, GREEN_LAMP, RED_LAMP, lamp_of
from imagefile import bmp32
from paints import fade, pool
from palette import BLACK, WHITE
from picture import Picture
from shapes import circle


def led(size, lamp, is_lit):
    canvas = Canvas(size, size)
    centre = size / 2
    unit = size / 16
    rim = centre - 0.25 - 0.25 * unit
    canvas.fill(circle(centre, centre, rim), fade(0, size, rgb(12, 13, 15), rgb(96, 101, 109)))
    canvas.fill(circle(centre, centre, rim - 1.0), rgb(10, 11, 12))
    lens = circle(centre, centre, rim - max(1.0, 1.4 * unit))
    if is_lit:
        reach = 0.8 * rim
        canvas.fill(lens, pool(centre, centre - 0.5 * unit, reach, reach, lamp.core, lamp.light))
        canvas.fill(circle(centre, centre, rim - 0.5), lamp.light, softness=3.0 * unit, opacity=0.25)
    else:
        canvas.fill(lens, fade(0, size, mix(lamp.dark, WHITE, 0.10), mix(lamp.dark, BLACK, 0.2)))
    reflection = circle(centre - 1.6 * unit, centre - 2.2 * unit, 1.3 * unit)
    canvas.fill(reflection, WHITE, opacity=0.75 if is_lit else 0.35)
    return canvas


LEDS = {
    "_MixerRedLed8x8": (8, RED_LAMP),
    "_MixerGreenLed8x8": (8, GREEN_LAMP),
    "LED_red_16x16": (16, RED_LAMP),
    "LED_green_16x16": (16, GREEN_LAMP),
    "LED_amber_16x16": (16, AMBER_LAMP),
    "LED_blue_16x16": (16, BLUE_LAMP),
    **{f"LED_slim_{name}_16x16": (16, lamp_of(name)) for name in ("red", "yellow", "green", "blue")},
}


def pictures():
    for name, (size, lamp) in LEDS.items():
        image = side_by_side(*(led(size, lamp, is_lit) for is_lit in (False, True)))
        yield Picture(f"app/Controls/{name}.bmp", (image,), bmp32)
