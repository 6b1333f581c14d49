#!/usr/bin/env python3
"""Checks the colours of panels (style.txt): that they can be told apart, and that those who use them do.

Those are the constants of logic/drawing/PanelColours.h, the table of docs/style-of-panels.md, and the panels that
are laid out in this style: their colours, type face and grid.
"""

import re
import struct
import sys
import zlib
from pathlib import Path

sys.dont_write_bytecode = True  # no cache folders in the source tree

from style import COLOURS, Colour, contrast

ROOT = Path(__file__).resolve().parents[2]
PANELS = ("Levels.panel", "Processor.panel", "Stage.panel")
MOST_COLOURS = 12
TEXT_CONTRAST = 4.5
MARK_CONTRAST = 3.0
GRID = 8
TYPE_FACE = "Tahoma"
# Two windows that are one thing may touch between two lines of the grid.
OFF_GRID = 4
# Their size is given, by their picture or for good.
OWN_SIZE = ("EQ", "KNOB", "XOVER")

faults = []


def check(is_right, fault):
    if not is_right:
        faults.append(fault)


def check_colours():
    kinds = [colour.kind for colour in COLOURS.values()]
    check(len(COLOURS) <= MOST_COLOURS, f"{len(COLOURS)} colours are more than {MOST_COLOURS}")
    check(kinds.count("accent") == 1, "there is not one accent")
    grounds = [colour for colour in COLOURS.values() if colour.kind == "ground"]
    for colour in COLOURS.values():
        if colour.kind == "ground":
            continue
        least = TEXT_CONTRAST if colour.kind == "text" else MARK_CONTRAST
        for ground in grounds:
            found = contrast(colour, ground)
            check(found >= least, f"{colour.name} on {ground.name}: {found:.2f} : 1 is below {least} : 1")
        if colour.kind != "text" and colour.name != "edge":
            found = contrast(COLOURS["well"], colour)
            check(found >= TEXT_CONTRAST, f"letters on {colour.name}: {found:.2f} : 1")
    accent = COLOURS["accent"]
    for colour in COLOURS.values():
        check(colour is accent or colour.digits != accent.digits, f"{colour.name} is the accent")


def brightest(path):
    """The pixel of a PNG of make.py's that has the most light, as a colour."""
    data = path.read_bytes()
    width, _ = struct.unpack(">II", data[16:24])
    length = struct.unpack(">I", data[33:37])[0]
    lines = zlib.decompress(data[41 : 41 + length])
    stride = width * 3 + 1
    pixels = {lines[at : at + 3].hex() for start in range(0, len(lines), stride) for at in range(start + 1, start + stride, 3)}
    return max((Colour(path.stem, digits, "ground") for digits in pixels), key=lambda colour: colour.luminance)


def check_grounds():
    """What is written on a drawn ground is as easy to read as on the plain one."""
    paths = sorted((ROOT / "app/Controls").glob("Ground_*.png"))
    check(len(paths) == 3, f"{len(paths)} drawn grounds")
    for path in paths:
        ground = brightest(path)
        for colour in COLOURS.values():
            if colour.kind != "ground":
                least = TEXT_CONTRAST if colour.kind == "text" else MARK_CONTRAST
                found = contrast(colour, ground)
                check(found >= least, f"{colour.name} on {path.name}: {found:.2f} : 1 is below {least} : 1")


# Of the controls that draw themselves on dark panels: text, what it stands on, and the least contrast. What has no
# effect at present needs to be seen, not to be read at a glance.
DARK_PAIRS = (
    ("PANEL_TEXT", "DARK_OFF", TEXT_CONTRAST),
    ("DARK_DIM_TEXT", "PANEL_WELL", TEXT_CONTRAST),
    ("DARK_DIM_TEXT", "PANEL_GROUND", MARK_CONTRAST),
    ("DARK_DIM_TEXT", "PANEL_PLATE", MARK_CONTRAST),
)


def check_dark_parts():
    header = (ROOT / "Controls/drawing/DarkParts.h").read_text()
    colours = {f"PANEL_{name.upper()}": colour for name, colour in COLOURS.items()}
    mixed = r"COLORREF (DARK_\w+) = MixedColour\(logic::(\w+), logic::(\w+), (\d+)\);"
    for name, one, other, percent in re.findall(mixed, header):
        ends = zip(colours[one].bytes, colours[other].bytes)
        digits = "".join(f"{int(a + (b - a) * int(percent) / 100):02x}" for a, b in ends)
        colours[name] = Colour(name, digits, "mixed")
    for text, ground, least in DARK_PAIRS:
        if text not in colours or ground not in colours:
            faults.append(f"DarkParts.h has no {text} or {ground}")
            continue
        found = contrast(colours[text], colours[ground])
        check(found >= least, f"{text} on {ground}: {found:.2f} : 1 is below {least} : 1")


def check_constants():
    header = (ROOT / "logic/drawing/PanelColours.h").read_text()
    found = dict(re.findall(r"PANEL_(\w+) = 0x([0-9a-f]{6});", header))
    for name, colour in COLOURS.items():
        red, green, blue = re.findall("..", colour.digits)
        check(found.pop(name.upper(), None) == blue + green + red, f"PanelColours.h has another PANEL_{name.upper()}")
    check(not found, f"PanelColours.h has more: {', '.join(found)}")


def check_page():
    page = (ROOT / "docs/style-of-panels.md").read_text()
    rows = dict(re.findall(r"^\| `(\w+)` \| `#(\w{6})` \|", page, re.MULTILINE))
    check(rows == {colour.name: colour.digits for colour in COLOURS.values()}, "style-of-panels.md has another table")


def check_panel(path):
    def fault(line, what):
        faults.append(f"{path.name}: {what}: {line}")

    known = {"".join(reversed(re.findall("..", colour.digits))) for colour in COLOURS.values()}
    for line in path.read_text(encoding="cp1252").splitlines():
        for colour in re.findall(r"0x00([0-9a-f]{6})\b", line):
            if colour not in known and not line.startswith("control="):
                fault(line, "a colour of its own")
        if re.search(r"\*font=", line) and f"*font={TYPE_FACE}," not in line:
            fault(line, "another type face")
        place = re.fullmatch(r'control=\S+ \S+ ".*" \S+ (\d+),(\d+),(\d+),(\d+)', line)
        has_own_size = line.split()[1:2] and line.split()[1] in OWN_SIZE
        edges = place.groups()[: 2 if has_own_size else 4] if place else ()
        if any(int(edge) % OFF_GRID for edge in edges):
            fault(line, "off the grid")
        is_scale = line.split()[1:2] == ["SCALE"]  # as near to its control as the grid allows
        if place and not is_scale and any(int(edge) % GRID for edge in place.groups()[:2]):
            fault(line, "does not begin on the grid")


def main():
    check_colours()
    check_grounds()
    check_dark_parts()
    check_constants()
    check_page()
    for name in PANELS:
        if (ROOT / "app" / name).exists():
            check_panel(ROOT / "app" / name)
    print("\n".join(faults) if faults else f"{len(COLOURS)} colours can be told apart")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(main())
