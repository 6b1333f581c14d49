#!/usr/bin/env python3
"""Checks the test mixer with OSC programs that nobody here wrote (oscsend, oscdump), and its faults one by one."""

import contextlib
import os
import pathlib
import re
import shutil
import socket
import struct
import subprocess
import sys
import time

sys.dont_write_bytecode = True
import mixer

PATIENCE = 30  # seconds; far more than anything here takes on a busy machine
FADER = "/ch/01/mix/fader"


def expect(condition, what):
    if not condition:
        sys.exit("check: " + str(what))


def wait_for(condition, what):
    end = time.monotonic() + PATIENCE
    while not condition():
        expect(time.monotonic() < end, what)
        time.sleep(0.02)


class Client:
    """A socket with an address of its own, as every client of the mixer is one."""

    def __init__(self, port, at=0):
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.setsockopt(socket.SOL_SOCKET, socket.SO_REUSEADDR, 1)
        self.socket.bind(("127.0.0.1", at))
        self.port = port

    def send(self, *parts):
        self.socket.sendto(mixer.message(*parts), ("127.0.0.1", self.port))

    def hear(self, seconds=PATIENCE):
        """The next message; None when none comes."""
        self.socket.settimeout(seconds)
        try:
            data, self.heard_from = self.socket.recvfrom(65536)
            return data
        except TimeoutError:
            return None

    def ask(self, *parts):
        self.send(*parts)
        return self.hear()

    def value(self, address=FADER):
        answer = self.ask(address)
        expect(answer is not None, "no answer for " + address)
        return mixer.read_message(answer)[2][0]


@contextlib.contextmanager
def running(*options):
    program = subprocess.Popen([sys.executable, mixer.__file__, "--lifetime", "120", *options], text=True,
                               stdout=subprocess.PIPE)
    try:
        port, control = map(int, re.findall(r"\d+", program.stdout.readline()))
        operator = Client(control)

        def command(text):
            operator.socket.sendto(text.encode(), ("127.0.0.1", control))
            answer = operator.hear()
            expect(answer is not None and not answer.startswith(b"error"), (text, answer))
            return answer.decode()

        yield port, command
    finally:
        program.kill()
        program.wait()
        program.stdout.close()


def check_foreign_programs():
    tools = shutil.which("oscsend"), shutil.which("oscdump")
    if None in tools:
        print("skipped: oscsend and oscdump (package liblo-tools) are not installed")
        sys.exit(1 if os.environ.get("CI") else 77)
    with running() as (port, command):
        subprocess.run([tools[0], "localhost", str(port), FADER, "f", "0.25"], check=True)
        subprocess.run([tools[0], "localhost", str(port), "/ch/01/mix/on", "i", "0"], check=True)
        subprocess.run([tools[0], "localhost", str(port), "/ch/01/config/name", "s", "Kick"], check=True)
        wait_for(lambda: command("get /ch/01/config/name") == "Kick", "oscsend is not understood")
        expect((command("get " + FADER), command("get /ch/01/mix/on")) == ("0.25", "0"), "oscsend is misread")
        expect(command("violations") == "0", command("violations"))

        # What is sent to the place of a client is read there by the other program.
        client = Client(port)
        place = client.socket.getsockname()[1]
        client.send("/xremote")
        client.send("/meters", "s", "/meters/6")
        wait_for(lambda: command("clients") == "1", "nobody follows")
        client.socket.close()
        dump = subprocess.Popen([tools[1], "-L", str(place)], text=True, stdout=subprocess.PIPE)
        try:
            wanted = {"%s f 0.5" % FADER, "/ch/02/config/name s \"Snare\"", "/ch/03/mix/on i 0"}
            wanted_meters = re.compile(r"/meters/6 b \[20 byte blob\]")
            seen, meters = set(), False
            end = time.monotonic() + PATIENCE
            while (wanted - seen or not meters) and time.monotonic() < end:
                # The first ones may come before the program listens.
                command("set " + FADER + " 0.5")
                command("set /ch/02/config/name Snare")
                command("set /ch/03/mix/on 0")
                line = re.sub(r"^\S+ ", "", dump.stdout.readline().strip())
                line = re.sub(r"^([^ ]+ f 0\.5)0*$", r"\1", line)
                seen.add(line)
                meters = meters or wanted_meters.search(line) is not None
            expect(not wanted - seen and meters, (wanted - seen, seen))
        finally:
            dump.kill()
            dump.wait()
            dump.stdout.close()


def check_conversation():
    with running() as (port, command):
        clients = [Client(port) for _ in range(5)]
        one, two = clients[:2]
        address, tags, texts = mixer.read_message(one.ask("/xinfo"))
        expect((address, tags, texts[2]) == ("/xinfo", "ssss", "X32"), texts)
        expect(one.ask(FADER) == bytes.fromhex("2f63682f30312f6d69782f6661646572000000002c660000")
               + struct.pack(">f", 767 / 1023), "an answer in the wrong form")
        for number, client in enumerate(clients):
            client.send("/xremote")
            client.value()  # one after the other
            expect(command("clients") == str(min(number + 1, 4)), "clients")
        followed = time.monotonic()
        one.send(FADER, "f", 0.5)
        expect([mixer.read_message(client.hear())[2] for client in clients[1:4]] == [[0.5]] * 3, "changes are not told")
        one.send(FADER, "f", 0.5)  # the same again is told to nobody
        expect([client.hear(0.05) for client in clients] == [None] * 5, "told too much")

        two.send("/meters", "si", "/meters/1", 2)
        count, first, second = struct.unpack_from("<iff", two.hear()[-97 * 4:])
        expect((count, first, round(second, 4)) == (96, 1.0, 0.8913), "meters")

        expect(command("violations") == "0", command("violations"))
        one.send(FADER, "i", 1)
        one.send(FADER, "f", 1.5)
        one.send("/ch/01/mix/on", "i", 2)
        one.send("/ch/01/config/name", "s", "thirteen long")
        one.socket.sendto(b"/xinfo\0\0", ("127.0.0.1", port))
        expect(one.hear() is not None, "a message without tags")
        expect(command("violations").startswith("5 | "), command("violations"))
        expect(command("writes " + FADER).split()[0] == "4", "writes are miscounted")
        wait_for(lambda: command("clients") == "0", "following never ends")
        expect(time.monotonic() - followed > 9.5, "following ends too early")


def check_faults():
    with running("--seed", "7") as (port, command):
        client = Client(port)
        client.value()
        for silencing, undone in (("silent 1", "silent 0"), ("drop 100", "drop 0"), ("deaf /ch/01", "deaf "),
                                  ("down", "up")):
            command(silencing)
            client.send(FADER)
            expect(client.hear(0.2) is None, silencing)
            command(undone)
            client.value()
        command("double 100")
        expect(client.ask(FADER) and client.hear(), "nothing comes twice")
        command("double 0")
        while client.hear(0.1):
            pass

        command("otherport 1")
        expect(client.ask(FADER) and client.heard_from[1] != port, "the port is the same")
        command("otherport 0")
        command("model DUMMY")
        expect(b"DUMMY" in client.ask("/xinfo"), "model")

        command("reorder 50")
        addresses = ["/ch/%02d/mix/fader" % channel for channel in range(1, 33)]
        for address in addresses:
            client.send(address)
        answers = [mixer.read_message(client.hear())[0] for _ in addresses]
        expect(answers != addresses and sorted(answers) == addresses, "the order is " + str(answers))
        command("reorder 0")

        command("delay 100")
        command("lateness 150")
        before = time.monotonic()
        client.value()
        expect(time.monotonic() - before > 0.25, "nothing is late")
        command("delay 0")

        for fault, given, kept in (("clamp", 1.5, 1.0), ("frozen", 0.25, 1.0)):
            command(fault + " 1")
            client.send(FADER, "f", given)
            wait_for(lambda: client.value() == kept, fault)
            command(fault + " 0")

        client.send("/xremote")
        command("restart 0.1")
        wait_for(lambda: (client.send(FADER), client.hear(0.1))[1] is not None, "it did not come back")
        while client.hear(0.1):
            pass
        expect((round(client.value(), 4), command("clients")) == (0.7498, "0"), "it remembers")

        command("garbage 20000")
        expect(sum(client.hear() is not None for _ in range(2000)) == 2000, "no rubbish")


expect(len(mixer.start_values()) >= 5000, "addresses")
check_conversation()
check_faults()
check_foreign_programs()
