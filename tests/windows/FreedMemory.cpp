#include "tests/windows/FreedMemory.h"

#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t SMALLEST = 150; // the objects; smaller blocks would take a page each for nothing
constexpr std::size_t PAGE = 4096;
constexpr std::size_t PAGE_COUNT = 65536; // once they are used up, blocks come from the heap again

using Allocate = void*(__cdecl*)(std::size_t);
using Reallocate = void*(__cdecl*)(void*, std::size_t);
using Free = void(__cdecl*)(void*);

char* pages = nullptr;
std::size_t sizes[PAGE_COUNT];
LONG taken = 0;
Allocate heapAllocate = nullptr;
Reallocate heapReallocate = nullptr;
Free heapFree = nullptr;

bool IsPage(const void* block) {
    const auto* byte = static_cast<const char*>(block);
    return byte >= pages && byte < pages + PAGE_COUNT * PAGE;
}

void* __cdecl TrapAllocate(std::size_t size) {
    if (size < SMALLEST || size > PAGE || taken >= static_cast<LONG>(PAGE_COUNT)) {
        return heapAllocate(size);
    }
    const LONG page = InterlockedIncrement(&taken) - 1;
    if (page >= static_cast<LONG>(PAGE_COUNT)) {
        return heapAllocate(size);
    }
    sizes[page] = size;
    return VirtualAlloc(pages + static_cast<std::size_t>(page) * PAGE, PAGE, MEM_COMMIT, PAGE_READWRITE);
}

void __cdecl TrapFree(void* block) {
    if (IsPage(block)) {
        VirtualFree(block, PAGE, MEM_DECOMMIT);
    } else {
        heapFree(block);
    }
}

void* __cdecl TrapReallocate(void* block, std::size_t size) {
    if (!IsPage(block)) {
        return heapReallocate(block, size);
    }
    const std::size_t held = sizes[static_cast<std::size_t>(static_cast<char*>(block) - pages) / PAGE];
    void* moved = heapAllocate(size);
    std::memcpy(moved, block, std::min(held, size));
    TrapFree(block);
    return moved;
}

// Puts another function in the place of one that a library, or with null this program, imports from the C
// runtime.
void Redirect(const char* library, const char* function, void* replacement) {
    auto* base = reinterpret_cast<char*>(GetModuleHandleA(library));
    REQUIRE(base != nullptr);
    const auto* dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const auto& directory = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    bool found = false;
    for (auto* import = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + directory.VirtualAddress);
         import->Name != 0; ++import) {
        auto* name = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + import->OriginalFirstThunk);
        auto* address = reinterpret_cast<IMAGE_THUNK_DATA*>(base + import->FirstThunk);
        for (; name->u1.AddressOfData != 0; ++name, ++address) {
            const auto* entry = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + name->u1.AddressOfData);
            const bool byName = (name->u1.Ordinal & IMAGE_ORDINAL_FLAG) == 0;
            if (byName && std::strcmp(reinterpret_cast<const char*>(entry->Name), function) == 0) {
                DWORD before = 0;
                VirtualProtect(address, sizeof *address, PAGE_READWRITE, &before);
                address->u1.Function = reinterpret_cast<DWORD_PTR>(replacement);
                VirtualProtect(address, sizeof *address, before, &before);
                found = true;
            }
        }
    }
    REQUIRE(found);
}

} // namespace

void TrapFreedMemory() {
    if (pages != nullptr) {
        return;
    }
    pages = static_cast<char*>(VirtualAlloc(nullptr, PAGE_COUNT * PAGE, MEM_RESERVE, PAGE_READWRITE));
    REQUIRE(pages != nullptr);
    HMODULE runtime = GetModuleHandleA("msvcrt.dll");
    const auto original = [runtime](const char* name) {
        return reinterpret_cast<void*>(GetProcAddress(runtime, name));
    };
    heapAllocate = reinterpret_cast<Allocate>(original("malloc"));
    heapReallocate = reinterpret_cast<Reallocate>(original("realloc"));
    heapFree = reinterpret_cast<Free>(original("free"));
    // This program frees what the libraries hand out.
    for (const char* library : {CONTROL_LIBRARY, "Panelhost.dll", static_cast<const char*>(nullptr)}) {
        Redirect(library, "free", reinterpret_cast<void*>(TrapFree));
        Redirect(library, "realloc", reinterpret_cast<void*>(TrapReallocate));
    }
    for (const char* library : {CONTROL_LIBRARY, "Panelhost.dll"}) {
        Redirect(library, "malloc", reinterpret_cast<void*>(TrapAllocate));
    }
}
