#!/usr/bin/python3
"""Packs the built programs: a setup program, a zip that runs from any folder, and the debug data.

The same build packed twice gives the same bytes: files have the time of the commit, and lists are sorted."""

import argparse
import os
import pathlib
import re
import shutil
import subprocess
import sys
import tempfile
import time
import zipfile

import documents
import makers

ROOT = pathlib.Path(__file__).resolve().parent.parent.parent
PRODUCT = "OSMIR Panel"
FILE_PREFIX = "osmir-panel"
BINARIES = ("Panel.exe", "Panelhost.dll", "OSMIRControlLib.dll")
TOOLS = "i686-w64-mingw32-"
# Files that users change: an upgrade and the uninstaller leave those alone that they have changed.
CHANGEABLE = {".panel", ".devices", ".profile", ".cfg", ".txt"}
NO_COMMIT = 1767225600  # the time of files without a repository


def run(*command, **options):
    return subprocess.run([str(part) for part in command], check=True, text=True, capture_output=True, **options).stdout


def version_of(build):
    cache = (build / "CMakeCache.txt").read_text(encoding="utf-8")
    return re.search(r"^CMAKE_PROJECT_VERSION:STATIC=(.+)$", cache, re.MULTILINE).group(1)


def commit_time():
    try:
        seconds = int(run("git", "-C", ROOT, "log", "-1", "--format=%ct"))
    except (OSError, subprocess.CalledProcessError):
        seconds = NO_COMMIT
    return seconds - seconds % 2  # a zip counts in steps of two seconds


def files_in(folder):
    return sorted(path.relative_to(folder) for path in folder.rglob("*") if path.is_file())


def set_times(folder, seconds):
    for path in folder.rglob("*"):
        os.utime(path, (seconds, seconds))


def stage_binaries(build, folder, debug):
    """Without their debug data, which goes to files of its own that they name. None of it tells the time of its making."""
    debug.mkdir(parents=True, exist_ok=True)
    for name in BINARIES:
        data = debug / (name + ".debug")
        run(TOOLS + "objcopy", "-p", "--only-keep-debug", build / "app" / name, data)
        run(TOOLS + "strip", "-p", "-o", folder / name, build / "app" / name)
        run(TOOLS + "objcopy", "-p", f"--add-gnu-debuglink={data.name}", folder / name, cwd=debug)


def stage(build, folder, debug, version, seconds):
    """The application folder as it is installed."""
    shutil.copytree(ROOT / "app", folder)
    stage_binaries(build, folder, debug)
    documents.write_documentation(folder / "Documentation", f"{PRODUCT} {version}")
    set_times(folder, seconds)
    set_times(debug, seconds)


def write_zip(folder, path, top):
    with zipfile.ZipFile(path, "w", zipfile.ZIP_DEFLATED, compresslevel=9) as archive:
        for file in files_in(folder):
            modified = time.gmtime((folder / file).stat().st_mtime)[:6]
            entry = zipfile.ZipInfo((pathlib.PurePosixPath(top) / file.as_posix()).as_posix(), modified)
            entry.compress_type = zipfile.ZIP_DEFLATED
            entry.external_attr = 0o644 << 16
            archive.writestr(entry, (folder / file).read_bytes())


def installer_lists(folder):
    """What is installed, and the same for the uninstaller: names, never whole folders, in which a user's files may lie."""
    def quoted(path):
        return '"' + str(path).replace("$", "$$") + '"'

    def installed(path):
        return '"$INSTDIR\\' + str(pathlib.PureWindowsPath(path)).replace("$", "$$") + '"'

    install, remove, folders = [], [], set()
    current = None
    for file in files_in(folder):
        if file.parent != current:
            current = file.parent
            install.append('SetOutPath ' + (installed(current) if current.parts else '"$INSTDIR"'))
            folders.update(parent for parent in file.parents if parent.parts)
        macro = "Changeable" if file.suffix in CHANGEABLE else "Fixed"
        install.append(f"!insertmacro Install{macro} {quoted(folder / file)}")
        remove.append(f"!insertmacro Remove{macro} {quoted(folder / file)} {installed(file)}")
    remove += [f"RMDir {installed(parent)}" for parent in sorted(folders, reverse=True)]
    return (f"!macro InstallFiles\n{chr(10).join(install)}\n!macroend\n"
            f"!macro RemoveFiles\n{chr(10).join(remove)}\n!macroend\n")


def make_setup(folder, path, version):
    size = sum((folder / file).stat().st_size for file in files_in(folder)) // 1024
    with tempfile.TemporaryDirectory() as scratch:
        lists = pathlib.Path(scratch) / "files.nsh"
        lists.write_text(installer_lists(folder), encoding="utf-8")
        side = pathlib.Path(scratch) / "side.bmp"
        icon = ROOT / "app" / "Controls" / "Panel.ico"
        run("convert", "-size", "164x314", "gradient:#4a545e-#14181c", f"{icon}[0]", "-gravity", "center", "-composite",
            "-type", "TrueColor", f"BMP3:{side}")
        seconds = (folder / BINARIES[0]).stat().st_mtime
        os.utime(side, (seconds, seconds))
        run("makensis", "-V2", "-INPUTCHARSET", "UTF8", "-WX", f"-DPRODUCT={PRODUCT}", f"-DVERSION={version}",
            f"-DFILES={lists}", f"-DOUTPUT={path}", f"-DKILOBYTES={size}", f"-DICON={icon}",
            f"-DSIDE={side}", ROOT / "tools" / "packaging" / "setup.nsi")


def check_lines(binary, debug):
    """The debug data knows where in the sources the code comes from."""
    functions = run(TOOLS + "nm", "-C", debug)
    place = re.search(r"^([0-9a-f]+) T .*\((HWND__\*|HINSTANCE__\*|char const\*)", functions, re.MULTILINE)
    line = run(TOOLS + "addr2line", "-e", debug, place.group(1)) if place else "no function"
    if not re.search(r"\.(cpp|h):\d+$", line.strip()):
        sys.exit(f"package: the debug data of {binary} tells no lines of the sources: {line.strip()}")


def pack(build, output, with_lines=False):
    version = version_of(build)
    output.mkdir(parents=True, exist_ok=True)
    name = f"{FILE_PREFIX}-{version}"
    with tempfile.TemporaryDirectory() as scratch:
        application, debug = pathlib.Path(scratch) / "app", pathlib.Path(scratch) / "debug"
        stage(build, application, debug, version, commit_time())
        for binary in BINARIES if with_lines else ():
            check_lines(binary, debug / (binary + ".debug"))
        makers_folder = pathlib.Path(scratch) / "makers"
        makers.stage(run, TOOLS, ROOT, build, makers_folder, f"{PRODUCT} {version}")
        set_times(makers_folder, commit_time())
        made = [output / f"{name}-{kind}" for kind in ("setup.exe", "portable.zip", "makers.zip", "debug.zip")]
        make_setup(application, made[0], version)
        write_zip(application, made[1], PRODUCT)
        write_zip(makers_folder, made[2], f"{name}-makers")
        write_zip(debug, made[3], f"{name}-debug")
    return made


def main():
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("--build", required=True, type=pathlib.Path, help="folder of the build")
    parser.add_argument("--output", required=True, type=pathlib.Path, help="where the packages go")
    parser.add_argument("--with-lines", action="store_true", help="fail unless the debug data has lines of the sources")
    arguments = parser.parse_args()
    try:
        for path in pack(arguments.build.resolve(), arguments.output.resolve(), arguments.with_lines):
            print(f"{path}  {path.stat().st_size} bytes")
    except subprocess.CalledProcessError as failure:
        sys.exit(f"package: {failure.cmd[0]} failed\n{failure.stdout}{failure.stderr}")


if __name__ == "__main__":
    main()
