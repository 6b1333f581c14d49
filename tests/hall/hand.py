"""Mouse and keyboard of somebody who works with the program, and what they see of it."""

import subprocess
import time

PATIENCE = 90
DOUBLE_CLICK = 0.7  # seconds after which a press is none that belongs to the one before
STEPS = 6  # of a drag


class Failed(Exception):
    pass


def wait_for(condition, what):
    """The first true answer."""
    end = time.monotonic() + PATIENCE
    while True:
        answer = condition()
        if answer:
            return answer
        if time.monotonic() > end:
            raise Failed(f"waited in vain for {what}")
        time.sleep(0.05)


def middle(place):
    left, top, right, bottom = place
    return (left + right) // 2, (top + bottom) // 2


class Eyes:
    def __init__(self, program):
        self.process = subprocess.Popen(["wine", program], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL, text=True)

    def close(self):
        self.process.stdin.close()
        self.process.wait(PATIENCE)

    def ask(self, question, argument=""):
        """The text after "=", a place as four numbers, or None."""
        print(question, argument, file=self.process.stdin, flush=True)
        answer = self.process.stdout.readline().rstrip("\r\n")
        if answer in ("", "-", "?"):
            return None
        return answer[1:] if answer.startswith("=") else tuple(map(int, answer.split()))

    def see(self, question, argument=""):
        return wait_for(lambda: self.ask(question, argument), f"{question} {argument}")


class Hand:
    """Each method is one gesture, and counted."""

    def __init__(self, eyes):
        self.eyes = eyes
        self.gestures = 0
        self.pressed_at = 0

    def xdotool(self, *arguments):
        subprocess.run(["xdotool", *map(str, arguments)], check=True, timeout=PATIENCE)

    def press(self, x, y):
        time.sleep(max(0.0, self.pressed_at + DOUBLE_CLICK - time.monotonic()))
        self.gestures += 1
        self.xdotool("mousemove", x, y)
        self.pressed_at = time.monotonic()

    def click(self, place, key=None):
        self.press(*(middle(place) if len(place) == 4 else place))
        held = ["keydown", key] if key else []
        self.xdotool(*held, "click", 1, *(["keyup", key] if key else []))
        self.pressed_at = time.monotonic()

    def double_click(self, place):
        self.press(*middle(place))
        self.xdotool("click", "--repeat", 2, "--delay", 30, 1)
        self.pressed_at = time.monotonic()

    def drag(self, start, end):
        self.press(*start)
        self.xdotool("mousedown", 1)
        for step in range(1, STEPS + 1):
            at = [a + (b - a) * step // STEPS for a, b in zip(start, end)]
            self.xdotool("mousemove", *at, "sleep", 0.03)
        self.xdotool("mouseup", 1)
        self.pressed_at = time.monotonic()

    def wheel(self, place, notches):
        """A turn of the wheel, down by so many notches."""
        self.gestures += 1
        self.xdotool("mousemove", *middle(place), "click", "--repeat", abs(notches), "--delay", 20, 5 if notches > 0 else 4)

    def key(self, name):
        self.gestures += 1
        self.xdotool("key", name)

    def type(self, text):
        self.gestures += 1
        self.xdotool("type", "--delay", 15, "--", text)
