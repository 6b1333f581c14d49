// A disk that takes no more: saving fails as a whole, the old file stays, nothing is left beside it, and the
// next attempt works.

#include "tests/faults/Scenery.h"
#include "tests/windows/ImportHook.h"

namespace {

DWORD room = 0; // bytes that the disk still takes
bool refusesFlush = false;
bool refusesMove = false;

BOOL WINAPI WriteSome(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* request) {
    if (count > room) {
        SetLastError(ERROR_DISK_FULL);
        *written = 0;
        return FALSE;
    }
    room -= count;
    return WriteFile(file, bytes, count, written, request);
}

BOOL WINAPI Flush(HANDLE file) {
    SetLastError(ERROR_DISK_FULL);
    return !refusesFlush && FlushFileBuffers(file);
}

BOOL WINAPI Move(const char* from, const char* to, DWORD flags) {
    SetLastError(ERROR_DISK_FULL);
    return !refusesMove && MoveFileExA(from, to, flags);
}

void SaveWithFailure(Random& random, const Scenery& scenery, const TestFolder& folder) {
    const std::string path = folder.Path("disk.panel");
    ph_SavePanel(scenery.panel.Root(), path.c_str());
    const std::string before = ReadBytes(path);
    const auto names = folder.Names();
    HWND control = scenery.Control(random);
    Load(control, "interval=" + std::to_string(1 + random.Below(1000)));
    const bool wasChanged = IsChanged(control);
    {
        const ImportHook write("Panelhost.dll", "WriteFile", WriteSome);
        const ImportHook flush("Panelhost.dll", "FlushFileBuffers", Flush);
        const ImportHook move("Panelhost.dll", "MoveFileExA", Move);
        const int way = random.Below(4);
        room = way < 2 ? static_cast<DWORD>(random.Below(static_cast<int>(before.size()))) : MAXDWORD;
        refusesFlush = way == 2;
        refusesMove = way == 3;
        Doing("save with room for %lu of %u bytes, way %d", room, static_cast<unsigned>(before.size()), way);
        Expect(ph_SavePanel(scenery.panel.Root(), path.c_str()) == 0, "saving succeeds on a full disk");
    }
    Expect(ReadBytes(path) == before, "the old file is not what it was");
    Expect(folder.Names() == names, "something is left beside the file");
    Expect(IsChanged(control) == wasChanged, "the panel counts as saved");
    Expect(ph_SavePanel(scenery.panel.Root(), path.c_str()) == 1, "the next attempt fails");
}

void SaveOnSmallVolume(const Scenery& scenery) {
    const std::string path = smallVolume + "\\small.panel";
    const std::string filler = smallVolume + "\\filler";
    DeleteFileA(filler.c_str());
    Doing("save on a small volume");
    if (ph_SavePanel(scenery.panel.Root(), path.c_str()) != 1) {
        return; // too small for this panel: that was the test
    }
    const std::string before = ReadBytes(path);
    std::size_t rest = 65536;
    for (std::size_t size = rest; size > 0; size /= 2) { // until not a byte more goes in
        while (WriteBytes(filler, std::string(rest - size, 'f')) && rest > size) {
            rest -= size;
        }
    }
    Expect(ph_SavePanel(scenery.panel.Root(), path.c_str()) == 0 || ReadBytes(path) == before,
           "saving on a full volume succeeds with another file");
    Expect(ReadBytes(path) == before, "the old file is not what it was");
    DeleteFileA(filler.c_str());
    Expect(ph_SavePanel(scenery.panel.Root(), path.c_str()) == 1, "the next attempt fails");
}

void Round(Random& random, int) {
    const TestFolder folder;
    const Scenery scenery(random, 5);
    SaveWithFailure(random, scenery, folder);
    if (!smallVolume.empty()) {
        SaveOnSmallVolume(scenery);
    }
}

} // namespace

const Topic diskTopic{"disk", Round};
