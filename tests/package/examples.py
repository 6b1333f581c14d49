"""Builds the examples of the makers' zip by what lies in it, and runs them: the host with the import library of either kind
of linker, the control in the program."""

import subprocess
import zipfile

GNU = "i686-w64-mingw32-"
# For Microsoft's binary interface, without the system's headers and C library: it ends with 42 when the functions answer.
PROGRAM = """__declspec(dllimport) int __cdecl ph_RegisterControlClass(const char*);
__declspec(dllimport) int __cdecl ph_UnregisterControlClass(const char*);
int Start(void) {
    return ph_RegisterControlClass("A") == 1 && ph_UnregisterControlClass("A") == 1 && ph_UnregisterControlClass("A") == 0 ? 42 : 1;
}
"""
HOST_ARGUMENTS = ("Demo.panel", "Demo.devices", "Gain 1", "AMP1*gain1", "-6")
HOST_PRINTS = "AMP1*gain1 is -6"
LAMP_PANEL = ('size=200,100\r\ncontrol=0x00000000 EXAMPLELAMP "Lamp" 0x50010000 10,10,34,34\r\n'
              "Lamp*function=\r\nLamp*interval=200\r\nLamp*threshold=1\r\nLamp*connection=\r\n")


def run(*command, cwd):
    result = subprocess.run([str(part) for part in command], cwd=cwd, stdin=subprocess.DEVNULL, capture_output=True, timeout=120)
    return result.returncode, result.stdout.decode("utf-8", "replace") + result.stderr.decode("utf-8", "replace")


def check(archive, application, scratch, expect):
    """The application folder is one that the host and the control may be put into."""
    folder = scratch / "makers zip"
    with zipfile.ZipFile(archive) as packed:
        packed.extractall(folder)
    top = next(folder.iterdir())
    example = top / "examples" / "host"

    def build(*command):
        code, output = run(*command, cwd=example)
        expect(code == 0, f"makers: {command[0]}: {output}")

    build(GNU + "gcc", "-std=c99", "-Wall", "-Wextra", "-Wpedantic", "-Werror", "-I", "../../include", "Host.c",
          "../../lib/libPanelhost.dll.a", "-o", application / "Host.exe")
    code, output = run("wine", "Host.exe", *HOST_ARGUMENTS, cwd=application)
    expect(code == 0 and HOST_PRINTS in output, f"makers: the host ended with {code}: {output}")
    (example / "Program.c").write_text(PROGRAM)
    build("clang", "--target=i686-pc-windows-msvc", "-c", "Program.c", "-o", "Program.obj")
    build("lld-link", "/nodefaultlib", "/subsystem:console", "/entry:Start", "/out:" + str(application / "Program.exe"),
          "Program.obj", "../../lib/Panelhost.lib")
    code, output = run("wine", "Program.exe", cwd=application)
    expect(code == 42, f"makers: the program of the other linker ended with {code}: {output}")

    libraries = application / "Libraries"
    libraries.mkdir()
    code, output = run(GNU + "g++-posix", "-std=c++20", "-O2", "-Wall", "-Wextra", "-Werror", "-shared", "-static", "-I", "../../include",
                       "Lamp.cpp", "../../lib/libPanelhost.dll.a", "-lgdi32", "-o", libraries / "Lamp.dll",
                       cwd=top / "examples" / "lamp")
    expect(code == 0, f"makers: the control: {output}")
    (application / "Lamp.panel").write_text(LAMP_PANEL, newline="")
    code, output = run("wine", "Panel.exe", "Lamp.panel", "--trace", "trace.txt", "--exit-after", "300", cwd=application)
    trace = (application / "trace.txt").read_text(errors="replace") if (application / "trace.txt").exists() else "none"
    expect(code == 0 and trace == "", f"makers: the control in the program: {code}, {trace}")
