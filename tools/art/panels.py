"""Panel backgrounds: seamless tiles of coated or brushed metal, even enough to put small text on."""

from random import Random

from canvas import Canvas, mix
from imagefile import png
from palette import PANEL_DARK, PANEL_LIGHT, STEEL
from picture import Picture
from shapes import everywhere
from style import paint


def _noise(seed, width, height):
    """Uniform noise of -1..1, one row a list. The fixed seed makes every run draw the same tile."""
    random = Random(seed)
    return [[random.random() * 2.0 - 1.0 for _ in range(width)] for _ in range(height)]


def _blurred(noise, reach_x, reach_y):
    """The noise averaged over neighbours; the tile's edges are neighbours too, which makes it seamless."""
    width, height = len(noise[0]), len(noise)
    count = (2 * reach_x + 1) * (2 * reach_y + 1)
    return [
        [
            sum(
                noise[(y + dy) % height][(x + dx) % width]
                for dy in range(-reach_y, reach_y + 1)
                for dx in range(-reach_x, reach_x + 1)
            )
            / count
            for x in range(width)
        ]
        for y in range(height)
    ]


def _levels(noise, strength):
    """The noise scaled to a root mean square of `strength`."""
    mean_square = sum(value * value for row in noise for value in row) / (len(noise) * len(noise[0]))
    return [[value * strength / mean_square**0.5 for value in row] for row in noise]


def panel_tile(colour, grain, brush, width=128, height=128, stroke=16):
    """A tile of metal.

    `grain` and `brush` are the strengths of the coating's grain and of the brushing below it, in levels of 255;
    `stroke` is half the length of a brush stroke.
    """
    coat = _levels(_blurred(_noise(1, width, height), 1, 1), grain)
    strokes = _levels(_blurred(_noise(2, width, height), stroke, 0), brush)

    def paint(x, y):
        column, row = int(x), int(y)
        change = (coat[row][column] + strokes[row][column]) / 255.0
        return (colour[0] + change, colour[1] + change, colour[2] + change, 1.0)

    canvas = Canvas(width, height)
    canvas.fill(everywhere, paint)
    return canvas


# The grounds that a panel chooses by name: a fine coat, a brushed plate, and one that is nearly black.
GROUNDS = {
    "graphite": lambda: panel_tile(paint("ground"), 1.0, 0.4),
    "brushed": lambda: panel_tile(mix(paint("ground"), paint("plate"), 0.8), 0.4, 2.0, width=256, height=64, stroke=40),
    "night": lambda: panel_tile(mix(paint("well"), paint("blue"), 0.03), 0.8, 0.0),
}


def pictures():
    for name, draw in GROUNDS.items():
        yield Picture(f"app/Controls/Ground_{name}.png", (draw(),), png)
    yield Picture("app/Controls/Panel_dark.png", (panel_tile(PANEL_DARK, 0.9, 0.9),), png)
    yield Picture("app/Controls/Panel_light.png", (panel_tile(PANEL_LIGHT, 1.1, 1.1),), png)
    steel = panel_tile(STEEL, 0.5, 2.4, width=256, height=64, stroke=40)
    yield Picture("app/Controls/Panel_steel.png", (steel,), png)
