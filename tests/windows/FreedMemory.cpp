#include "tests/windows/FreedMemory.h"

#include "tests/windows/ImportHook.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>

namespace {

constexpr std::size_t SMALLEST = 150; // the objects; smaller blocks would take a page each for nothing
constexpr std::size_t PAGE = 4096;
constexpr std::size_t SLOT = 2 * PAGE;    // for one block
constexpr std::size_t SLOT_COUNT = 32768; // a slot is used again when all others were
constexpr int ATTEMPTS = 64;              // to find one that is free; then the block comes from the heap
constexpr std::size_t ALIGNMENT = 16;
constexpr int NEVER_WRITTEN = 0xCD;

using Allocate = void*(std::size_t);
using Reallocate = void*(void*, std::size_t);
using Free = void(void*);

char* slots = nullptr;
LONG sizes[SLOT_COUNT]; // of the blocks; 0: the slot is free
LONG taken = 0;
Allocate* heapAllocate = nullptr;
Reallocate* heapReallocate = nullptr;
Free* heapFree = nullptr;

bool IsTrap(const void* block) {
    const auto* byte = static_cast<const char*>(block);
    return byte >= slots && byte < slots + SLOT_COUNT * SLOT;
}

std::size_t SlotOf(const void* block) {
    return static_cast<std::size_t>(static_cast<const char*>(block) - slots) / SLOT;
}

void* TrapAllocate(std::size_t size) {
    for (int attempt = 0; attempt < ATTEMPTS && size >= SMALLEST && size <= SLOT; ++attempt) {
        const std::size_t slot = static_cast<std::size_t>(InterlockedIncrement(&taken)) % SLOT_COUNT;
        if (InterlockedCompareExchange(&sizes[slot], static_cast<LONG>(size), 0) != 0) {
            continue;
        }
        const std::size_t held = (size + PAGE - 1) / PAGE * PAGE;
        auto* pages = static_cast<char*>(VirtualAlloc(slots + slot * SLOT, held, MEM_COMMIT, PAGE_READWRITE));
        if (pages == nullptr) {
            return nullptr;
        }
        // At the end of its pages, so that nobody goes beyond it either.
        return std::memset(pages + held - (size + ALIGNMENT - 1) / ALIGNMENT * ALIGNMENT, NEVER_WRITTEN,
                           size);
    }
    return heapAllocate(size);
}

void TrapFree(void* block) {
    if (!IsTrap(block)) {
        heapFree(block);
        return;
    }
    *static_cast<volatile char*>(block) = 0; // crashes at what was freed before
    VirtualFree(slots + SlotOf(block) * SLOT, SLOT, MEM_DECOMMIT);
    InterlockedExchange(&sizes[SlotOf(block)], 0);
}

void* TrapReallocate(void* block, std::size_t size) {
    if (!IsTrap(block)) {
        return heapReallocate(block, size);
    }
    void* moved = heapAllocate(size);
    if (moved != nullptr) {
        std::memcpy(moved, block, std::min(static_cast<std::size_t>(sizes[SlotOf(block)]), size));
        TrapFree(block);
    }
    return moved;
}

// For the rest of the process. Null is this program.
template <class Function>
Function* Redirect(const char* library, const char* function, Function* replacement) {
    return (new ImportHook(library, function, replacement))->Original<Function>();
}

} // namespace

void TrapFreedMemory() {
    if (slots != nullptr) {
        return;
    }
    slots = static_cast<char*>(VirtualAlloc(nullptr, SLOT_COUNT * SLOT, MEM_RESERVE, PAGE_READWRITE));
    if (slots == nullptr) {
        throw std::runtime_error("no room for traps");
    }
    // This program frees what the libraries hand out.
    for (const char* library : {CONTROL_LIBRARY, "Panelhost.dll", static_cast<const char*>(nullptr)}) {
        heapFree = Redirect<Free>(library, "free", TrapFree);
        heapReallocate = Redirect<Reallocate>(library, "realloc", TrapReallocate);
    }
    heapAllocate = reinterpret_cast<Allocate*>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleA("msvcrt.dll"), "malloc")));
    for (const char* library : {CONTROL_LIBRARY, "Panelhost.dll"}) {
        Redirect<Allocate>(library, "malloc", TrapAllocate);
    }
}
