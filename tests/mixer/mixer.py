#!/usr/bin/env python3
"""A digital mixer with 32 inputs that speaks Open Sound Control over UDP, as far as panels are concerned.

It holds values and tells of them; no sound comes out of it. Like the desks it stands for it checks next to
nothing, but it counts what no client should ever send. Its faults can be switched on at the start (--drop 30)
and while it runs: the control port takes the same words as a text ("drop 30") and answers each with a line.

  get ADDRESS            its value                  drop N      percent of the datagrams that are lost
  set ADDRESS VALUE      moves it at the desk       double N    ... that come twice
  writes ADDRESS         how often it was set, how  delay N     ... that come late, by --lateness milliseconds
                         often in the worst second  reorder N   ... that are overtaken by the next one
  step                   the farthest that one write has moved a number of the scale 0 to 1, and its address,
                         since this was last asked
  clients                who follows changes        garbage N   rubbish a second to everybody who ever spoke
  received               datagrams so far           silent 0|1  neither hears nor answers
  violations             what should not have come  clamp 0|1   limits and rounds what is set
  down, up, restart [S]  off; on with the start's   otherport 0|1  answers come from another port
                         values; off for S seconds  deaf PREFIX    does not know such addresses; empty: all
  quit                   ends                       frozen 0|1  takes nothing that is set
                                                    model TEXT  what it says that it is
"""
import argparse
import heapq
import itertools
import math
import random
import select
import socket
import struct
import time
from collections import defaultdict, deque

FOLLOW_SECONDS, METER_SECONDS, METER_EVERY, MOST_FOLLOWERS, LARGEST_DATAGRAM = 10, 10, 0.05, 4, 512

# Steps of the scale of a number, by the last word of its address, and what it starts with; others: 1000, 0.5.
STEPS = {"fader": (1023, 0.75), "level": (160, 0.75), "trim": (144, 0.5), "gain": (144, 0.25), "pan": (100, 0.5),
         "f": (200, 0.5), "g": (120, 0.5), "q": (71, 0.5), "hpf": (100, 0.2), "time": (4997, 0.0)}
LARGEST = {"color": 15, "icon": 74, "source": 64, "type": 5, "dca": 255, "mute": 63, "sel": 22, "keysrc": 64}
START = {"on": 1, "type": 2, "st": 1}

EQ = "eq/on:i " + " ".join("eq/{0}/type:i eq/{0}/f:f eq/{0}/g:f eq/{0}/q:f".format(band) for band in range(1, 7)) + " "
GATE = "gate/on:i gate/thr:f gate/range:f gate/attack:f gate/hold:f gate/release:f gate/keysrc:i "
DYNAMICS = ("dyn/on:i dyn/thr:f dyn/ratio:f dyn/knee:f dyn/mgain:f dyn/attack:f dyn/hold:f dyn/release:f dyn/mix:f "
            "dyn/keysrc:i ")
CONFIG = "config/name:s config/icon:i config/color:i "
INPUT = CONFIG + "config/source:i grp/dca:i grp/mute:i preamp/trim:f preamp/invert:i preamp/hpon:i preamp/hpf:f "
MIX = "mix/on:i mix/fader:f mix/st:i mix/pan:f mix/mono:i mix/mlevel:f "


def sends(count):
    return " ".join("mix/{0:02}/on:i mix/{0:02}/level:f".format(send) for send in range(1, count + 1))


STRIPS = [  # address with the number's place, first, last, what stands below it
    ("/ch/{:02}", 1, 32, INPUT + "delay/on:i delay/time:f " + GATE + DYNAMICS + EQ + MIX + sends(16)),
    ("/auxin/{:02}", 1, 8, INPUT + EQ + MIX + sends(16)),
    ("/fxrtn/{:02}", 1, 8, CONFIG + EQ + MIX + sends(16)),
    ("/bus/{:02}", 1, 16, CONFIG + DYNAMICS + EQ + MIX + sends(6)),
    ("/mtx/{:02}", 1, 6, CONFIG + DYNAMICS + EQ + MIX),
    ("/main/st", 0, 0, CONFIG + DYNAMICS + EQ + MIX),
    ("/main/m", 0, 0, CONFIG + DYNAMICS + EQ + MIX),
    ("/dca/{}", 1, 8, "on:i fader:f config/name:s config/color:i"),
    ("/headamp/{:03}", 0, 127, "gain:f phantom:i"),
    ("/config/mute/{}", 1, 6, ":i"),
    ("/-stat/solosw/{:02}", 1, 80, ":i"),
]
METERS = {"/meters/0": 70, "/meters/1": 96, "/meters/2": 49, "/meters/3": 22, "/meters/4": 82, "/meters/5": 27,
          "/meters/6": 4, "/meters/15": 50, "/meters/16": 48}


def start_values():
    values = {}
    for pattern, first, last, fields in STRIPS:
        for number in range(first, last + 1):
            for field in fields.split():
                name, kind = field.split(":")
                address = (pattern.format(number) + "/" + name).rstrip("/")
                word = name.split("/")[-1]
                steps, start = STEPS.get(word, (1000, 0.5))
                values[address] = ((kind, START.get(word, 0)) if kind == "i" else (kind, "") if kind == "s" else
                                   (kind, round(start * steps) / steps))
    return values


def padded(data):
    return data + b"\0" * (4 - len(data) % 4)


def message(address, tags="", *arguments):
    data = padded(address.encode()) + padded(b"," + tags.encode())
    for tag, value in zip(tags, arguments):
        if tag == "b":
            data += struct.pack(">i", len(value)) + value + b"\0" * (-len(value) % 4)
        else:
            data += padded(value.encode("latin-1")) if tag == "s" else struct.pack(">" + tag, value)
    return data


def read_message(data):
    """Address, tags (None when there is no tag string), arguments. ValueError or struct.error when it is none."""
    def text(at):
        end = data.index(b"\0", at)
        return data[at:end].decode("latin-1"), end + 4 - end % 4

    if len(data) % 4 or not data.startswith(b"/"):
        raise ValueError
    address, at = text(0)
    if at == len(data):
        return address, None, []
    tags, at = text(at)
    arguments = []
    for tag in tags[1:]:
        if tag == "s":
            value, at = text(at)
        elif tag in "if":
            value, = struct.unpack_from(">" + tag, data, at)
            at += 4
        else:
            raise ValueError
        arguments.append(value)
    return address, tags[1:], arguments


class Mixer:
    def __init__(self, options):
        self.faults = options
        self.control = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.control.bind((options.host, options.control))
        self.other = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.other.bind((options.host, 0))
        self.random = random.Random(options.seed)
        self.desk, self.port, self.schedule, self.order = None, options.port, [], itertools.count()
        self.received, self.violations, self.writes, self.garbage_owed = 0, [], defaultdict(deque), 0.0
        self.begun = time.monotonic()
        self.up()

    def up(self):
        if self.desk is None:
            self.desk = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
            self.desk.setsockopt(socket.SOL_SOCKET, socket.SO_RCVBUF, 1 << 20)
            self.desk.bind((self.faults.host, self.port))
            self.port = self.desk.getsockname()[1]
            self.values, self.followers, self.meters, self.known = start_values(), {}, {}, set()

    def down(self):
        if self.desk is not None:
            self.desk.close()
        self.desk, self.schedule, self.held = None, [], None

    farthest = (0.0, "")
    held = None  # a datagram that waits to be overtaken

    def at(self, when, what):
        heapq.heappush(self.schedule, (when, next(self.order), what))

    def chance(self, percent):
        return percent > 0 and self.random.random() * 100 < percent

    def disturbed(self, carry):
        """Carries one datagram over the network as it is: lost, twice, late, in another order."""
        faults = self.faults
        if faults.silent or self.chance(faults.drop):
            return
        for _ in range(2 if self.chance(faults.double) else 1):
            if self.chance(faults.delay):
                self.at(time.monotonic() + faults.lateness / 1000, carry)
            elif self.held is None and self.chance(faults.reorder):
                self.held = carry
                self.at(time.monotonic() + 0.02, self.release)
            else:
                carry()
                self.release()

    def release(self):
        held, self.held = self.held, None
        if held is not None:
            held()

    def send(self, data, client):
        self.disturbed(lambda: self.carry(data, client))

    def carry(self, data, client):
        sender = self.other if self.faults.otherport else self.desk
        if sender is not None:
            try:
                sender.sendto(data, client)
            except OSError:
                pass  # nobody listens there any more

    def violation(self, text):
        self.violations.append(text)

    def take(self, data, client):
        self.received += 1
        self.known.add(client)
        if len(data) > LARGEST_DATAGRAM:
            self.violation("%d bytes" % len(data))
        try:
            address, tags, arguments = read_message(data)
        except (ValueError, struct.error):
            return self.violation("no message: " + data[:40].hex())
        if tags is None:
            self.violation("no tags: " + address)
        host, model = self.desk.getsockname()[0], self.faults.model
        if address == "/xinfo":
            self.send(message(address, "ssss", host, "Test mixer", model, "4.06"), client)
        elif address == "/info":
            self.send(message(address, "ssss", "V2.05", "Test mixer", model, "4.06"), client)
        elif address == "/status":
            self.send(message(address, "sss", "active", host, "Test mixer"), client)
        elif address == "/xremote":
            self.followers = {who: until for who, until in self.followers.items() if until > time.monotonic()}
            if client in self.followers or len(self.followers) < MOST_FOLLOWERS:
                self.followers[client] = time.monotonic() + FOLLOW_SECONDS
        elif address == "/unsubscribe":
            self.followers.pop(client, None)
            self.meters = {block: wish for block, wish in self.meters.items() if wish[0] != client}
        elif address == "/meters" and arguments and arguments[0] in METERS:
            self.subscribe(client, arguments)
        elif address in self.values and not (self.faults.deaf and address.startswith(self.faults.deaf)):
            if arguments:
                self.write(address, tags, arguments, client)
            else:
                self.send(message(address, *self.values[address]), client)

    def write(self, address, tags, arguments, client):
        self.writes[address].append(time.monotonic())
        kind, old = self.values[address]
        if tags != kind:
            return self.violation("%s ,%s" % (address, tags))
        value, word = arguments[0], address.split("/")[-1]
        low, high = (0, 1) if kind == "f" else (0, LARGEST.get(word, 1))
        if len(value) > 12 if kind == "s" else not low <= value <= high:
            self.violation("%s %s" % (address, value))
        if self.faults.clamp and kind != "s":
            value = low if math.isnan(value) else min(max(value, low), high)
            steps = STEPS.get(word, (1000, 0))[0]
            value = round(value * steps) / steps if kind == "f" else value
        if kind == "f" and abs(value - old) > self.farthest[0]:
            self.farthest = abs(value - old), address
        if not self.faults.frozen and value != old:
            self.change(address, value, client)

    def change(self, address, value, by=None):
        self.values[address] = (self.values[address][0], value)
        for follower, until in self.followers.items():
            if until > time.monotonic() and follower != by:
                self.send(message(address, *self.values[address]), follower)

    def subscribe(self, client, arguments):
        block, factor = arguments[0], max(1, min(99, arguments[1])) if len(arguments) > 1 else 1
        wish = (client, time.monotonic() + METER_SECONDS, METER_EVERY * factor)
        isNew = block not in self.meters
        self.meters[block] = wish
        if isNew:
            self.send_meters(block)

    def level(self, block, index):
        """The amplitude of a value: -index dB. --lively: it moves, and the inputs follow faders and mutes."""
        if not self.faults.lively:
            return 10 ** (-index / 20)
        now = time.monotonic() - self.begun
        moving = -14 - index % 5 - 8 * math.sin(now * (0.7 + index % 7 / 5) + index) + self.random.uniform(-3, 3)
        strip = {"/meters/1": "/ch", "/meters/2": "/bus"}.get(block, "") + "/%02d/mix/" % (index + 1)
        fader, on = self.values.get(strip + "fader", ("f", 0.75))[1], self.values.get(strip + "on", ("i", 1))[1]
        return 10 ** ((moving + 40 * (fader - 0.75)) / 20) if on and fader > 0 else 0.0

    def send_meters(self, block):
        client, until, every = self.meters.get(block, (None, 0, 0))
        if client is None or until < time.monotonic():
            self.meters.pop(block, None)
            return
        values = [self.level(block, index) for index in range(METERS[block])]
        blob = struct.pack("<i%df" % len(values), len(values), *values)
        self.send(message(block, "b", blob), client)
        self.at(time.monotonic() + every, lambda: self.send_meters(block))

    def command(self, text):
        word, _, rest = text.partition(" ")
        if word == "get":
            return str(self.values[rest][1])
        if word == "set":
            address, _, value = rest.partition(" ")
            self.change(address, {"i": int, "f": float, "s": str}[self.values[address][0]](value))
        elif word == "writes":
            times = list(self.writes[rest])
            worst = max((sum(1 for other in times if 0 <= other - first < 1) for first in times), default=0)
            return "%d %d" % (len(times), worst)
        elif word == "step":
            answer, self.farthest = "%.5f %s" % self.farthest, (0.0, "")
            return answer
        elif word == "clients":
            return str(sum(1 for until in self.followers.values() if until > time.monotonic()))
        elif word == "received":
            return str(self.received)
        elif word == "violations":
            return " | ".join([str(len(self.violations))] + self.violations[:5])
        elif word in ("down", "restart", "quit"):
            self.down()
            if word == "quit":
                raise KeyboardInterrupt
            if word == "restart":
                self.at(time.monotonic() + float(rest or 0), self.up)
        elif word == "up":
            self.up()
        else:
            setattr(self.faults, word, type(getattr(self.faults, word))(rest))
        return "ok"

    def rubbish(self, seconds):
        """Random bytes, cut messages, and messages with wrong types."""
        self.garbage_owed = min(self.garbage_owed + self.faults.garbage * seconds, 2000)
        whole = message("/ch/01/mix/fader", "f", 0.5)
        while self.garbage_owed >= 1:
            self.garbage_owed -= 1
            data = self.random.choice((self.random.randbytes(self.random.randrange(64)), whole[:-3],
                                       message("/ch/01/mix/fader", "s", "loud"), b"#bundle\0" + b"\xff" * 40,
                                       message("/ch/02/mix/fader", "f", math.nan)))
            for client in self.known:
                self.carry(data, client)

    def run(self):
        last = time.monotonic()
        while True:
            now = time.monotonic()
            if self.faults.lifetime and now - self.begun > self.faults.lifetime:
                return
            while self.schedule and self.schedule[0][0] <= now:
                heapq.heappop(self.schedule)[2]()
            if self.desk is not None and not self.faults.silent:
                self.rubbish(now - last)
            last = now
            wait = 0.005 if self.faults.garbage else 0.25
            if self.schedule:
                wait = min(wait, max(0, self.schedule[0][0] - time.monotonic()))
            ready, _, _ = select.select([one for one in (self.desk, self.control) if one], [], [], wait)
            for one in ready:
                data, client = one.recvfrom(65536)
                if one is self.control:
                    try:
                        answer = self.command(data.decode().strip())
                    except (AttributeError, KeyError, ValueError) as error:
                        answer = "error: %r" % error
                    self.control.sendto(answer.encode(), client)
                elif self.desk is one:
                    self.disturbed(lambda data=data, client=client: self.desk and self.take(data, client))


def main():
    parser = argparse.ArgumentParser(description=__doc__, formatter_class=argparse.RawDescriptionHelpFormatter)
    parser.add_argument("--host", default="127.0.0.1")
    parser.add_argument("--port", type=int, default=0, help="0: a free one, which is printed")
    parser.add_argument("--control", type=int, default=0, help="0: a free one, which is printed")
    parser.add_argument("--model", default="X32")
    parser.add_argument("--deaf", default="", metavar="PREFIX")
    parser.add_argument("--seed", type=int, default=1, help="of all that happens by chance")
    parser.add_argument("--lifetime", type=float, default=0, help="seconds after which it ends by itself")
    parser.add_argument("--lateness", type=int, default=100, help="milliseconds")
    for number in ("drop", "double", "delay", "reorder", "garbage"):
        parser.add_argument("--" + number, type=int, default=0, metavar="N")
    for switch in ("silent", "clamp", "otherport", "frozen", "lively"):
        parser.add_argument("--" + switch, type=int, nargs="?", const=1, default=0, metavar="0|1")
    mixer = Mixer(parser.parse_args())
    print("port %d, control %d" % (mixer.port, mixer.control.getsockname()[1]), flush=True)
    try:
        mixer.run()
    except KeyboardInterrupt:
        pass


if __name__ == "__main__":
    main()
