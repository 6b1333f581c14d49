"""Icons of the window classes for palette and object list: a picture of each control, 16 and 32 pixels high.

They are drawn on a grid of 16 x 16, in ink and in the colour of their group, for a light and a dark ground. All of a
size stand in one strip from left to right; `classes.txt` names their classes in that order.
"""

from math import exp

import symbols
from canvas import Canvas, rgb, side_by_side
from imagefile import png
from palette import AMBER, BLUE, CHALK, DEEP_BLUE, GREEN, INK
from picture import Picture
from shapes import arc, box, circle, frame, intersect, point_at
from shapes import polygon, polyline, ring, segment, subtract, union

SIZES = (16, 32)
FOLDER = "Panel/pictures"

CONTINUOUS, DISCRETE, PROCESSING, STRIPS, INTERFACES = range(5)
GROUNDS = {
    # ink, and the colours of the groups
    "light": (INK, (DEEP_BLUE, rgb(18, 130, 78), rgb(190, 98, 0), rgb(126, 74, 190), rgb(0, 122, 140))),
    "dark": (CHALK, (BLUE, GREEN, AMBER, rgb(190, 150, 255), rgb(82, 206, 222))),
}


def _rows(left, right, tops):
    return union(*(box(left, top, right, top + 1) for top in tops))


def _curve(height, steps=28):
    """A line over the whole width: `height` tells how high it is, by 0 at the left to 1 at the right."""
    return [(1.5 + 13 * i / steps, height(i / steps)) for i in range(steps + 1)]


def _bell(middle, width, gain, at=8):
    return lambda x: at - gain * exp(-(((x - middle) / width) ** 2))


def knob():
    dial = subtract(circle(8, 8.5, 4.6), segment(8, 8.5, *point_at(8, 8.5, 4, 50), 1.6))
    return dial, arc(8, 8.5, 6.6, 50, 225, 1.3)


def fader():
    slot = subtract(union(box(7, 1, 9, 15, 1), _rows(2, 5, (2, 5, 10, 13)), _rows(11, 14, (2, 5, 10, 13))), box(3, 6, 13, 12))
    return slot, box(4, 7, 12, 11, 1)


def _ladder(lit, turned=False):
    segments = [box(5, 1 + 2 * i, 11, 2.2 + 2 * i) for i in range(7)]
    on = segments[:lit] if turned else segments[-lit:]
    off = [segment_ for segment_ in segments if segment_ not in on]
    return union(*off), union(*on)


def meter():
    return _ladder(5)


def reverse_meter():
    return _ladder(3, turned=True)


def bar_graph():
    return frame(4, 1, 12, 15, 1, 1), union(box(6, 7, 10, 13), box(6, 4, 10, 5))


def spin_edit():
    field = union(frame(1, 4, 15, 12, 1, 1), box(10, 4, 11, 12), _rows(3, 8, (8,)), box(5, 6, 6, 11))
    arrows = union(polygon((11.6, 7.4), (14.4, 7.4), (13, 5.4)), polygon((11.6, 8.6), (14.4, 8.6), (13, 10.6)))
    return field, arrows


def range_():
    line = union(box(1, 7.5, 15, 8.5), box(1, 5, 2, 11), box(14, 5, 15, 11))
    return line, union(box(4, 6, 12, 10), polygon((4, 3), (6, 3), (5, 5)), polygon((10, 3), (12, 3), (11, 5)))


def scale():
    marks = union(box(3, 1, 4, 15), *(box(4, y, 10 if y in (1, 8, 14) else 7, y + 1) for y in (1, 4, 6, 8, 10, 12, 14)))
    return marks, polygon((15, 5), (15, 12), (11, 8.5))


def led():
    return ring(8, 8, 5.6, 1.4), circle(8, 8, 3.8)


def conditional_led():
    return union(ring(6, 9.5, 4.4, 1.2), box(10, 2, 15, 3), box(10, 4.5, 15, 5.5)), circle(6, 9.5, 2.8)


def text():
    letter = union(box(3, 2, 13, 4), box(7, 2, 9, 14), box(3, 2, 4, 6), box(12, 2, 13, 6), box(5, 13, 11, 14))
    return letter, box(0, 0, 0, 0)


def switch_button():
    return frame(1, 4, 15, 12, 1.2, 4), circle(11, 8, 2.8)


def radio_button():
    return union(ring(4.5, 4.5, 2.9, 1), ring(4.5, 11.5, 2.9, 1), _rows(9, 15, (4, 11))), circle(4.5, 4.5, 1.6)


def clock():
    return ring(8, 8, 6.2, 1.4), union(segment(8, 8, 8, 4.4, 1.4), segment(8, 8, 10.8, 9.4, 1.4))


def list_selection():
    return union(frame(1, 1, 15, 15, 1, 1), _rows(3, 13, (4, 12))), box(2, 6, 14, 10)


def list_button():
    return union(frame(1, 1, 15, 6, 1, 1), frame(1, 10, 15, 15, 1, 1)), union(box(1, 7, 15, 9), _rows(4, 12, (3, 12)))


def list_text():
    return union(_rows(5, 15, (3, 12)), box(1, 3, 3, 4), box(1, 12, 3, 13)), union(_rows(5, 15, (7, 8)), box(1, 7, 3, 9))


def edit_field():
    letters = union(segment(3.5, 10.5, 5.2, 5.5, 1.2), segment(6.9, 10.5, 5.2, 5.5, 1.2), box(4, 8.4, 6.6, 9.4))
    caret = union(box(10, 5, 11, 11), box(9, 4.6, 12, 5.4), box(9, 10.6, 12, 11.4))
    return union(frame(1, 3, 15, 13, 1, 1), letters), caret


def edit_field_2():
    return union(frame(1, 1, 15, 15, 1, 1), _rows(3, 13, (4, 7)), _rows(3, 7, (10,))), box(9, 9, 10, 13)


def image_list():
    back = subtract(union(frame(4, 1, 15, 11, 1, 1)), box(1, 4, 12, 15))
    front = frame(1, 4, 12, 15, 1, 1)
    return union(back, front), union(polygon((2.5, 13.5), (6, 8), (10.5, 13.5)), circle(9, 7.2, 1.1))


def equaliser():
    axes = union(box(1, 1, 2, 15), box(1, 14, 15, 15), box(3, 8, 15, 8.6))
    return axes, polyline(_curve(lambda x: _bell(0.3, 0.13, 5)(x) + _bell(0.72, 0.12, -3.4, 0)(x)), 1.6)


def crossover_filter():
    low = _curve(lambda x: 4 + 10 * max(0.0, (x - 0.3) * 1.5) ** 1.6)
    high = _curve(lambda x: 4 + 10 * max(0.0, (0.7 - x) * 1.5) ** 1.6)
    visible = box(1, 1, 15, 14.4)
    return intersect(polyline(low, 1.5), visible), intersect(polyline(high, 1.5), visible)


def speaker_selector():
    cabinet = union(frame(3, 1, 13, 15, 1, 1), ring(8, 10.4, 2.9, 1))
    return cabinet, union(circle(8, 4.4, 1.5), circle(8, 10.4, 1.2))


def dante_selector():
    nodes = union(circle(3.2, 8, 2.2), circle(12.8, 3.4, 2.2), circle(12.8, 12.6, 2.2))
    return nodes, union(segment(5, 8, 11, 4, 1.3), segment(5, 8, 11, 12, 1.3))


def mixer_strip():
    strip = union(frame(3, 0.8, 13, 15.2, 1, 1), box(7.5, 7, 8.5, 14), circle(8, 4, 1.7))
    return strip, box(5, 9, 11, 11.6)


def automixer_strip():
    strip = union(frame(1, 0.8, 10, 15.2, 1, 1), box(5, 3, 6, 14))
    letter = union(segment(11.2, 8, 13, 2.5, 1.2), segment(14.8, 8, 13, 2.5, 1.2), box(12, 5.6, 14, 6.6))
    return strip, union(box(3, 8, 8, 10.6), letter)


def crossover_strip():
    strip = union(frame(1, 0.8, 15, 15.2, 1, 1), box(7.5, 8, 8.5, 14))
    cross = union(segment(3.5, 3, 8.6, 3, 1.1), segment(8.6, 3, 12, 6.4, 1.1))
    return union(strip, cross), union(segment(12.5, 3, 9, 3, 1.1), segment(7.4, 3.4, 4, 6.4, 1.1), box(5, 9.4, 11, 12))


def _view(inside, accent):
    """A view of a block: its screen with the block's curve."""
    return union(frame(1, 2, 15, 14, 1, 2), inside), accent


def delay_view():
    bars = union(box(4, 4, 5.6, 12), box(7, 6.4, 8.6, 12))
    return _view(bars, union(box(10, 8.4, 11.6, 12), box(12.4, 10.4, 13.4, 12)))


def dynamics_view():
    return _view(segment(3.6, 11.6, 8, 7.4, 1.3), union(segment(8, 7.4, 12.6, 5.4, 1.3), circle(8, 7.4, 1.5)))


def edit_view():
    pencil = union(segment(6, 10, 11, 5, 2.2), polygon((4, 12), (4.8, 9.4), (6.6, 11.2)))
    return _view(box(3, 12, 13, 12.6), pencil)


def equaliser_view():
    curve = [(3 + 10 * i / 20, _bell(0.4, 0.2, 4, 10)(i / 20)) for i in range(21)]
    return _view(box(0, 0, 0, 0), polyline(curve, 1.5))


def crossover_view():
    low = polyline([(3, 6), (7, 6), (10, 11.4)], 1.3)
    return _view(low, polyline([(13, 6), (9, 6), (6, 11.4)], 1.3))


def routing_view():
    points = [(x, y) for x in (2, 6.5, 11) for y in (2, 6.5, 11)]
    on = ((2, 2), (6.5, 11), (11, 6.5))
    return union(*(frame(x, y, x + 3.4, y + 3.4, 1) for x, y in points if (x, y) not in on)), union(
        *(box(x, y, x + 3.4, y + 3.4) for x, y in on)
    )


def network():
    """A terminal: what a network client sees."""
    screen = union(frame(1, 2, 15, 14, 1, 1), box(1, 2, 15, 4))
    return screen, union(segment(3.6, 6.4, 6, 8.4, 1.3), segment(6, 8.4, 3.6, 10.4, 1.3), box(7, 10, 12, 11.2))


def host_check():
    monitor = union(frame(1, 2, 12, 10, 1, 1), box(5, 10, 8, 12), box(3, 12, 10, 13))
    return subtract(monitor, circle(11.6, 10.8, 4.4)), polyline([(8.4, 10.6), (11, 13.2), (15, 7.8)], 1.7)


CLASSES = {
    "AUTOMIXER": (automixer_strip, STRIPS),
    "BBUTTON": (symbols.push_button, DISCRETE),
    "BCOMBOBOX": (symbols.combo_box, DISCRETE),
    "BEDIT": (edit_field, DISCRETE),
    "BEDIT2": (edit_field_2, DISCRETE),
    "BIMAGELIST": (image_list, DISCRETE),
    "BRADIOBUTTON": (radio_button, DISCRETE),
    "BRANGE": (range_, CONTINUOUS),
    "BSTATIC": (text, DISCRETE),
    "BTRISTATEBUTTON": (switch_button, DISCRETE),
    "CLOCK": (clock, DISCRETE),
    "CONDITIONALLED": (conditional_led, DISCRETE),
    "CONTACTBUTTON": (symbols.contact_button, DISCRETE),
    "CROSSOVER": (crossover_strip, STRIPS),
    "DANTECONTROL": (dante_selector, PROCESSING),
    "EQ": (equaliser, PROCESSING),
    "FADER": (fader, CONTINUOUS),
    "FADING": (bar_graph, CONTINUOUS),
    "IMESSAGING": (symbols.messaging, INTERFACES),
    "IMIDI": (symbols.midi, INTERFACES),
    "INETWORK": (network, INTERFACES),
    "ITELEPHONE": (symbols.telephone, INTERFACES),
    "IWAVEGENERATOR": (symbols.wave_generator, INTERFACES),
    "IWAVEIN": (symbols.wave_in, INTERFACES),
    "IWAVEOUT": (symbols.wave_out, INTERFACES),
    "KNOB": (knob, CONTINUOUS),
    "LED": (led, DISCRETE),
    "LISTSELECTION": (list_selection, DISCRETE),
    "LSBBUTTON": (list_button, DISCRETE),
    "LSBSTATIC": (list_text, DISCRETE),
    "METER": (meter, CONTINUOUS),
    "MINIDELAY": (delay_view, STRIPS),
    "MINIDYNAMICS": (dynamics_view, STRIPS),
    "MINIEDIT": (edit_view, STRIPS),
    "MINIEQ": (equaliser_view, STRIPS),
    "MINIROUTING": (routing_view, STRIPS),
    "MINIXOVER": (crossover_view, STRIPS),
    "MIXER": (mixer_strip, STRIPS),
    "REVMETER": (reverse_meter, CONTINUOUS),
    "SCALE": (scale, CONTINUOUS),
    "SPEAKERCONTROL": (speaker_selector, PROCESSING),
    "SPINEDIT": (spin_edit, CONTINUOUS),
    "SWITCH": (symbols.rocker_button, DISCRETE),
    "XIPCHECK": (host_check, INTERFACES),
    "XOVER": (crossover_filter, PROCESSING),
}


def strip(icons, size, ground):
    """Symbols with the number of their colour, side by side, on transparent ground."""
    ink, accents = GROUNDS[ground]
    images = []
    for symbol, accent in icons:
        image = Canvas(size, size)
        symbols.draw(image, symbol(), ink, accents[accent], scale=size / 16)
        images.append(image)
    return side_by_side(*images)


def strips(name, icons):
    for ground in GROUNDS:
        for size in SIZES:
            yield Picture(f"{FOLDER}/{name}_{ground}_{size}.png", (strip(icons, size, ground),), png)


def pictures():
    yield from strips("classes", list(CLASSES.values()))
    yield Picture(f"{FOLDER}/classes.txt", (), lambda: "".join(f"{name}\n" for name in CLASSES).encode())
