"""Keys, rockers and a curtain in the style of panels, for the operation of a stage."""

from math import cos, pi

from canvas import Canvas, clamp, mix, side_by_side, with_alpha
from hardware import lamp_of
from imagefile import bmp32
from paints import fade, pool
from palette import BLACK, WHITE
from picture import Picture
from shapes import box
from style import paint

RADIUS = 3


def well(width, height):
    """The dark place that a key or a rocker sits in, with light on its lower and right rim."""
    canvas = Canvas(width, height)
    canvas.fill(box(0, 0, width, height, RADIUS), mix(paint("plate"), paint("text"), 0.16))
    canvas.fill(box(0, 0, width - 1, height - 1, RADIUS), mix(paint("well"), BLACK, 0.6))
    canvas.fill(box(1, 1, width - 1, height - 1, RADIUS - 1), paint("well"))
    return canvas


def key(width, height, colour, is_lit):
    canvas = well(width, height)
    face = box(2, 2, width - 2, height - 2, 2)
    if is_lit:
        lamp = lamp_of(colour)
        canvas.fill(face, pool(width / 2, height / 2, width * 0.7, height, mix(lamp.light, WHITE, 0.22), lamp.light))
        canvas.fill(box(3, 2, width - 3, 3), lamp.core)
    else:
        plate = paint("plate")
        top, bottom = mix(plate, paint("edge"), 0.34), mix(plate, paint("edge"), 0.12)
        canvas.fill(face, fade(2, height - 2, top, bottom))
        canvas.fill(box(3, 2, width - 3, 3), mix(plate, WHITE, 0.3))
        canvas.fill(box(2, 3, 3, height - 3), mix(plate, WHITE, 0.2))
        # A strip that says what colour it lights up in.
        canvas.fill(box(4, height - 5, width - 4, height - 4), mix(paint(colour), plate, 0.35))
    return canvas


def rocker(width, height, position):
    """A plate on an axle: -1 pressed at the bottom, 0 level, 1 pressed at the top."""
    canvas = well(width, height)
    plate, edge = paint("plate"), paint("edge")
    middle = height / 2
    raised, level, pressed = mix(plate, edge, 0.55), mix(plate, edge, 0.3), mix(plate, BLACK, 0.25)
    upper = {1: pressed, 0: level, -1: raised}[position]
    lower = {1: raised, 0: level, -1: pressed}[position]
    # The half that stands out catches the light; where it is let in, the rim throws a shadow on it.
    canvas.fill(box(2, 2, width - 2, middle), fade(2, middle, mix(upper, WHITE, 0.06), level))
    canvas.fill(box(2, middle, width - 2, height - 2), fade(middle, height - 2, level, mix(lower, BLACK, 0.08)))
    if position == 1:
        canvas.fill(box(2, 2, width - 2, 6), fade(2, 6, with_alpha(BLACK, 0.55), with_alpha(BLACK, 0.0)))
    else:
        canvas.fill(box(2, 2, width - 2, 3), mix(upper, WHITE, 0.35))
    if position == -1:
        canvas.fill(box(2, height - 6, width - 2, height - 2), fade(height - 6, height - 2, with_alpha(BLACK, 0.0), with_alpha(BLACK, 0.45)))
    else:
        canvas.fill(box(2, height - 3, width - 2, height - 2), mix(lower, WHITE, 0.25 if position == 1 else 0.1))
    canvas.fill(box(2, 2, 3, height - 2), with_alpha(WHITE, 0.12))
    canvas.fill(box(3, middle - 1, width - 3, middle), with_alpha(BLACK, 0.35))
    canvas.fill(box(3, middle, width - 3, middle + 1), with_alpha(WHITE, 0.1))
    return canvas


def lamp_rocker(width, height, position, colour):
    """One of two positions, with a lamp that is lit while it is pressed at the top."""
    canvas = rocker(width, height, position)
    lamp = lamp_of(colour)
    at = box(width / 2 - 6, 9, width / 2 + 6, 13, 1)
    if position == 1:
        canvas.fill(at, lamp.light, softness=6.0, opacity=0.5)
    canvas.fill(at, lamp.core if position == 1 else mix(lamp.dark, paint("plate"), 0.2))
    return canvas


def arrow_rocker(width, height, position):
    """One of three positions, with arrows up and down, of which the one that it is pressed to is bright."""
    canvas = rocker(width, height, position)
    for direction in (1, -1):
        tip = 10 if direction == 1 else height - 10
        colour = paint("blue") if position == direction else paint("text")
        for row in range(5):
            y = tip + direction * row
            top = y if direction == 1 else y - 1
            canvas.fill(box(width / 2 - row - 1, top, width / 2 + row + 1, top + 1), colour)
    return canvas


def curtain(width, height, opened):
    """Two drapes before a lit stage, `opened` from 0 to 1."""
    canvas = Canvas(width, height)
    light = pool(width / 2, height * 0.25, width * 0.55, height * 0.95, mix(paint("yellow"), WHITE, 0.4), mix(paint("ground"), paint("yellow"), 0.08))
    canvas.fill(box(0, 0, width, height), light)
    floor = height * 0.8
    canvas.fill(box(0, floor, width, height), fade(floor, height, mix(paint("well"), paint("yellow"), 0.35), paint("well")))
    cloth, dark = mix(paint("red"), BLACK, 0.35), mix(paint("red"), BLACK, 0.78)
    half = width / 2
    drawn = half * (1.0 - 0.82 * opened)
    folds = 7
    drop = height - 5

    def drape(x, y):
        from_edge = x if x < half else width - x
        fold = 0.5 + 0.5 * cos(2 * pi * folds * from_edge / drawn)
        shade = clamp(0.15 + 0.85 * fold - 0.25 * y / height)
        return mix(dark, cloth, shade)

    canvas.fill(box(0, 0, drawn, drop), drape)
    canvas.fill(box(width - drawn, 0, width, drop), drape)
    if opened > 0:
        for left, right in ((drawn, drawn + 4), (width - drawn - 4, width - drawn)):
            canvas.fill(box(left, 0, right, drop), BLACK, opacity=0.25)
    # The pelmet above it.
    canvas.fill(box(0, 0, width, 12), lambda x, y: mix(dark, cloth, 0.5 + 0.4 * cos(2 * pi * x / 16)))
    canvas.fill(box(0, 11, width, 12), mix(paint("yellow"), BLACK, 0.4))
    canvas.fill(box(0, 12, width, 16), fade(12, 16, with_alpha(BLACK, 0.5), with_alpha(BLACK, 0.0)))
    return canvas


KEYS = {"160x24": (160, 24, "blue"), "160x32": (160, 32, "blue"), "40x16": (40, 16, "green")}
CURTAIN_FRAMES = 9


def pictures():
    def bitmap(name, images):
        return Picture(f"app/Controls/{name}.bmp", (side_by_side(*images),), bmp32)

    for size, (width, height, colour) in KEYS.items():
        faces = [key(width, height, colour, is_lit) for is_lit in (False, True)]
        yield bitmap(f"SWITCHBUTTON_slim_{colour}_{size}", faces)
    yield bitmap("ROCKER_slim_green_32x56", [lamp_rocker(32, 56, position, "green") for position in (-1, 1)])
    yield bitmap("ROCKER_slim_arrows_32x56", [arrow_rocker(32, 56, position) for position in (-1, 0, 1)])
    frames = [curtain(160, 80, frame / (CURTAIN_FRAMES - 1)) for frame in range(CURTAIN_FRAMES)]
    yield bitmap("CURTAIN_160x80", frames)
