"""Window class icons: a light pictogram on a slate tile, its accent telling the kind of control."""

import symbols
from canvas import Canvas, rgb, with_alpha
from imagefile import ico
from paints import fade
from palette import AMBER, BLUE, CHALK, GREEN, WHITE
from picture import Picture
from shapes import box, frame

SIZE = 16

ENTRY, BUTTON, INTERFACE = BLUE, AMBER, GREEN

ICONS = {
    "Edit": (symbols.edit, ENTRY),
    "ComboBox": (symbols.combo_box, ENTRY),
    "ContactButton": (symbols.contact_button, BUTTON),
    "PushButton": (symbols.push_button, BUTTON),
    "RockerButton": (symbols.rocker_button, BUTTON),
    "Messaging": (symbols.messaging, INTERFACE),
    "WaveOut": (symbols.wave_out, INTERFACE),
    "WaveIn": (symbols.wave_in, INTERFACE),
    "Network": (symbols.network, INTERFACE),
    "Telephone": (symbols.telephone, INTERFACE),
    "WaveGenerator": (symbols.wave_generator, INTERFACE),
}


def class_icon(symbol, accent):
    canvas = Canvas(SIZE, SIZE)
    canvas.fill(box(0, 0, SIZE, SIZE, 3), fade(0, SIZE, rgb(72, 80, 92), rgb(40, 45, 53)))
    canvas.fill(frame(0, 0, SIZE, SIZE, 1, 3), fade(0, SIZE, with_alpha(WHITE, 0.22), rgb(0, 0, 0, 0.35)))
    symbols.draw(canvas, symbol(), CHALK, accent)
    return canvas


def pictures():
    for name, (symbol, accent) in ICONS.items():
        yield Picture(f"app/Controls/{name}.ico", (class_icon(symbol, accent),), ico)
