#!/usr/bin/env python3
"""Builds the panel of a hall in the program, by mouse and keyboard: eight strips with meters, an equaliser and a
crossover on a layer of their own, a clock, presets. In the middle the program is killed and goes on from its copy. Then
the panel is saved, opened again and operated.

Usage: hall.py EYES APPLICATION [--pictures FOLDER]
"""

import argparse
import pathlib
import shutil
import subprocess
import sys
import tempfile
import time

from hand import Eyes, Failed, Hand, middle, wait_for

MOST_GESTURES = 150
HERE = pathlib.Path(__file__).resolve().parent
PROPERTIES, PALETTE = 140, 103  # of the program's resource.h
CHANNEL_STATUS, ROW_COUNT, SNAPSHOT_NAME, SNAPSHOT_TAKE = 170, 171, 121, 1121
CHANNELS = 8


class Hall:
    def __init__(self, eyes, application, folder, pictures):
        self.eyes = Eyes(eyes)
        self.hand = Hand(self.eyes)
        self.application = application
        self.folder = folder
        self.pictures = pictures
        self.program = None

    # The program.

    def start(self, *arguments):
        self.program = subprocess.Popen(
            ["wine", str(self.application / "Panel.exe"), *arguments, "--recovery", windows_name(self.folder / "recovery"),
             "--settings", windows_name(self.folder / "settings")],
            cwd=self.folder, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)

    def kill(self):
        self.program.kill()
        self.program.wait()
        wait_for(lambda: not self.eyes.ask("caption"), "the killed program's window to go")

    def end(self):
        if self.program and self.program.poll() is None:
            self.program.kill()
        self.eyes.close()

    def picture(self, name):
        if self.pictures:
            subprocess.run(["xdotool", "sleep", "1"], check=True)
            subprocess.run(["import", "-window", "root", "-define", "trim:edges=south,east", "-trim", "+repage",
                            str(self.pictures / f"hall-{name}.png")], check=True)

    # Steps of several gestures.

    def place(self, entry, name, left, top):
        """Drags an entry of the palette to a place on the panel."""
        tree = self.eyes.see("part", f"{PALETTE}")
        for notches in (6, 6, 6, -30):
            if self.eyes.ask("palette", entry):
                break
            self.hand.wheel(tree, notches)
            rest()
        corner = self.eyes.see("control")
        self.hand.drag(middle(self.eyes.see("palette", entry)), (corner[0] + left, corner[1] + top))
        self.eyes.see("control", name)

    def set(self, **values):
        """Types properties of what is selected, one after the other."""
        pane = self.eyes.see("part", f"{PROPERTIES}")
        for name, value in values.items():
            for notches in (20, -20):
                if self.eyes.ask("property", name):
                    break
                self.hand.wheel(pane, notches)
                rest()
            self.hand.click(self.eyes.see("property", name))
            self.hand.type(value)
            if name == list(values)[-1] or "*" in value:  # the list of what is found lies over the next one
                self.hand.key("Return")
        for name, value in values.items():
            wait_for(lambda: self.eyes.ask("value", name) == value, f"{name} to be {value}")

    def select(self, *names):
        for index, name in enumerate(names):
            self.hand.click(self.eyes.see("control", name), "shift" if index else None)

    def menu(self, letter, entry):
        self.hand.key(f"alt+{letter}")
        self.hand.key(entry)

    def copy_beside(self):
        self.hand.key("ctrl+shift+d")
        self.eyes.see("window", "Duplicate in a Row")
        self.hand.key("Return")
        wait_for(lambda: not self.eyes.ask("window", "Duplicate in a Row"), "the dialog to go")

    def saved(self):
        return (self.folder / "Hall.panel").read_text(encoding="cp1252") if (self.folder / "Hall.panel").exists() else ""


def rest():
    """The program scrolls meanwhile; whether it did is seen by whoever looks next."""
    time.sleep(0.4)


def windows_name(path):
    return "Z:" + str(path).replace("/", "\\")


def begin(hall):
    """An empty panel, edited in the whole screen, that gets a title, a size and a ground."""
    hall.start("--devices", windows_name(hall.folder / "Hall.devices"))
    hall.eyes.see("caption")
    hall.hand.key("ctrl+n")
    hall.eyes.see("window", "New Panel")
    hall.hand.key("Return")
    enlarge(hall)
    hall.picture("new")
    hall.set(background=r".\Controls\Panel_dark.png", size="776,436", title="Town Hall")


def edit(hall):
    """With the window over the whole screen."""
    hall.eyes.see("caption")
    hall.hand.key("F5")
    enlarge(hall)


def enlarge(hall):
    hall.eyes.see("part", f"{PROPERTIES}")
    hall.hand.key("alt+space")
    hall.hand.key("x")
    hall.eyes.see("property", "title")


def strips(hall):
    """One strip with its meter, bound and copied."""
    hand, eyes = hall.hand, hall.eyes
    hall.place("Mixer Strip", "Mixer Strip 1", 16, 64)
    hall.picture("strip")
    hand.key("ctrl+k")
    eyes.see("window", "Bind Channel")
    wait_for(lambda: " bindings in 1 selected" in (eyes.ask("text", f"{CHANNEL_STATUS} Bind Channel") or ""), "bindings")
    hall.picture("bind")
    hand.key("Return")
    wait_for(lambda: not eyes.ask("window", "Bind Channel"), "the dialog to go")
    hall.place("Meter", "Meter 1", 68, 96)
    hall.set(properties="-60,6", bitmap=r".\Controls\METER_16x160.bmp", function="MIX*level1")
    hall.select("Mixer Strip 1", "Meter 1")
    hand.key("ctrl+shift+d")
    eyes.see("window", "Duplicate in a Row")
    hand.type(f"{CHANNELS - 1}")
    wait_for(lambda: eyes.ask("text", f"{ROW_COUNT} Duplicate") == f"{CHANNELS - 1}", "the number of copies")
    hall.picture("row")
    hand.key("Return")
    eyes.see("control", f"Meter {CHANNELS}")
    hall.picture("strips")


def go_on_after_a_kill(hall):
    """The program ends in the midst of the work, and offers its copy."""
    folder = hall.folder / "recovery"
    wait_for(lambda: any(f"Meter {CHANNELS}*function".encode() in copy.read_bytes() for copy in folder.glob("*.copy")),
             "the copy of what was edited")
    hall.kill()
    hall.start()
    hall.eyes.see("window", "Panel")
    wait_for(lambda: not hall.eyes.ask("caption"), "the question before the window")
    hall.picture("recovered")
    hall.hand.key("Return")
    edit(hall)
    hall.eyes.see("control", f"Meter {CHANNELS}")


def layers(hall):
    """The strips on one layer; in their place, on the other one, equaliser and crossover."""
    hand, eyes = hall.hand, hall.eyes
    hand.key("ctrl+a")
    hall.menu("v", "l")
    name_layer(hall, 1, "Mix", put=True)
    name_layer(hall, 2, "EQ")
    hand.key("ctrl+space")
    wait_for(lambda: not eyes.ask("control", "Meter 1"), "the strips to be hidden")
    hand.key("Escape")
    wait_for(lambda: not eyes.ask("window", "Layers"), "the list of layers to go")
    hall.place("Equalizer View", "Equalizer View 1", 16, 64)
    hall.set(datatype="channeleq", function="EQ*band1;EQ*band2;EQ*band3;EQ*band4")
    hall.place("Crossover View", "Crossover View 1", 272, 64)
    hall.set(function="XO*filters1;XO*filters2", function1="XO*gain1;XO*gain2")
    hand.key("ctrl+a")
    hall.picture("equaliser")
    hall.menu("v", "l")
    hand.click(eyes.see("row", "2 Layers"))
    hand.key("ctrl+p")
    hand.key("ctrl+h")
    eyes.see("control", "Meter 1")
    hall.picture("layers")
    hand.key("Escape")
    wait_for(lambda: not eyes.ask("window", "Layers"), "the list of layers to go")


def name_layer(hall, row, name, put=False):
    hall.hand.click(hall.eyes.see("row", f"{row} Layers"))
    if put:
        hall.hand.key("ctrl+p")
    hall.hand.key("F2")
    hall.hand.type(name)
    hall.hand.key("Return")


def buttons(hall):
    """Which layer is shown, which preset is recalled; a clock."""
    hall.place("Radio Button", "Radio Button 1", 16, 16)
    hall.set(caption="Mix", onvalue="1", style="button", connection="*page")
    hall.copy_beside()
    hall.set(caption="EQ", onvalue="2")
    hall.place("Push Button", "Push Button 1", 480, 16)
    hall.set(caption="Day", click="snapshot=Day,500")
    hall.copy_beside()
    hall.set(caption="Night", click="snapshot=Night,500")
    hall.picture("preset")
    hall.place("Clock", "Clock 1", 488, 324)
    hall.set(textcolor="0x00e0e0e0")


def save(hall):
    hall.hand.key("ctrl+s")
    hall.eyes.see("window", "Save")
    hall.hand.type(windows_name(hall.folder / "Hall.panel"))
    hall.hand.key("Return")
    wait_for(lambda: "Clock 1" in hall.saved(), "the file")
    wait_for(lambda: "*" not in hall.eyes.see("caption"), "the panel to be as the file")
    hall.hand.key("F5")


def presets(hall):
    """Two snapshots of the devices, with a fader moved in between."""
    hand, eyes = hall.hand, hall.eyes
    take_snapshot(hall, "Day")
    hand.click(eyes.see("control", "Mixer Strip 1*Fader"))
    hand.key("End")
    hall.hand.click(eyes.see("control", "Radio Button 2"))
    eyes.see("control", "Crossover View 1")
    take_snapshot(hall, "Night")
    if gain(hall, "Night") == gain(hall, "Day"):
        raise Failed("the fader was not moved")
    hand.click(eyes.see("control", "Push Button 1"))
    rest()
    take_snapshot(hall, "Seen")
    if gain(hall, "Seen") == gain(hall, "Night"):
        raise Failed(f"the recalled preset has {gain(hall, 'Seen')} dB")


def take_snapshot(hall, name):
    hall.menu("f", "p")
    hall.hand.double_click(hall.eyes.see("part", f"{SNAPSHOT_NAME} Snapshots"))
    hall.hand.type(name)
    hall.hand.click(hall.eyes.see("part", f"{SNAPSHOT_TAKE} Snapshots"))
    wait_for(lambda: (hall.folder / f"{name}.snapshot").exists(), f"the snapshot {name}")
    hall.picture("snapshots")
    hall.hand.key("Escape")
    wait_for(lambda: not hall.eyes.ask("window", "Snapshots"), "the snapshots to go")


def gain(hall, snapshot):
    """Of the first channel."""
    lines = (hall.folder / f"{snapshot}.snapshot").read_text(encoding="cp1252").splitlines()
    return next(line.split("=")[1] for line in lines if line.startswith("MIX*gain1="))


def open_again(hall):
    """What was saved is there, and works."""
    hall.program.kill()
    hall.program.wait()
    wait_for(lambda: not hall.eyes.ask("caption"), "the window to go")
    hall.start("Hall.panel")
    hall.eyes.see("control", f"Meter {CHANNELS}")
    hall.hand.click(hall.eyes.see("control", "Radio Button 2"))
    hall.eyes.see("control", "Crossover View 1")
    wait_for(lambda: not hall.eyes.ask("control", "Meter 1"), "the strips to give way")
    hall.hand.click(hall.eyes.see("control", "Radio Button 1"))
    hall.eyes.see("control", "Meter 1")
    hall.picture("panel")


def check_file(hall):
    """As it would have been typed."""
    saved = hall.saved()
    wanted = [f"Mixer Strip {i}*Fader*function=MIX*gain{i}" for i in range(1, CHANNELS + 1)]
    wanted += [f"Mixer Strip {i}*MUTE*function=MIX*mute{i}" for i in range(1, CHANNELS + 1)]
    wanted += [f"Meter {i}*function=MIX*level{i}" for i in range(1, CHANNELS + 1)]
    wanted += [f"Meter {i}*layer=u1" for i in range(1, CHANNELS + 1)]
    wanted += ["Equalizer View 1*function=EQ*band1;EQ*band2;EQ*band3;EQ*band4", "Equalizer View 1*layer=u2",
               "Crossover View 1*function=XO*filters1;XO*filters2", "Crossover View 1*function1=XO*gain1;XO*gain2",
               "Crossover View 1*layer=u2", "layernames=u1=Mix;u2=EQ", "Push Button 1*click=snapshot=Day,500",
               "Push Button 2*click=snapshot=Night,500", "Radio Button 1*connection=*page", "Radio Button 2*onvalue=2"]
    missing = [line for line in wanted if line not in saved.splitlines()]
    if missing or "CLOCK" not in saved:
        raise Failed(f"the file lacks {missing}:\n{saved}")


def build(hall):
    begin(hall)
    strips(hall)
    go_on_after_a_kill(hall)
    layers(hall)
    buttons(hall)
    save(hall)
    check_file(hall)
    presets(hall)
    open_again(hall)


def main():
    parser = argparse.ArgumentParser()
    parser.add_argument("eyes")
    parser.add_argument("application", type=pathlib.Path)
    parser.add_argument("--pictures", type=pathlib.Path)
    options = parser.parse_args()
    with tempfile.TemporaryDirectory() as scratch:
        folder = pathlib.Path(scratch)
        shutil.copy(HERE / "Hall.devices", folder)
        hall = Hall(options.eyes, options.application, folder, options.pictures)
        try:
            build(hall)
            if hall.hand.gestures > MOST_GESTURES:
                raise Failed(f"{hall.hand.gestures} gestures")
        except Failed as failure:
            print(f"after {hall.hand.gestures} gestures: {failure}")
            return 1
        finally:
            hall.end()
    print(f"{hall.hand.gestures} gestures")
    return 0


if __name__ == "__main__":
    sys.exit(main())
