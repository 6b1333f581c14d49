"""Small views of the signal processing blocks, in the colours of the views themselves."""

import responses
from canvas import Canvas, with_alpha
from imagefile import bmp24, png
from paints import fade
from picture import Picture
from shapes import below, box, circle, intersect, polygon, polyline, segment, turn, union
from style import paint

WELL, EDGE, TEXT, FAINT = paint("well"), paint("edge"), paint("text"), paint("faint")
BLUE, GREEN, YELLOW, RED = paint("blue"), paint("green"), paint("yellow"), paint("red")

WIDTH, HEIGHT = 48, 32

# What may be drawn on, inside the display's frame.
LEFT, TOP, RIGHT, BOTTOM = 2, 2, WIDTH - 2, HEIGHT - 2
AREA = box(LEFT, TOP, RIGHT, BOTTOM, 2)

GRID = with_alpha(TEXT, 0.12)


def display():
    """A well let into the panel, in the rim that catches the light from above left at its lower right."""
    canvas = Canvas(WIDTH, HEIGHT)
    canvas.fill(box(0, 0, WIDTH, HEIGHT, 3), fade(0, HEIGHT, with_alpha(EDGE, 0.45), EDGE))
    canvas.fill(box(1, 1, WIDTH - 1, HEIGHT - 1, 2), WELL)
    return canvas


def draw_grid(canvas, columns, rows):
    for x in columns:
        canvas.fill(box(x, TOP, x + 1, BOTTOM), GRID)
    for y in rows:
        canvas.fill(box(LEFT, y, RIGHT, y + 1), GRID)


def draw_curve(canvas, curve, colour, filled=True):
    """A glowing line along `curve`, a function x -> y, and a light fill under it."""
    if filled:
        under = intersect(below(curve), AREA)
        canvas.fill(under, fade(TOP, BOTTOM, with_alpha(colour, 0.42), with_alpha(colour, 0.06)))
    line = polyline([(x / 2, curve(x / 2)) for x in range(2 * LEFT, 2 * RIGHT + 1)], 1.2)
    canvas.fill(intersect(line, AREA), colour, softness=4.0, opacity=0.35)
    canvas.fill(intersect(line, AREA), colour)


def draw_link(canvas, start, end, colour):
    """A smooth patch cord between two points."""
    (x0, y0), (x1, y1) = start, end
    steps = [step / 16 for step in range(17)]
    points = [(x0 + (x1 - x0) * t, y0 + (y1 - y0) * t * t * (3 - 2 * t)) for t in steps]
    canvas.fill(polyline(points, 1.3), colour)


def equaliser():
    canvas = display()
    draw_grid(canvas, (13, 24, 35), (9, 16, 23))

    def level(x):
        octave = (x - LEFT) / (RIGHT - LEFT) * 10.0
        return (
            responses.low_shelf(octave - 1.6, 3.5)
            + responses.bell(octave - 4.3, -5.0, 1.1)
            + responses.bell(octave - 7.3, 6.0, 1.1)
        )

    def curve(x):
        return 16.5 - 1.7 * level(x)

    draw_curve(canvas, curve, BLUE)
    for x in (9.5, 21.5, 34.5):
        canvas.fill(circle(x, curve(x), 2.2), TEXT)
    return canvas


def dynamics():
    canvas = display()
    draw_grid(canvas, (13, 24, 35), (9, 16, 23))
    canvas.fill(intersect(segment(4, 30, 40, 2, 1.0), AREA), with_alpha(TEXT, 0.3))
    knee_x, knee_y, slope, knee = 23.0, 30.0 - 19.0 * 28 / 36, 28 / 36, 5.0

    def curve(x):
        over = x - knee_x
        # A soft knee: the gain is reduced by a parabola that joins the two straight parts.
        if over <= -knee:
            reduced = 0.0
        elif over < knee:
            reduced = (over + knee) ** 2 / (4 * knee)
        else:
            reduced = over
        return knee_y - slope * (over - 0.78 * reduced)

    draw_curve(canvas, curve, BLUE)
    canvas.fill(circle(knee_x + 0.5, curve(knee_x + 0.5), 2.2), TEXT)
    return canvas


def crossover():
    canvas = display()
    draw_grid(canvas, (13, 24, 35), (9, 16, 23))

    # Fourth-order filters of Linkwitz and Riley: two second-order ones in series, 6 dB down where they cross.
    def low(x):
        return 2.0 * responses.low_pass((x - 17.0) / 6.5)

    def high(x):
        return 2.0 * responses.high_pass((x - 31.0) / 6.5)

    def middle(x):
        return 2.0 * (responses.high_pass((x - 17.0) / 6.5) + responses.low_pass((x - 31.0) / 6.5))

    for band, colour in ((low, BLUE), (middle, GREEN), (high, YELLOW)):
        draw_curve(canvas, lambda x, band=band: 8.5 - 0.55 * band(x), colour)
    return canvas


def delay():
    canvas = display()
    draw_grid(canvas, (), (25,))
    for tap in range(6):
        x = 5 + 7 * tap
        height = round(20 * 0.72**tap)
        colour = TEXT if tap == 0 else BLUE
        strength = 1.0 if tap == 0 else 1.0 - 0.13 * tap
        stem = box(x, 26 - height, x + 3, 26, 1)
        canvas.fill(stem, colour, softness=5.0, opacity=0.3 * strength)
        canvas.fill(stem, colour, opacity=strength)
    return canvas


def routing():
    canvas = display()
    rows = (7.5, 16.5, 25.5)
    inputs = [(9.5, y) for y in rows]
    outputs = [(37, y) for y in rows]
    for start, end, colour in ((0, 1, BLUE), (1, 0, GREEN), (2, 2, YELLOW)):
        draw_link(canvas, inputs[start], outputs[end], colour)
    for x, y in inputs:
        canvas.fill(circle(x, y, 2.5), TEXT)
        canvas.fill(circle(x, y, 1.2), WELL)
    for x, y in outputs:
        canvas.fill(polygon((x - 1, y - 3), (x - 1, y + 3), (x + 4, y)), TEXT)
    return canvas


def editing():
    canvas = display()
    for row, (knob, length) in enumerate(((30, 40), (12, 40), (22, 28))):
        y = 8 + 8 * row
        canvas.fill(box(6, y - 1, length, y, 0.5), with_alpha(TEXT, 0.3))
        canvas.fill(box(6, y - 1, min(knob, length), y, 0.5), BLUE)
        canvas.fill(box(knob - 1, y - 3, knob + 2, y + 2, 1), TEXT)
    pencil = (
        (box(30, 12, 35, 15, 1), RED),
        (box(30, 15, 35, 16), TEXT),
        (box(30, 16, 35, 25), YELLOW),
        (box(32, 16, 33, 25), TEXT),
        (polygon((30, 25), (35, 25), (32.5, 30)), FAINT),
        (polygon((31.6, 28.2), (33.4, 28.2), (32.5, 30)), WELL),
    )
    outline = union(box(30, 12, 35, 25, 1), polygon((30, 25), (35, 25), (32.5, 30)))
    canvas.fill(turn(outline, 32.5, 21, -40), with_alpha(WELL, 0.9), softness=3.5)
    for shape, colour in pencil:
        canvas.fill(turn(shape, 32.5, 21, -40), colour)
    return canvas


VIEWS = {
    "MiniDelay": delay,
    "MiniDynamics": dynamics,
    "MiniEdit": editing,
    "MiniEQ": equaliser,
    "MiniRouting": routing,
    "MiniXOver": crossover,
}


def pictures():
    for name, view in VIEWS.items():
        image = view()
        yield Picture(f"app/Controls/{name}.png", (image,), png)
        yield Picture(f"app/Controls/{name}.bmp", (image.flattened(WELL),), bmp24)
