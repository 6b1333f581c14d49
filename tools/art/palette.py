"""Colours that several pictures share."""

from canvas import rgb

BLACK = rgb(0, 0, 0)
WHITE = rgb(255, 255, 255)

PANEL_DARK = rgb(46, 49, 54)
PANEL_LIGHT = rgb(205, 208, 212)
STEEL = rgb(52, 61, 73)

INK = rgb(46, 54, 66)  # pictograms on light ground
CHALK = rgb(238, 241, 245)  # pictograms on dark ground

BLUE = rgb(74, 163, 255)
DEEP_BLUE = rgb(20, 108, 204)
GREEN = rgb(92, 214, 132)
AMBER = rgb(255, 176, 46)
RED = rgb(255, 72, 60)
