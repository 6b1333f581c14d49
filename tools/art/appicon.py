"""The application's icon: a knob turned up two thirds, drawn for each size on its own."""

from canvas import Canvas, rgb, with_alpha
from imagefile import ico
from paints import fade, lit_from, spun
from palette import RED, WHITE
from picture import Picture
from shapes import arc, box, circle, frame, point_at, ring, segment

POINTER_ANGLE = 45.0


def app_icon(size):
    canvas = Canvas(size, size)
    centre = size / 2
    unit = size / 32

    canvas.fill(box(0, 0, size, size, 6 * unit), fade(0, size, rgb(70, 76, 86), rgb(34, 37, 43)))
    edge = fade(0, size, with_alpha(WHITE, 0.28), rgb(0, 0, 0, 0.4))
    canvas.fill(frame(0, 0, size, size, 1, 6 * unit), edge)

    scale_width = max(2.2 * unit, 1.4)
    canvas.fill(arc(centre, centre, 12.2 * unit, -45, 225, scale_width), rgb(18, 20, 23))
    canvas.fill(arc(centre, centre, 12.2 * unit, POINTER_ANGLE, 225, scale_width), RED)

    canvas.fill(circle(centre, centre + 1.2 * unit, 9.0 * unit), rgb(0, 0, 0, 0.6), softness=5 * unit)
    canvas.fill(circle(centre, centre, 9.2 * unit), fade(7 * unit, 25 * unit, rgb(236, 239, 243), rgb(112, 118, 127)))
    face = circle(centre, centre, 8.0 * unit)
    canvas.fill(face, fade(8 * unit, 24 * unit, rgb(198, 203, 210), rgb(150, 156, 165)))
    canvas.fill(face, spun(centre, centre, rgb(255, 255, 255, 0.5), lobes=2, turned=135.0))
    canvas.fill(ring(centre, centre, 8.8 * unit, 0.8 * unit), lit_from(centre, centre, 90, 80, WHITE))

    inner = point_at(centre, centre, 2.8 * unit, POINTER_ANGLE)
    outer = point_at(centre, centre, 6.9 * unit, POINTER_ANGLE)
    canvas.fill(segment(*inner, *outer, max(2.4 * unit, 1.9)), rgb(36, 40, 46))
    return canvas


def pictures():
    yield Picture("app/Controls/Panel.ico", (app_icon(16), app_icon(32)), ico)
