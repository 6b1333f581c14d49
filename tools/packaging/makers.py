"""The zip for makers of hosts and controls: headers, import libraries, examples, and the pages for them."""

import re
import shutil

import documents

EXAMPLES = ("host/Host.c", "lamp/Lamp.cpp")
PAGES = ("host-guide", "property-reference", "panel-files", "device-files")


def write_import_libraries(run, tools, build, folder):
    """For GNU linkers all that Panelhost.dll exports, which C++ needs; for others the interface in C."""
    folder.mkdir()
    # -D: no times and users in the archive.
    run(tools + "objcopy", "-D", build / "Panelhost" / "libPanelhost.dll.a", folder / "libPanelhost.dll.a")
    exports = run(tools + "objdump", "-p", build / "app" / "Panelhost.dll")
    names = sorted(set(re.findall(r"^\s+\[ *\d+\].* (ph_\w+)$", exports, re.MULTILINE)))
    if not names:
        raise ValueError("Panelhost.dll exports none of its interface")
    definition = folder / "Panelhost.def"
    definition.write_text("LIBRARY Panelhost.dll\nEXPORTS\n" + "".join(f"    {name}\n" for name in names), encoding="ascii")
    run("llvm-dlltool", "-m", "i386", "-d", definition, "-l", folder / "Panelhost.lib")


def stage(run, tools, root, build, folder, product):
    headers = folder / "include"
    sources = sorted((root / "Panelhost").glob("*.h")) + [root / "Controls" / "OSMIRControlLib.h"]
    # What they include of the floors below, and that in turn.
    for source in sources:
        included = re.findall(r'^#include "([^"]+)"', source.read_text(encoding="utf-8"), re.MULTILINE)
        sources.extend(root / name for name in included if root / name not in sources)
    for source in sources:
        target = headers / source.relative_to(root)
        target.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(source, target)
    for example in EXAMPLES:
        target = folder / "examples" / example
        target.parent.mkdir(parents=True)
        shutil.copy(root / "examples" / example, target)
    write_import_libraries(run, tools, build, folder / "lib")
    documents.write_pages([root / "docs" / f"{page}.md" for page in PAGES], folder / "Documentation", product)
