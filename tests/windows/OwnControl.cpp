#include "tests/windows/OwnControl.h"

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
        a_WriteText(nullptr, line.data(), line.size()); // which takes as little
        return 0;
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
    HOSTINFO* object = a_FromWindow(window);
    switch (message) {
    case WM_CREATE: {
        auto* created = new HOSTINFO;
        a_InitializeHostinfo(window, created, reinterpret_cast<CREATESTRUCTA*>(lParam)->lpCreateParams);
        a_AddHostinfo(created->parent, created);
        a_HostinfoCreated(a_FindRootHostinfo(created), created);
        return 0;
    }
    case CWM_SAVE:
        return Save(*object, wParam, reinterpret_cast<HANDLE>(lParam));
    case CWM_GETPROPERTIES:
        return reinterpret_cast<LRESULT>(object);
    case WM_DESTROY:
        delete object;
        return 0;
    default:
        return DefWindowProcA(window, message, wParam, lParam);
    }
}

int refusals = 0;

// One request of the size of a line or more: the compiler's runtime needs some to tell of it.
void* __cdecl RefuseMemory(std::size_t size) {
    constexpr std::size_t LINE = 48;
    return size < LINE || refusals++ > 0 ? std::malloc(size) : nullptr;
}

// Where the module's imports hold the address of that function.
void** ImportOf(HMODULE module, const void* function) {
    auto* base = reinterpret_cast<char*>(module);
    const auto* dos = reinterpret_cast<IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    auto* library = reinterpret_cast<IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
    for (; library->Name != 0; ++library) {
        for (auto** entry = reinterpret_cast<void**>(base + library->FirstThunk); *entry != nullptr;
             ++entry) {
            if (*entry == function) {
                return entry;
            }
        }
    }
    return nullptr;
}

void Write(void** place, void* value) {
    DWORD protection = 0;
    VirtualProtect(place, sizeof value, PAGE_READWRITE, &protection);
    *place = value;
    VirtualProtect(place, sizeof value, protection, &protection);
}

} // namespace

OwnControl::OwnControl(Saving wanted, DWORD bytes) {
    saving = wanted;
    ownBytes = bytes;
    WNDCLASSA windowClass{};
    windowClass.lpfnWndProc = Procedure;
    windowClass.hInstance = GetModuleHandleA(nullptr);
    windowClass.lpszClassName = CLASS;
    RegisterClassA(&windowClass); // stays
    ph_RegisterControlClass(CLASS);
}

OwnControl::~OwnControl() {
    ph_UnregisterControlClass(CLASS);
    saving = Saves;
    ownBytes = 0;
}

NoMemory::NoMemory(HMODULE module) {
    void* allocate = reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), "malloc"));
    import_ = ImportOf(module, allocate);
    REQUIRE(import_ != nullptr);
    refusals = 0;
    original_ = *import_;
    Write(import_, reinterpret_cast<void*>(RefuseMemory));
}

NoMemory::~NoMemory() {
    Write(import_, original_);
}

int NoMemory::Refusals() const {
    return refusals;
}
