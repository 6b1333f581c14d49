"""Parts of the hardware that several pictures share: recessed displays, the wells of keys, and lamps."""

from dataclasses import dataclass

from canvas import Canvas, mix, rgb
from paints import fade
from palette import BLACK, WHITE
from shapes import box
from style import paint


def display(width, height, radius):
    """A dark window let into the panel: its upper edge in shadow, its lower edge catching the light."""
    canvas = Canvas(width, height)
    canvas.fill(box(0, 0, width, height, radius), fade(0, height, rgb(9, 10, 12), rgb(92, 97, 105)))
    inside = box(1, 1, width - 1, height - 1, radius - 1)
    canvas.fill(inside, fade(0, height, rgb(16, 19, 23), rgb(27, 31, 37)))
    return canvas


def key_well(width, height, radius):
    """The dark frame that a key sits in, one pixel wide, with a glint on its lower edge."""
    canvas = Canvas(width, height)
    canvas.fill(box(0, 0, width, height, radius), fade(0, height, rgb(12, 13, 15), rgb(32, 34, 38)))
    canvas.fill(box(2, height - 1, width - 2, height), WHITE, opacity=0.13)
    return canvas


@dataclass(frozen=True)
class Lamp:
    """The colours of light behind a lens: where it is brightest, and over the lens as a whole."""

    core: tuple
    light: tuple

    @property
    def dark(self):
        """The lens with no light behind it."""
        return mix(self.light, BLACK, 0.76)


RED_LAMP = Lamp(core=rgb(255, 138, 112), light=rgb(248, 46, 34))
AMBER_LAMP = Lamp(core=rgb(255, 226, 140), light=rgb(255, 170, 24))
YELLOW_LAMP = Lamp(core=rgb(255, 246, 160), light=rgb(250, 214, 36))
GREEN_LAMP = Lamp(core=rgb(164, 255, 160), light=rgb(48, 208, 72))
BLUE_LAMP = Lamp(core=rgb(160, 214, 255), light=rgb(44, 136, 255))


def lamp_of(name):
    """A lamp in a colour of the style of panels."""
    return Lamp(core=mix(paint(name), WHITE, 0.45), light=paint(name))
