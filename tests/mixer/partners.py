#!/usr/bin/env python3
"""Runs a program with what it is to talk to: the test mixer, and programs for Open Sound Control by others.

Usage: partners.py PROGRAM [ARGUMENT...]

The program finds in its environment OSMIR_MIXER (ports of the mixer and of its control) and OSMIR_PARTNERS, a port
that takes texts and answers each with one:

  synth start  the port of a synthesizer (zynaddsubfx), started anew    send PORT ADDRESS TYPES VALUES  by oscsend
  synth stop   kills it                                                 dump   what oscdump has printed, and its port

OSMIR_PARTNER_ROUNDS=50 makes the tests kill the mixer 50 times, and flood the panel for 50 seconds.
"none" is answered for programs that are not installed; in CI that is a failure here.
"""
import os
import pathlib
import re
import shutil
import signal
import socket
import subprocess
import sys
import tempfile
import threading
import time

HERE = pathlib.Path(__file__).resolve().parent
PROGRAMS = ("zynaddsubfx", "oscsend", "oscdump")


def free_port():
    with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as probe:
        probe.bind(("127.0.0.1", 0))
        return probe.getsockname()[1]


class Partners:
    def __init__(self):
        self.mixer = subprocess.Popen([HERE / "mixer.py", "--lifetime", "900"], stdout=subprocess.PIPE, text=True)
        self.ports = re.findall(r"\d+", self.mixer.stdout.readline())
        self.synth = None
        self.synth_port = free_port()
        self.dump = None
        self.dumped = tempfile.TemporaryFile("w+")
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.bind(("127.0.0.1", 0))
        threading.Thread(target=self.serve, daemon=True).start()

    def serve(self):
        while True:  # a text, an answer
            text, client = self.socket.recvfrom(4096)
            self.socket.sendto(self.command(text.decode().split(" ")).encode(), client)

    def command(self, words):
        program = {"synth": "zynaddsubfx", "send": "oscsend", "dump": "oscdump"}[words[0]]
        if shutil.which(program) is None:
            return "none"
        if words[0] == "synth":
            self.stop(self.synth)
            self.synth = None
            if words[1] == "start":
                self.synth = subprocess.Popen(
                    ["zynaddsubfx", "-U", "-I", "null", "-O", "null", "-P", str(self.synth_port)],
                    stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
            return str(self.synth_port)
        if words[0] == "send":
            subprocess.run(["oscsend", "127.0.0.1"] + words[1:], check=True)
            return "ok"
        if self.dump is None:
            self.dump_port = free_port()
            self.dump = subprocess.Popen(["oscdump", "-L", str(self.dump_port)], stdout=self.dumped)
            time.sleep(0.5)
        self.dumped.seek(0)
        return "%d\n%s" % (self.dump_port, self.dumped.read())

    @staticmethod
    def stop(process):
        if process is not None:
            process.send_signal(signal.SIGKILL)
            process.wait()

    def end(self):
        for process in (self.mixer, self.synth, self.dump):
            self.stop(process)


def main():
    missing = [program for program in PROGRAMS if shutil.which(program) is None]
    if missing and os.environ.get("CI"):
        sys.exit("partners: not installed: " + ", ".join(missing))
    partners = Partners()
    try:
        environment = dict(os.environ, OSMIR_MIXER=",".join(partners.ports),
                           OSMIR_PARTNERS=str(partners.socket.getsockname()[1]),
                           OSMIR_SYNTH_PROFILE="Z:" + str(HERE.parent / "profiles" / "zyn.profile"))
        return subprocess.run(sys.argv[1:], env=environment, check=False).returncode
    finally:
        partners.end()


if __name__ == "__main__":
    sys.exit(main())
