"""Checks the shipped programs and libraries: header flags, version, manifest, imports, and that linking repeats."""

import argparse
import pathlib
import re
import shlex
import struct
import subprocess
import sys
import tempfile

BINARIES = ("Panel.exe", "Panelhost.dll", "OSMIRControlLib.dll")

# Every Windows from 7 on has these; beside them a file may import from the libraries that are shipped with it.
SYSTEM_LIBRARIES = {
    "advapi32", "comctl32", "comdlg32", "gdi32", "gdiplus", "iphlpapi", "kernel32", "msimg32", "msvcrt", "ole32",
    "shell32", "tapi32", "user32", "winmm", "ws2_32",
}

# Windows 8 and later: a program that names one does not start on Windows 7.
TOO_NEW = re.compile(
    r"^(GetSystemTimePreciseAsFileTime|WaitOnAddress|WakeByAddress\w+|CreateFile2|SetThreadDescription|"
    r"GetDpiFor\w+|SetProcessDpi\w+|\w*ThreadDpiAwareness\w*|GetPointer\w+|EnableMouseInPointer|SetFileInformationByName|"
    r"GetCurrentPackage\w*|CopyFile2|PrefetchVirtualMemory|GetProcessMitigationPolicy)$"
)

# Windows 7, 8, 8.1, 10
SUPPORTED_SYSTEMS = (
    "35138b9a-5d96-4fbd-8e2d-a2440225f93a", "4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38",
    "1f676c76-80e1-4239-95bb-83d0f6d0da78", "8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a",
)

failures = []


def expect(condition, what):
    if not condition:
        failures.append(what)


def field(dump, name):
    found = re.search(rf"^{name}\s+(\S.*?)\s*$", dump, re.MULTILINE)
    return found.group(1) if found else ""


def check_header(name, dump):
    flags = field(dump, "DllCharacteristics")
    for flag in ("DYNAMIC_BASE", "NX_COMPAT") + (("TERMINAL_SERVICE_AWARE",) if name.endswith(".exe") else ()):
        expect(flag in dump, f"{name}: {flag} is missing (flags {flags})")
    relocations = re.search(r"^Entry 5 ([0-9a-f]+) ([0-9a-f]+) Base Relocation Directory", dump, re.MULTILINE)
    expect(relocations and int(relocations.group(2), 16) > 0, f"{name}: has no relocations")
    expect("relocations stripped" not in dump, f"{name}: relocations are stripped")
    for kind in ("OSystemVersion", "SubsystemVersion"):
        version = (field(dump, f"Major{kind}"), field(dump, f"Minor{kind}"))
        expect(version == ("6", "1"), f"{name}: {kind} is {version}, not that of Windows 7")


def check_imports(name, dump):
    own = {binary.lower() for binary in BINARIES}
    libraries = re.findall(r"^\s+DLL Name: (\S+)", dump, re.MULTILINE)
    expect(libraries, f"{name}: no imports were found")
    for library in libraries:
        known = library.lower() in own or library.lower().removesuffix(".dll") in SYSTEM_LIBRARIES
        expect(known, f"{name}: imports from {library}")
    functions = re.findall(r"^\s+[0-9a-f]+\s+(?:<none>\s+)?[0-9a-f]+\s+([A-Za-z_]\w+)", dump, re.MULTILINE)
    expect(len(functions) > 20, f"{name}: only {len(functions)} imported functions were found")
    for function in filter(TOO_NEW.match, functions):
        failures.append(f"{name}: imports {function}, which Windows 7 has not")


def check_version(name, content, version):
    numbers = [int(part) for part in version.split(".")] + [0]
    place = content.find(struct.pack("<I", 0xFEEF04BD))  # VS_FIXEDFILEINFO
    if place < 0:
        failures.append(f"{name}: has no version resource")
        return
    high, low, product_high, product_low = struct.unpack_from("<4I", content, place + 8)
    for first, second in ((high, low), (product_high, product_low)):
        found = [first >> 16, first & 0xFFFF, second >> 16, second & 0xFFFF]
        expect(found == numbers, f"{name}: its version is {found}, not {numbers}")
    for key, value in (("FileVersion", version), ("ProductVersion", version), ("OriginalFilename", name)):
        text = re.escape(f"{key}\0".encode("utf-16-le")) + rb"(?:\0\0)*" + re.escape(f"{value}\0".encode("utf-16-le"))
        expect(re.search(text, content), f"{name}: {key} is not {value}")


def check_manifest(name, content, version):
    manifest = content[content.find(b"<assembly"):content.find(b"</assembly>")].decode("utf-8")
    expect(f'name="OSMIR.Panel" version="{version}.0"' in manifest, f"{name}: its manifest is not of {version}")
    for system in SUPPORTED_SYSTEMS:
        expect(system in manifest, f"{name}: does not say that it supports {system}")
    expect(re.search(r"<dpiAware\b[^>]*>false</dpiAware>", manifest), f"{name}: does not say how it scales")


def check_linking(name, build, ninja):
    """The last command of a target links it. Done once more it gives the bytes that it gave at its time."""
    commands = subprocess.run([ninja, "-C", build, "-t", "commands", f"app/{name}"], check=True, capture_output=True,
                              text=True).stdout.splitlines()
    link = commands[-1]
    with tempfile.TemporaryDirectory() as folder:
        output = pathlib.Path(folder) / name
        again, count = re.subn(rf"-o app/{re.escape(name)}\b", f"-o {shlex.quote(str(output))}", link)
        again = re.sub(r"--out-implib,\S+", f"--out-implib,{shlex.quote(folder)}/imports.a", again)
        expect(count == 1, f"{name}: its link command was not found")
        if count == 1:
            subprocess.run(again, shell=True, cwd=build, check=True)
            expect(output.read_bytes() == (build / "app" / name).read_bytes(), f"{name}: a second link differs")


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--objdump", required=True)
    parser.add_argument("--ninja", required=True)
    parser.add_argument("--build", required=True, type=pathlib.Path)
    parser.add_argument("--version", required=True)
    arguments = parser.parse_args()
    for name in BINARIES:
        path = arguments.build / "app" / name
        content = path.read_bytes()
        dump = subprocess.run([arguments.objdump, "-p", path], check=True, capture_output=True, text=True).stdout
        check_header(name, dump)
        check_imports(name, dump)
        check_version(name, content, arguments.version)
        if name.endswith(".exe"):
            check_manifest(name, content, arguments.version)
        check_linking(name, arguments.build, arguments.ninja)
    for failure in failures:
        print(failure)
    return 1 if failures else 0


if __name__ == "__main__":
    sys.exit(main())
