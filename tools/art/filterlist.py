"""The image list of the equaliser's filter types: six response curves side by side."""

from math import tanh

import responses
from canvas import Canvas, rgb, side_by_side
from imagefile import bmp24
from palette import WHITE
from picture import Picture
from shapes import box, intersect, polyline

SIZE = 13
MIDDLE = SIZE / 2

# The list's mask colour: pixels of exactly this colour are left out.
MASK = WHITE
# The colour of the list's items; the soft edges of the curves are mixed with it.
LIST_GROUND = rgb(255, 255, 200)
AXIS = rgb(160, 160, 140)
CURVE = rgb(204, 84, 0)
PHASE = rgb(52, 116, 196)


def _draw_curve(canvas, decibels, baseline, colour):
    """A response over six octaves, two pixels an octave and half a pixel a dB."""
    points = [(x / 4, baseline - decibels((x / 4 - MIDDLE) / 2) / 2) for x in range(4 * SIZE + 1)]
    canvas.fill(intersect(polyline(points, 1.4), box(1, 1, SIZE - 1, SIZE - 1)), colour)


def _response(decibels, baseline):
    canvas = Canvas(SIZE, SIZE)
    canvas.fill(box(1, round(baseline - 0.5), SIZE - 1, round(baseline + 0.5)), AXIS)
    _draw_curve(canvas, decibels, baseline, CURVE)
    return canvas


def bell():
    return _response(lambda octave: responses.bell(octave, 14.0, 1.5), 9.5)


def low_shelf():
    return _response(lambda octave: responses.low_shelf(octave + 0.3, 12.0, 1.0), 9.5)


def high_shelf():
    return _response(lambda octave: responses.high_shelf(octave - 0.3, 12.0, 1.0), 9.5)


def high_pass():
    return _response(lambda octave: responses.high_pass(octave + 0.5), 4.5)


def low_pass():
    return _response(lambda octave: responses.low_pass(octave - 0.5), 4.5)


def all_pass():
    """A flat level, which also reads as a filter that does nothing, and the phase that turns over."""
    canvas = Canvas(SIZE, SIZE)
    _draw_curve(canvas, lambda octave: -8.0 * tanh(1.5 * octave), MIDDLE, PHASE)
    _draw_curve(canvas, lambda octave: 0.0, MIDDLE, CURVE)
    return canvas


# The place of a picture in the list is the number of the filter type.
FILTER_TYPES = (bell, low_shelf, high_shelf, high_pass, low_pass, all_pass)


def filter_list():
    return side_by_side(*(draw() for draw in FILTER_TYPES)).keyed(MASK, LIST_GROUND)


def pictures():
    yield Picture("Controls/resources/eqlist.bmp", (filter_list(),), bmp24)
