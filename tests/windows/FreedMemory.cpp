#include "tests/windows/FreedMemory.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace {

constexpr SIZE_T SMALLEST = 8;
constexpr SIZE_T PAGE = 4096;
constexpr SIZE_T SLOT = 2 * PAGE;   // for one block
constexpr LONG SLOT_COUNT = 50000;  // used in turn; where none is free a block comes from the heap as before
constexpr ULONG USER_FLAGS = 0xF00; // of blocks that the system keeps something with for the owner

struct Block {
    SIZE_T size;
    void* freedBy[12]; // return addresses
    LONG isUsed;
};

char* slots = nullptr;
Block* blocks = nullptr;
LONG turn = 0;

bool IsTrapped(const void* memory) {
    const auto* byte = static_cast<const char*>(memory);
    return byte >= slots && byte < slots + SLOT_COUNT * SLOT;
}

SIZE_T SlotOf(const void* memory) {
    return static_cast<SIZE_T>(static_cast<const char*>(memory) - slots) / SLOT;
}

Block& BlockOf(const void* memory) {
    return blocks[SlotOf(memory)];
}

// The system's functions as they were.
namespace heap {
void*(WINAPI* allocate)(HANDLE, ULONG, SIZE_T);
BOOLEAN(WINAPI* release)(HANDLE, ULONG, void*);
void*(WINAPI* reallocate)(HANDLE, ULONG, void*, SIZE_T);
SIZE_T(WINAPI* size)(HANDLE, ULONG, const void*);
BOOLEAN(WINAPI* validate)(HANDLE, ULONG, const void*);
} // namespace heap

SIZE_T PagesFor(SIZE_T size) {
    return (size + PAGE - 1) / PAGE * PAGE;
}

// Blocks lie at the end of their pages, so that going beyond it is seen, too.
SIZE_T OffsetOf(SIZE_T size) {
    return (PagesFor(size) - size) & ~SIZE_T{7};
}

void* WINAPI Allocate(HANDLE from, ULONG flags, SIZE_T size) {
    const bool isTrapped = size >= SMALLEST && size <= SLOT && (flags & USER_FLAGS) == 0;
    for (int tries = 0; isTrapped && tries < 1000; ++tries) {
        const ULONG slot = static_cast<ULONG>(InterlockedIncrement(&turn)) % SLOT_COUNT;
        Block& block = blocks[slot];
        if (InterlockedCompareExchange(&block.isUsed, 1, 0) != 0) {
            continue;
        }
        char* begin = slots + slot * SLOT;
        if (VirtualAlloc(begin, PagesFor(size), MEM_COMMIT, PAGE_READWRITE) == nullptr) {
            InterlockedExchange(&block.isUsed, 0);
            break;
        }
        block.size = size;
        return begin + OffsetOf(size);
    }
    return heap::allocate(from, flags, size);
}

BOOLEAN WINAPI Release(HANDLE from, ULONG flags, void* memory) {
    if (!IsTrapped(memory)) {
        return heap::release(from, flags, memory);
    }
    Block& block = BlockOf(memory);
    if (block.isUsed == 0) {
        *static_cast<volatile char*>(memory) = 0; // freed twice: is reported as any use of freed memory
    }
    std::fill(std::begin(block.freedBy), std::end(block.freedBy), nullptr);
    CaptureStackBackTrace(1, static_cast<DWORD>(std::size(block.freedBy)), block.freedBy, nullptr);
    VirtualFree(slots + SlotOf(memory) * SLOT, SLOT, MEM_DECOMMIT);
    InterlockedExchange(&block.isUsed, 0);
    return TRUE;
}

void* WINAPI Reallocate(HANDLE from, ULONG flags, void* memory, SIZE_T size) {
    if (!IsTrapped(memory)) {
        return heap::reallocate(from, flags, memory, size);
    }
    if ((flags & HEAP_REALLOC_IN_PLACE_ONLY) != 0) {
        return nullptr;
    }
    const Block& block = BlockOf(memory);
    void* moved = Allocate(from, flags, size);
    if (moved == nullptr) {
        return nullptr;
    }
    std::memcpy(moved, memory, std::min(size, block.size));
    if (!IsTrapped(moved) && (flags & HEAP_ZERO_MEMORY) != 0 && size > block.size) {
        std::memset(static_cast<char*>(moved) + block.size, 0, size - block.size);
    }
    Release(from, flags, memory);
    return moved;
}

SIZE_T WINAPI Size(HANDLE from, ULONG flags, const void* memory) {
    return IsTrapped(memory) ? BlockOf(memory).size : heap::size(from, flags, memory);
}

BOOLEAN WINAPI Validate(HANDLE from, ULONG flags, const void* memory) {
    return IsTrapped(memory) ? BlockOf(memory).isUsed != 0 : heap::validate(from, flags, memory);
}

// Beginnings of functions that do not depend on where they stand, as long as a jump or longer.
struct Beginning {
    unsigned char length;
    unsigned char code[7];
};
constexpr Beginning BEGINNINGS[] = {
    {5, {0x8B, 0xFF, 0x55, 0x8B, 0xEC}},             // the place that the system leaves for it
    {7, {0x8D, 0x4C, 0x24, 0x04, 0x83, 0xE4, 0xF0}}, // lea ecx,[esp+4]; and esp,-16
    {6, {0x55, 0x89, 0xE5, 0x57, 0x56, 0x53}},       // push ebp; mov ebp,esp; push edi, esi, ebx
};
constexpr int JUMP = 5; // bytes

void WriteJump(unsigned char* at, const void* destination) {
    at[0] = 0xE9;
    const auto distance =
        static_cast<std::int32_t>(static_cast<const unsigned char*>(destination) - at - JUMP);
    std::memcpy(at + 1, &distance, sizeof distance);
}

// Every call of that function goes to another one from now on, whoever calls it.
template <class Function>
bool Redirect(const char* name, Function* replacement, Function*& original) {
    auto* code = reinterpret_cast<unsigned char*>(GetProcAddress(GetModuleHandleA("ntdll.dll"), name));
    const auto* beginning =
        std::find_if(std::begin(BEGINNINGS), std::end(BEGINNINGS), [code](const Beginning& known) {
            return std::memcmp(code, known.code, known.length) == 0;
        });
    auto* moved = static_cast<unsigned char*>(
        VirtualAlloc(nullptr, PAGE, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE));
    if (beginning == std::end(BEGINNINGS) || moved == nullptr) {
        return false;
    }
    const unsigned char length = beginning->length;
    std::memcpy(moved, code, length);
    WriteJump(moved + length, code + length);
    original = reinterpret_cast<Function*>(moved);
    DWORD protection = 0;
    VirtualProtect(code, JUMP, PAGE_EXECUTE_READWRITE, &protection);
    WriteJump(code, reinterpret_cast<const void*>(replacement));
    VirtualProtect(code, JUMP, protection, &protection);
    return true;
}

// Also of code of the system, whose windows' procedures would go on after it.
LONG CALLBACK EndAtUse(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    const auto* used = reinterpret_cast<const char*>(record.ExceptionInformation[1]);
    if (record.ExceptionCode != EXCEPTION_ACCESS_VIOLATION || !IsTrapped(used)) {
        return EXCEPTION_CONTINUE_SEARCH;
    }
    const Block& block = BlockOf(used);
    const char* begin = slots + SlotOf(used) * SLOT + OffsetOf(block.size);
    std::printf("freed memory: byte %d of %lu is %s\n", static_cast<int>(used - begin), block.size,
                record.ExceptionInformation[0] == 0 ? "read" : "written");
    std::printf("  by %s\n", PlaceOf(record.ExceptionAddress));
    for (const void* caller : block.freedBy) {
        if (caller != nullptr) {
            std::printf("  freed through %s\n", PlaceOf(caller));
        }
    }
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 3);
    return EXCEPTION_CONTINUE_SEARCH;
}

} // namespace

const char* PlaceOf(const void* address) {
    HMODULE module = nullptr;
    char path[MAX_PATH] = "";
    if (reinterpret_cast<DWORD_PTR>(address) <= 0xFFFF ||
        !GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS |
                                GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                            static_cast<const char*>(address), &module) ||
        GetModuleFileNameA(module, path, sizeof path) == 0) {
        return "";
    }
    static char text[MAX_PATH + 20];
    std::snprintf(
        text, sizeof text, "%s + %lx", path,
        static_cast<unsigned long>(static_cast<const char*>(address) - reinterpret_cast<char*>(module)));
    return text;
}

bool TrapFreedMemory() {
    if (slots != nullptr) {
        return true;
    }
    blocks = static_cast<Block*>(
        VirtualAlloc(nullptr, SLOT_COUNT * sizeof(Block), MEM_COMMIT | MEM_RESERVE, PAGE_READWRITE));
    slots = static_cast<char*>(VirtualAlloc(nullptr, SLOT_COUNT * SLOT, MEM_RESERVE, PAGE_READWRITE));
    if (blocks == nullptr || slots == nullptr) {
        return false;
    }
    AddVectoredExceptionHandler(1, EndAtUse);
    return Redirect("RtlSizeHeap", Size, heap::size) &&
           Redirect("RtlValidateHeap", Validate, heap::validate) &&
           Redirect("RtlReAllocateHeap", Reallocate, heap::reallocate) &&
           Redirect("RtlFreeHeap", Release, heap::release) &&
           Redirect("RtlAllocateHeap", Allocate, heap::allocate);
}
