#include "tests/windows/OwnControl.h"

#include "Panelhost/PropertyList.h"
#include "tests/windows/TestPanel.h"

#include <cstdlib>

namespace {

OwnControl::Saving saving = OwnControl::Saves;
DWORD ownBytes = 0;

LRESULT Save(HOSTINFO& object, WPARAM code, HANDLE file) {
    const std::string line = code == SAVE_PROPERTIES ? "control=0x00000000 OWNCONTROL \"" + object.name +
                                                           "\" 0x40000000 0,0,10,10\r\n"
                                                     : object.name + "*connection=\r\n";
    switch (saving) {
    case OwnControl::Refuses:
        return -1;
    case OwnControl::HitsFullDisk:
        return a_WriteText(nullptr, line.data(), line.size()) != 0 // which takes as little
                   ? 0
                   : static_cast<LRESULT>(GetLastError());
    default:
        a_WriteText(file, line.data(), line.size());
        if (code == SAVE_PROPERTIES && ownBytes > 0) {
            DWORD written = 0;
            WriteFile(file, std::string(ownBytes, 'x').data(), ownBytes, &written, nullptr);
            a_WriteText(file, "=\r\n", 3);
        }
        return 0;
    }
}

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == CWM_SAVE ? Save(*a_FromWindow(window), wParam, reinterpret_cast<HANDLE>(lParam))
                               : OwnProcedure(window, message, wParam, lParam);
}

int refusals = 0;

std::string PathOf(HMODULE module) {
    char path[MAX_PATH];
    return {path, GetModuleFileNameA(module, path, sizeof path)};
}

// One request of the size of a line or more: the compiler's runtime needs some to tell of it.
void* __cdecl RefuseMemory(std::size_t size) {
    constexpr std::size_t LINE = 48;
    return size < LINE || refusals++ > 0 ? std::malloc(size) : nullptr;
}

} // namespace

OwnControl::OwnControl(Saving wanted, DWORD bytes) {
    saving = wanted;
    ownBytes = bytes;
    RegisterTestClass(CLASS, Procedure);
    ph_RegisterControlClass(CLASS);
}

OwnControl::~OwnControl() {
    ph_UnregisterControlClass(CLASS);
    saving = Saves;
    ownBytes = 0;
}

NoMemory::NoMemory(HMODULE module) : hook_(PathOf(module).c_str(), "malloc", RefuseMemory) {
    refusals = 0;
}

int NoMemory::Refusals() const {
    return refusals;
}
