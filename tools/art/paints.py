"""Paints: functions (x, y) -> colour. A plain colour is a paint too."""

from math import atan2, cos, degrees, radians

from canvas import clamp, mix, with_alpha


def fade(top, bottom, first, last):
    """A gradient downwards from colour `first` at the height `top` to `last` at `bottom`."""
    return lambda x, y: mix(first, last, clamp((y - top) / (bottom - top)))


def pool(cx, cy, reach_x, reach_y, first, last):
    """Light behind a lens: colour `first` in the middle, falling off to `last` at the reach of either direction."""

    def paint(x, y):
        away = ((x - cx) / reach_x) ** 2 + ((y - cy) / reach_y) ** 2
        return mix(first, last, clamp(away))

    return paint


def lit_from(cx, cy, angle, spread, colour):
    """Light on an edge: strongest towards `angle` (degrees), gone `spread` degrees to either side."""

    def paint(x, y):
        away = abs((degrees(atan2(cy - y, x - cx)) - angle + 180.0) % 360.0 - 180.0)
        strength = 0.0 if away >= spread else 0.5 + 0.5 * cos(radians(180.0 * away / spread))
        return with_alpha(colour, colour[3] * strength)

    return paint


def spun(cx, cy, colour, lobes, turned=0.0):
    """The sheen of lathe-turned metal: `lobes` bright rays around a centre."""

    def paint(x, y):
        angle = atan2(cy - y, x - cx) - radians(turned)
        return with_alpha(colour, colour[3] * (0.5 + 0.5 * cos(lobes * angle)) ** 2)

    return paint
