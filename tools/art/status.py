"""Pictures of the controls that have no face of their own, shown on the panel while it is edited."""

import symbols
from canvas import Canvas, rgb
from imagefile import bmp24
from paints import fade
from palette import DEEP_BLUE, INK, WHITE
from picture import Picture
from shapes import everywhere, frame

SIZE = 32

STATUS = {
    "midi": symbols.midi,
    "Network": symbols.network,
    "Telephone": symbols.telephone,
    "WaveGenerator": symbols.wave_generator,
    "WaveIn": symbols.wave_in,
    "WaveOut": symbols.wave_out,
    "Messaging": symbols.messaging,
}


def status_tile(symbol):
    """The whole square is painted: magenta, which the controls leave out when they draw, does not occur."""
    canvas = Canvas(SIZE, SIZE)
    canvas.fill(everywhere, fade(0, SIZE, rgb(250, 251, 252), rgb(218, 223, 229)))
    canvas.fill(frame(0, 0, SIZE, SIZE, 1), rgb(104, 112, 124))
    canvas.fill(frame(1, 1, SIZE - 1, SIZE - 1, 1), WHITE, opacity=0.7)
    symbols.draw(canvas, symbol(), INK, DEEP_BLUE, scale=2)
    return canvas


def pictures():
    for name, symbol in STATUS.items():
        yield Picture(f"app/Controls/{name}.bmp", (status_tile(symbol),), bmp24)
