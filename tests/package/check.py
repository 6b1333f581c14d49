"""Packs a build and tries the packages: install, draw a panel, upgrade, uninstall, for one user and for all."""

import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

sys.path.insert(0, str(pathlib.Path(__file__).resolve().parent.parent.parent / "tools" / "packaging"))
import examples
import package

PATIENCE = 60  # seconds
EXIT_RUNNING = 3
UNINSTALL_KEY = rf"Software\Microsoft\Windows\CurrentVersion\Uninstall\{package.PRODUCT}"
COMMAND_KEY = r"Software\Classes\OSMIR.Panel\shell\{}\command"

failures = []


def expect(condition, what):
    if not condition:
        failures.append(what)


def expect_equal(found, wanted, what):
    expect(found == wanted, f"{what}: {found!r} instead of {wanted!r}")


def wine(*command, **options):
    """The exit code."""
    return subprocess.run(["wine", *map(str, command)], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.DEVNULL, timeout=PATIENCE, **options).returncode


def registry(root, key, value=None):
    """The text of a value, by default of the unnamed one; None where there is none."""
    with tempfile.TemporaryDirectory() as folder: # what the query prints lacks some characters
        file = pathlib.Path(folder) / "values.reg"
        wine("reg", "export", rf"{root}\{key}", windows_name(file))
        text = file.read_text(encoding="utf-16") if file.exists() else ""
    name = re.escape(f'"{value}"' if value else "@")
    found = re.search(rf'^{name}="(.*)"$', (text.split("\n[") + [""])[1], re.MULTILINE) # the key itself comes first
    return found and re.sub(r"\\(.)", r"\1", found.group(1))


def wait_until(condition):
    end = time.monotonic() + PATIENCE
    while not condition() and time.monotonic() < end:
        time.sleep(0.1)
    return condition()


def expect_picture(path, what):
    """A drawn panel packs into many bytes, an empty window into few."""
    data = path.read_bytes() if path.exists() else b""
    expect(data[:8] == b"\x89PNG\r\n\x1a\n" and len(data) > 20000, f"{what}: no panel was drawn ({len(data)} bytes)")


class Prefix:
    """What is on the drive of a Wine prefix, but for the folders that the system writes to by itself."""

    def __init__(self, folder):
        self.drive = folder / "drive_c"
        self.user = next(path for path in (self.drive / "users").iterdir() if (path / "AppData").is_dir())
        self.before = self.files()

    def files(self):
        passed_over = (self.drive / "windows", self.user / "Temp", self.user / "AppData" / "Local" / "Temp")
        found = set()
        for folder, folders, names in os.walk(self.drive):  # what goes meanwhile is passed over
            here = pathlib.Path(folder)
            folders[:] = [name for name in folders if here / name not in passed_over]
            found.update((here / name).relative_to(self.drive) for name in folders + names)
        return found

    def added(self):
        return sorted(str(path) for path in self.files() - self.before)


def expect_nothing_left(prefix, root, wanted, what):
    expect(wait_until(lambda: prefix.added() == wanted), f"{what}: left are {prefix.added()}")
    for key in (UNINSTALL_KEY, r"Software\Classes\.panel", r"Software\Classes\OSMIR.Panel"):
        query = subprocess.run(["wine", "reg", "query", rf"{root}\{key}"], stdin=subprocess.DEVNULL, capture_output=True,
                               timeout=PATIENCE)
        expect(query.returncode != 0, f"{what}: the registry holds {root}\\{key}")


def run_verb(root, verb, panel, picture, folder):
    """Runs the program as the shell does when a panel is opened by that verb."""
    command = registry(root, COMMAND_KEY.format(verb))
    program, arguments = (command or "").removeprefix('"').split('"', 1) if command else ("", "")
    words = [word.strip('"') for word in arguments.replace('"%1"', "%1").split()]
    expect("%1" in words, f"{verb}: the command is {command}")
    code = wine(program, *(panel if word == "%1" else word for word in words), "--screenshot", windows_name(picture),
                "--exit-after", 2500, cwd=folder)
    expect_equal(code, 0, f"{verb}: exit code of {program}")
    expect_picture(picture, verb)


def windows_name(path):
    return "Z:" + str(path).replace("/", "\\")


def check_one_user(prefix, setups, scratch):
    """Installed into a folder with characters outside every code page, used, upgraded and uninstalled."""
    folder = prefix.drive / "Łukasz東京"
    place = r"C:\Łukasz東京"
    expect_equal(wine(setups["old"], "/S", "/CurrentUser", f"/D={place}"), 0, "installing for one user")
    expect((folder / "Panel.exe").exists(), "nothing was installed for one user")
    expect_equal(registry("HKCU", UNINSTALL_KEY, "DisplayVersion"), package.version_of(setups["build"]), "version")
    documents = prefix.drive / "My Show"
    documents.mkdir()
    shutil.copy(folder / "Stage.panel", documents / "東京.panel")
    shutil.copy(folder / "Stage.devices", documents / "東京.devices")
    for verb in ("open", "edit"):
        run_verb("HKCU", verb, "東京.panel", scratch / f"{verb}.png", documents)

    # The user's own: a file beside the program, a demo panel that was changed, a wave.
    changed = folder / "Mixer.panel"
    changed.write_bytes(changed.read_bytes() + b"; changed\r\n")
    (folder / "Own.panel").write_text("size=100,100\n")
    (folder / "Temp" / "wave.wav").write_text("wave")
    with subprocess.Popen(["wine", str(folder / "Panel.exe"), "Mixer.panel"], cwd=folder, stdin=subprocess.DEVNULL,
                          stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL) as running:
        expect(wait_until(lambda: subprocess.run(["xdotool", "search", "--onlyvisible", "--class", "Panel.exe"],
                                                 capture_output=True).stdout), "the installed program shows no window")
        expect_equal(wine(setups["new"], "/S"), EXIT_RUNNING, "upgrading a running program")
        expect_equal(registry("HKCU", UNINSTALL_KEY, "DisplayVersion"), package.version_of(setups["build"]),
                     "version after a refused upgrade")
        wine("taskkill", "/f", "/im", "Panel.exe")
        running.wait(PATIENCE)
    expect((folder / "Demo.panel").exists(), "a refused upgrade has removed files")

    expect_equal(wine(setups["new"], "/S"), 0, "upgrading")
    expect_equal(registry("HKCU", UNINSTALL_KEY, "DisplayVersion"), setups["new version"], "version after the upgrade")
    expect((folder / "Demo.panel").read_bytes().endswith(b"; new\r\n"), "the demo panel is the old one")
    expect(changed.read_bytes().endswith(b"; changed\r\n"), "a demo panel that the user had changed was replaced")
    expect(not (folder / "Levels.panel").exists(), "a file that the new version has no more is still there")

    kept = prefix.user / "AppData" / "Local" / "OSMIR" / "Panel"
    kept.mkdir(parents=True, exist_ok=True)
    for name in ("Recent.txt", "Window.txt", "Theme.txt"):
        (kept / name).write_text("kept\n")
    expect_equal(wine(folder / "uninstall.exe", "/S"), 0, "uninstalling")
    own = [folder.name, f"{folder.name}/Mixer.panel", f"{folder.name}/Own.panel", f"{folder.name}/Temp",
           f"{folder.name}/Temp/wave.wav", "My Show", "My Show/東京.devices", "My Show/東京.panel"]
    expect_nothing_left(prefix, "HKCU", sorted(own), "after uninstalling")
    shutil.rmtree(folder)
    shutil.rmtree(documents)


def check_all_users(prefix, setups, scratch):
    expect_equal(wine(setups["new"], "/S", "/AllUsers"), 0, "installing for all users")
    folder = prefix.drive / "Program Files" / package.PRODUCT
    expect((folder / "Panel.exe").exists(), "nothing was installed for all users")
    expect_equal(registry("HKLM", UNINSTALL_KEY, "InstallLocation"), rf"C:\Program Files\{package.PRODUCT}", "place")
    run_verb("HKLM", "open", "Mixer.panel", scratch / "all.png", folder)
    expect((folder / "Documentation" / "index.html").exists(), "the documentation is missing")
    expect_equal(wine(folder / "uninstall.exe", "/S"), 0, "uninstalling for all users")
    expect_nothing_left(prefix, "HKLM", [], "after uninstalling for all users")


def check_portable(archive, scratch):
    folder = scratch / "Zoë 東京"
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    picture = scratch / "portable.png"
    code = wine(folder / package.PRODUCT / "Panel.exe", "Mixer.panel", "--screenshot", windows_name(picture), "--exit-after",
                2500, cwd=folder / package.PRODUCT)
    expect_equal(code, 0, "exit code of the portable program")
    expect_picture(picture, "portable")
    return folder / package.PRODUCT


def make_setups(build, scratch):
    """The packages, and a setup program of a later version: a demo panel is another one, and one is no more."""
    made = package.pack(build, scratch / "packages")
    again = package.pack(build, scratch / "again")
    for path, other in zip(made, again):
        expect(path.read_bytes() == other.read_bytes(), f"{path.name}: packed twice the bytes differ")
    newer, new_version = scratch / "newer", package.version_of(build) + "1"
    package.stage(build, newer, scratch / "debug", new_version, package.commit_time())
    (newer / "Demo.panel").write_bytes((newer / "Demo.panel").read_bytes() + b"; new\r\n")
    (newer / "Levels.panel").unlink()
    package.set_times(newer, package.commit_time() + 2)
    package.make_setup(newer, scratch / "newer.exe", new_version)
    for binary in package.BINARIES:
        expect((newer / binary).read_bytes().find(f"{binary}.debug\0".encode()) >= 0, f"{binary} names no debug data")
        sections = package.run(package.TOOLS + "objdump", "-h", newer / binary)
        expect(".debug_info" not in sections, f"{binary} has debug data")
    return {"build": build, "old": made[0], "new": scratch / "newer.exe", "new version": new_version}, made


def main():
    build, scratch = map(pathlib.Path, sys.argv[1:])
    prefix = Prefix(next((scratch / "wine").glob("private*/drive_c")).parent)
    setups, made = make_setups(build, scratch)
    application = check_portable(made[1], scratch)
    examples.check(made[2], application, scratch, expect)
    check_one_user(prefix, setups, scratch)
    check_all_users(prefix, setups, scratch)
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
