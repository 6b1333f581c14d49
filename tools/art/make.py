#!/usr/bin/env python3
"""Draws every picture of the application and the libraries' resources, the same bytes on every run.

  make.py                     write the files that changed
  make.py --check             only report files that differ; exit status 1 when there are any
  make.py --sheet FILE.png    a contact sheet of the pictures, enlarged on the panel colour, to look at
"""

import argparse
import sys
from pathlib import Path

sys.dont_write_bytecode = True  # no cache folders in the source tree

import appicon
import buttons
import classicons
import commandicons
import delaylamps
import dragcursor
import faders
import filterlist
import grounds
import icons
import knobs
import ledkeys
import leds
import meters
import miniviews
import panels
import stagehands
import status
import switches
from canvas import Canvas, drawn_at
from imagefile import png
from palette import PANEL_DARK, PANEL_LIGHT
from picture import Picture
from shapes import everywhere

ROOT = Path(__file__).resolve().parents[2]
MODULES = (
    knobs,
    faders,
    meters,
    buttons,
    switches,
    ledkeys,
    leds,
    panels,
    grounds,
    stagehands,
    icons,
    classicons,
    commandicons,
    status,
    miniviews,
    appicon,
    filterlist,
    delaylamps,
    dragcursor,
)


# The pictures of controls that a panel of larger art has in other sizes too, by the beginnings of their names.
FACES = ("Knob.", "KNOB_", "FADER_", "METER_", "BUTTON_", "SWITCHBUTTON_", "LED_", "ROCKER_", "CURTAIN_")
FACE_MODULES = (knobs, faders, meters, buttons, switches, ledkeys, leds, stagehands)
LARGER = (150, 200)  # percent


def larger_pictures(percent):
    """Below a folder of that name, where the control library looks for them."""
    for module in FACE_MODULES:
        with drawn_at(percent / 100):
            drawn = [picture for picture in module.pictures() if Path(picture.path).name.startswith(FACES)]
        for picture in drawn:
            path = Path(picture.path)
            images = tuple(image.in_pixels() for image in picture.images)
            yield Picture(str(path.parent / str(percent) / (path.stem + ".png")), images, png)


def all_pictures():
    for module in MODULES:
        yield from module.pictures()
    for percent in LARGER:
        yield from larger_pictures(percent)


def write_changed(pictures):
    for picture in pictures:
        path = ROOT / picture.path
        data = picture.encoded()
        if path.exists() and path.read_bytes() == data:
            continue
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(data)
        print(picture.path)


def report_differences(pictures):
    """The paths whose file is missing or not what this program draws."""
    differing = []
    for picture in pictures:
        path = ROOT / picture.path
        if not path.exists() or path.read_bytes() != picture.encoded():
            differing.append(picture.path)
    return differing


def contact_sheet(pictures, scale, background, width=1200, gap=12):
    """All images left to right in rows, in the order of the files."""
    placed = []
    left, top, row_height = gap, gap, 0
    for picture in pictures:
        for image in picture.images:
            enlarged = image.enlarged(scale)
            if left > gap and left + enlarged.width + gap > width:
                left, top, row_height = gap, top + row_height + gap, 0
            placed.append((enlarged, left, top))
            left += enlarged.width + gap
            row_height = max(row_height, enlarged.height)
    sheet = Canvas(width, top + row_height + gap)
    sheet.fill(everywhere, background)
    for image, at_left, at_top in placed:
        sheet.draw(image, at_left, at_top)
    return sheet


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--check", action="store_true")
    parser.add_argument("--sheet", metavar="FILE.png", type=Path)
    parser.add_argument("--only", default="", help="only pictures whose path contains this text")
    parser.add_argument("--scale", type=int, default=6, help="enlargement on the sheet, default 6")
    parser.add_argument("--light", action="store_true", help="the sheet on the light panel colour")
    options = parser.parse_args()

    pictures = [picture for picture in all_pictures() if options.only in picture.path]
    if options.sheet:
        background = PANEL_LIGHT if options.light else PANEL_DARK
        options.sheet.write_bytes(png(contact_sheet(pictures, options.scale, background)))
    elif options.check:
        differing = report_differences(pictures)
        print("\n".join(differing) if differing else f"{len(pictures)} files up to date")
        return 1 if differing else 0
    else:
        write_changed(pictures)
    return 0


if __name__ == "__main__":
    sys.exit(main())
