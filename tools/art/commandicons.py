"""Icons of the program's commands for its toolbar, drawn and laid out as those of the classes.

`commands.txt` names them in the order of the strip.
"""

from classicons import CONTINUOUS, DISCRETE, FOLDER, PROCESSING, strips
from picture import Picture
from shapes import arc, box, circle, frame, polygon, polyline, ring, segment, subtract, turn, union

NOTHING = box(0, 0, 0, 0)
ONE_WAY = CONTINUOUS  # the colour of most


def _mirrored(symbol):
    main, accent = symbol
    return (lambda x, y: main(16 - x, y)), (lambda x, y: accent(16 - x, y))


def _turned(symbol):
    """Rows become columns."""
    main, accent = symbol
    return (lambda x, y: main(y, x)), (lambda x, y: accent(y, x))


def edit():
    return polygon((2, 14), (3, 10.6), (5.4, 13)), union(segment(5.2, 10.8, 11, 5, 3.2), segment(12.4, 3.6, 13, 3, 3.2))


def undo():
    return NOTHING, union(arc(8.6, 8.8, 4.6, -120, 130, 1.8), polygon((1.4, 4.6), (8, 1.6), (7.4, 8)))


def redo():
    return _mirrored(undo())


def cut():
    blades = union(segment(4.6, 1.6, 9.8, 10.4, 1.6), segment(11.4, 1.6, 6.2, 10.4, 1.6))
    return blades, union(ring(4.6, 12.2, 2.2, 1.4), ring(11.4, 12.2, 2.2, 1.4))


def copy():
    return subtract(frame(1, 1, 10, 12, 1, 1), box(5, 4, 15, 15)), union(frame(6, 5, 15, 15, 1, 1), box(8, 8, 13, 9), box(8, 11, 13, 12))


def paste():
    board = subtract(frame(1, 2, 12, 15, 1.2, 1), box(6, 6, 16, 16))
    return union(board, box(4, 1, 9, 4, 1)), union(frame(7, 7, 15, 15, 1, 0.5), box(9, 10, 13, 11))


def duplicate():
    return subtract(frame(1, 1, 10, 10, 1, 1), box(5, 5, 15, 15)), union(
        frame(6, 6, 15, 15, 1, 1), box(8, 10, 13, 11), box(10, 8, 11, 13)
    )


def align_left():
    return box(1, 1, 2, 15), union(box(3, 3, 14, 7), box(3, 9, 9, 13))


def align_right():
    return _mirrored(align_left())


def centre_across():
    return box(7.5, 1, 8.5, 15), union(box(2, 3, 14, 7), box(4.5, 9, 11.5, 13))


def align_top():
    return _turned(align_left())


def align_bottom():
    return _turned(_mirrored(align_left()))


def centre_down():
    return _turned(centre_across())


def distribute_across():
    return union(box(0.8, 1, 1.8, 15), box(14.2, 1, 15.2, 15)), union(*(box(x, 4, x + 2.6, 12) for x in (3, 6.7, 10.4)))


def distribute_down():
    return _turned(distribute_across())


def foreground():
    return subtract(frame(6, 6, 15, 15, 1, 1), box(1, 1, 11, 11)), box(1, 1, 10, 10, 1)


def background():
    return frame(6, 6, 15, 15, 1, 1), subtract(box(1, 1, 10, 10, 1), box(5, 5, 15, 15, 1))


def grid():
    return union(*(box(x, y, x + 2, y + 2) for x in (2, 7, 12) for y in (2, 7, 12) if (x, y) != (7, 7))), box(7, 7, 9, 9)


def open_():
    back = union(box(1, 3, 7, 5, 1), subtract(box(1, 4, 13, 14, 1), box(2, 5, 12, 14)))
    return back, polygon((1.4, 14), (4, 7.4), (15, 7.4), (12.4, 14))


def save():
    case = subtract(box(1, 1, 15, 15, 1), box(4, 2, 12, 6), box(4, 9, 12, 14))
    return case, union(box(9, 2, 11, 5), box(5, 10, 11, 11), box(5, 12, 11, 13))


def snapshots():
    camera = union(frame(1, 4, 15, 14, 1.2, 2), polygon((5, 4.4), (6.4, 2), (9.6, 2), (11, 4.4)))
    return camera, union(ring(8, 9, 2.6, 1.4), circle(8, 9, 0.9))


def bindings():
    links = union(turn(frame(1, 6, 9, 10.4, 1.5, 2.2), 8, 8, 45))
    return links, turn(frame(7, 5.6, 15, 10, 1.5, 2.2), 8, 8, 45)


def trace():
    sheet = frame(2, 1, 14, 15, 1, 1)
    return union(sheet, box(7, 4, 12, 5), box(7, 8, 12, 9), box(7, 12, 12, 13)), union(*(box(4, y - 0.5, 6, y + 1.5) for y in (4, 8, 12)))


def check():
    return frame(1, 2, 13, 15, 1.2, 1), polyline([(4, 8), (7.4, 11.6), (14.4, 3)], 2)


def properties():
    panel = union(frame(1, 1, 15, 15, 1, 1), box(7, 1, 8, 15))
    return union(panel, box(3, 4, 6, 5), box(3, 8, 6, 9), box(3, 12, 6, 13)), union(box(9, 4, 13, 5), box(9, 7.4, 11.4, 9.6), box(9, 12, 13, 13))


COMMANDS = {
    "edit": (edit, PROCESSING),
    "undo": (undo, ONE_WAY),
    "redo": (redo, ONE_WAY),
    "cut": (cut, ONE_WAY),
    "copy": (copy, ONE_WAY),
    "paste": (paste, ONE_WAY),
    "duplicate": (duplicate, ONE_WAY),
    "align left": (align_left, ONE_WAY),
    "align top": (align_top, ONE_WAY),
    "align right": (align_right, ONE_WAY),
    "align bottom": (align_bottom, ONE_WAY),
    "centre across": (centre_across, ONE_WAY),
    "centre down": (centre_down, ONE_WAY),
    "distribute across": (distribute_across, ONE_WAY),
    "distribute down": (distribute_down, ONE_WAY),
    "foreground": (foreground, ONE_WAY),
    "background": (background, ONE_WAY),
    "grid": (grid, ONE_WAY),
    "open": (open_, PROCESSING),
    "save": (save, ONE_WAY),
    "snapshots": (snapshots, ONE_WAY),
    "bindings": (bindings, DISCRETE),
    "trace": (trace, ONE_WAY),
    "check": (check, DISCRETE),
    "properties": (properties, ONE_WAY),
}


def pictures():
    yield from strips("commands", list(COMMANDS.values()))
    yield Picture(f"{FOLDER}/commands.txt", (), lambda: "".join(f"{name}\n" for name in COMMANDS).encode())
