"""Level meters: the unlit and the lit meter side by side. The program shows the lower part of the lit one."""

from canvas import Canvas, clamp, mix, rgb, side_by_side
from hardware import AMBER_LAMP, BLUE_LAMP, GREEN_LAMP, RED_LAMP, Lamp, display, lamp_of
from imagefile import bmp32
from paints import fade
from palette import BLACK, WHITE
from picture import Picture
from shapes import box

# Parts of the range: overload at the top, below it the warning.
RED_PART = 0.1
AMBER_PART = 0.2

GAP = 1

ICE_LAMP = Lamp(core=rgb(255, 255, 255), light=rgb(170, 216, 255))


def level_lamp(level):
    if level > 1.0 - RED_PART:
        return RED_LAMP
    return AMBER_LAMP if level > 1.0 - RED_PART - AMBER_PART else GREEN_LAMP


def blue_lamp(level):
    """One colour for what has no overload, such as a gain reduction; the top stands out a little."""
    return ICE_LAMP if level > 1.0 - RED_PART else BLUE_LAMP


def segment_bar(width, height, lamp, is_lit):
    """One lamp of a ladder."""
    bar = Canvas(width, height)
    if is_lit:
        bar.fill(box(0, 0, width, height), fade(0, height, mix(lamp.light, lamp.core, 0.35), lamp.light))
        if height > 2:
            bar.fill(box(1, 0, width - 1, 1), lamp.core)
    else:
        bar.fill(box(0, 0, width, height), lamp.dark)
        bar.fill(box(0, 0, width, 1), WHITE, opacity=0.07)
    return bar


def ladder(width, height, margin_x, margin_y, lamp_height, lamp_at, is_lit):
    """A column of lamps between the margins, which leave room for a whole number of them."""
    canvas = display(width, height, 2)
    pitch = lamp_height + GAP
    count, left_over = divmod(height - 2 * margin_y + GAP, pitch)
    if left_over:
        raise ValueError("the lamps do not fill the height")
    for index in range(count):
        lamp = lamp_at((index + 0.5) / count)
        top = height - margin_y - index * pitch - lamp_height
        bar = segment_bar(width - 2 * margin_x, lamp_height, lamp, is_lit)
        canvas.draw(bar, margin_x, top)
    return canvas


def smooth(width, height, margin, is_lit):
    """A continuous bar whose colour changes with the level, under a scale of hairlines at every tenth."""
    canvas = display(width, height, 2)
    bottom, top = height - margin, margin

    def tone(x, y):
        level = (bottom - y) / (bottom - top)
        warm = clamp((level - 0.55) / 0.25)
        hot = clamp((level - 0.86) / 0.08)
        light = mix(mix(GREEN_LAMP.light, AMBER_LAMP.light, warm), RED_LAMP.light, hot)
        return light if is_lit else mix(light, BLACK, 0.78)

    bar = box(margin, top, width - margin, bottom)
    canvas.fill(bar, tone)
    canvas.fill(box(margin, top, margin + 1, bottom), BLACK, opacity=0.18)
    canvas.fill(box(width - margin - 1, top, width - margin, bottom), BLACK, opacity=0.28)
    canvas.fill(box(margin + 2, top, margin + 4, bottom), WHITE, opacity=0.32 if is_lit else 0.05)
    for tenth in range(1, 10):
        y = round(bottom - (bottom - top) * tenth / 10)
        canvas.fill(box(margin, y, width - margin, y + 1), BLACK, opacity=0.35)
    return canvas


# In the style of panels.
GREEN, YELLOW, RED, BLUE = (lamp_of(name) for name in ("green", "yellow", "red", "blue"))


def style_lamp(level):
    if level > 1.0 - RED_PART:
        return RED
    return YELLOW if level > 1.0 - RED_PART - AMBER_PART else GREEN


# Those of another ending than ".bmp".
ENDINGS = {"_AutoMixerInMeter": ".ds"}

# Width, height, margins beside and above the lamps, height of a lamp, colours.
LADDERS = {
    "METER_8x100": (8, 100, 2, 3, 4, level_lamp),
    "METER_12x120": (12, 120, 2, 2, 2, level_lamp),
    "METER_12x200": (12, 200, 2, 3, 2, level_lamp),
    "METER_16x160": (16, 160, 3, 3, 4, level_lamp),
    "METER_20x200_blue": (20, 200, 3, 3, 4, blue_lamp),
    "_AutoMixerInMeter": (12, 90, 2, 2, 2, level_lamp),
    "METER_slim_16x208": (16, 208, 3, 2, 4, style_lamp),
    "METER_slim_16x208_blue": (16, 208, 3, 2, 4, lambda level: BLUE),
}


def pictures():
    for name, sizes in LADDERS.items():
        image = side_by_side(*(ladder(*sizes, is_lit) for is_lit in (False, True)))
        yield Picture(f"app/Controls/{name}{ENDINGS.get(name, '.bmp')}", (image,), bmp32)
    image = side_by_side(*(smooth(12, 160, 2, is_lit) for is_lit in (False, True)))
    yield Picture("app/Controls/METER_smooth_12x160.bmp", (image,), bmp32)
