// A disk that takes no more: saving fails as a whole, the old file stays, nothing is left beside it, and the
// next attempt works.

#include "tests/faults/Scenery.h"
#include "tests/windows/ImportHook.h"

namespace {

DWORD room = 0; // bytes that the disk still takes
bool refusesFlush = false;
bool refusesMove = false;

BOOL WINAPI WriteSome(HANDLE file, const void* bytes, DWORD count, DWORD* written, OVERLAPPED* request) {
    SetLastError(ERROR_DISK_FULL);
    *written = 0;
    return count <= room && (room -= count, WriteFile(file, bytes, count, written, request));
}

BOOL WINAPI Flush(HANDLE file) {
    SetLastError(ERROR_DISK_FULL);
    return !refusesFlush && FlushFileBuffers(file);
}

BOOL WINAPI Move(const wchar_t* from, const wchar_t* to, DWORD flags) {
    SetLastError(ERROR_DISK_FULL);
    return !refusesMove && MoveFileExW(from, to, flags);
}

// Has the system refuse what saving needs.
int SaveWithFailure(Random& random, HOSTINFO* root, const std::string& path, std::size_t size) {
    const ImportHook write("Panelhost.dll", "WriteFile", WriteSome);
    const ImportHook flush("Panelhost.dll", "FlushFileBuffers", Flush);
    const ImportHook move("Panelhost.dll", "MoveFileExW", Move);
    const int way = random.Below(4);
    room = way < 2 ? static_cast<DWORD>(random.Below(static_cast<int>(size))) : MAXDWORD;
    refusesFlush = way == 2;
    refusesMove = way == 3;
    Doing("save with room for %lu of %u bytes, way %d", room, static_cast<unsigned>(size), way);
    return ph_SavePanel(root, path.c_str());
}

// Fills the volume up until not a byte more goes in.
int SaveOnFullVolume(HOSTINFO* root, const std::string& path) {
    const std::string filler = path + "-filler";
    std::size_t filled = 0;
    for (std::size_t size = 65536; size > 0; size /= 2) {
        while (WriteBytes(filler, std::string(filled + size, 'f'))) {
            filled += size;
        }
    }
    Doing("save on a small volume");
    const int saved = ph_SavePanel(root, path.c_str());
    DeleteFileA(filler.c_str());
    return saved;
}

void Round(Random& random, int) {
    const TestFolder folder;
    const Scenery scenery(random, 5);
    HOSTINFO* root = scenery.panel.Root();
    for (const std::string& path : {folder.Path("disk.panel"), smallVolume + "\\small.panel"}) {
        const bool isSmall = !path.starts_with(folder.Path(""));
        if ((isSmall && smallVolume.empty()) || ph_SavePanel(root, path.c_str()) != 1) {
            continue; // too small for this panel: that was the test
        }
        const std::string before = ReadBytes(path);
        const auto names = folder.Names();
        HWND control = scenery.Control(random);
        Load(control, "interval=" + std::to_string(1000 + random.Below(1000))); // no shorter than it was
        const bool wasChanged = IsChanged(control);
        const int saved =
            isSmall ? SaveOnFullVolume(root, path) : SaveWithFailure(random, root, path, before.size());
        Expect(saved == 0, "saving succeeds on a full disk");
        Expect(ReadBytes(path) == before, "the old file is not what it was");
        Expect(folder.Names() == names, "something is left beside the file");
        Expect(IsChanged(control) == wasChanged, "the panel counts as saved");
        Expect(ph_SavePanel(root, path.c_str()) == 1, "the next attempt fails");
    }
}

} // namespace

const Topic diskTopic{"disk", Round};
