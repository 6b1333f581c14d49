"""Pictograms of the controls, drawn on a grid of 16 x 16 with all ink between 2 and 14.

Edges lie on whole grid units, so that a pictogram is crisp at every whole-number scale. Each symbol is a pair of
shapes: the main one in ink and the accent that carries the colour.
"""

from math import pi, sin

from shapes import arc, box, circle, frame, intersect, place, point_at
from shapes import polygon, polyline, ring, segment, subtract, union


def draw(canvas, symbol, ink, accent, left=0, top=0, scale=1):
    main_shape, accent_shape = symbol
    canvas.fill(place(main_shape, left, top, scale), ink)
    canvas.fill(place(accent_shape, left, top, scale), accent)


def edit():
    """An entry field with the text caret."""
    field = frame(2, 4, 14, 12, 1)
    text = union(box(9, 8, 10, 9), box(11, 8, 12, 9))
    caret = union(box(5, 6, 8, 7), box(6, 7, 7, 9), box(5, 9, 8, 10))
    return union(field, text), caret


def combo_box():
    """A closed list field with its drop button and the list below."""
    field = frame(2, 3, 14, 9, 1)
    entries = union(box(2, 10, 14, 11), box(2, 12, 10, 13))
    drop_mark = union(box(7, 5, 12, 6), box(8, 6, 11, 7), box(9, 7, 10, 8))
    return union(field, entries), drop_mark


def contact_button():
    """A momentary contact: two terminals and the bridge that a push closes."""
    terminals = union(box(2, 10, 6, 11), box(10, 10, 14, 11), circle(6, 10.5, 1.4), circle(10, 10.5, 1.4))
    bridge = union(box(4, 6, 12, 7), box(7, 3, 9, 6), box(6, 2, 10, 3))
    return terminals, bridge


def push_button():
    """A round key in its bezel."""
    return frame(2, 2, 14, 14, 1, 3), circle(8, 8, 3.6)


def rocker_button():
    """A rocker switch, its upper half pressed."""
    rocker = frame(4, 2, 12, 14, 1, 2)
    off_mark = frame(6, 9, 10, 12, 1, 1)
    return union(rocker, off_mark), box(6, 4, 10, 8, 1)


def messaging():
    """A letter."""
    letter = frame(2, 4, 14, 13, 1, 1)
    flap = intersect(polyline([(2.5, 4.8), (8, 9.4), (13.5, 4.8)], 1.3), box(3, 5, 13, 12))
    return letter, flap


def _speaker(x):
    return polygon((x, 6), (x + 2, 6), (x + 5, 3), (x + 5, 13), (x + 2, 10), (x, 10))


def wave_out():
    """A loudspeaker with waves leaving it."""
    waves = union(arc(7, 8, 3.3, -45, 45, 1.1), arc(7, 8, 6.2, -45, 45, 1.1))
    return _speaker(2), waves


def wave_in():
    """A microphone on its stand."""
    capsule = box(6, 2, 10, 9, 2)
    stand = union(arc(8, 7, 4.5, 180, 360, 1), box(7, 12, 9, 13), box(5, 13, 11, 14))
    return stand, capsule


def network():
    """A network: one node above two, joined by a bus."""
    bus = union(box(7, 6, 9, 8), box(3, 8, 13, 9), box(3, 9, 5, 10), box(11, 9, 13, 10))
    leaves = union(box(2, 10, 6, 14), box(10, 10, 14, 14))
    return union(bus, leaves), box(6, 2, 10, 6)


def telephone():
    """A telephone receiver with the waves of its ring."""
    grip = arc(12.6, 3.4, 8.3, 188, 262, 2.2)
    ear = segment(4.6, 3.5, 5.2, 5.6, 2.9)
    mouth = segment(10.4, 10.8, 12.5, 11.4, 2.9)
    waves = union(arc(8.2, 7.8, 2.6, 10, 80, 1.1), arc(8.2, 7.8, 5.2, 10, 80, 1.1))
    return union(grip, ear, mouth), waves


def wave_generator():
    """One period of a sine on its axis."""
    points = [(2.6 + step * 0.3, 8.5 - 4.6 * sin(2 * pi * step / 36)) for step in range(37)]
    return box(2, 8, 14, 9), polyline(points, 1.5)


def midi():
    """The five-pin connector."""
    shell = subtract(ring(8, 8, 5.5, 1), box(7, 12.5, 9, 14))
    key = union(box(6, 11.5, 10, 12.5), box(6, 12, 7, 13.5), box(9, 12, 10, 13.5))
    pins = union(*(circle(*point_at(8, 8, 3.2, angle), 0.85) for angle in (0, 45, 90, 135, 180)))
    return union(shell, key), pins
