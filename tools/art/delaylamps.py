"""The lamp of the delay view, lit and unlit: a sound and its echoes, dying away."""

from canvas import Canvas, rgb
from imagefile import bmp24
from paints import fade
from palette import AMBER
from picture import Picture
from shapes import box, everywhere, frame

SIZE = 16
TAP_HEIGHTS = (10, 7, 5, 3)


def delay_lamp(is_lit):
    canvas = Canvas(SIZE, SIZE)
    canvas.fill(everywhere, fade(0, SIZE, rgb(24, 27, 31), rgb(36, 40, 46)))
    canvas.fill(frame(0, 0, SIZE, SIZE, 1), fade(0, SIZE, rgb(10, 11, 13), rgb(84, 89, 97)))
    colour = AMBER if is_lit else rgb(98, 104, 112)
    for tap, height in enumerate(TAP_HEIGHTS):
        bar = box(3 + 3 * tap, 13 - height, 5 + 3 * tap, 13)
        if is_lit:
            canvas.fill(bar, colour, softness=4.0, opacity=0.4)
        canvas.fill(bar, colour)
    return canvas


def pictures():
    yield Picture("Controls/resources/minidelay1.bmp", (delay_lamp(True),), bmp24)
    yield Picture("Controls/resources/minidelay2.bmp", (delay_lamp(False),), bmp24)
