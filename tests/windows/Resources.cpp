// GetGuiResources and GetProcessHandleCount answer 0 under Wine, so the tables behind them are counted.

#include "tests/windows/Resources.h"

#include "Panelhost/Bitmap.h"
#include "Panelhost/Fonts.h"
#include "tests/windows/TestPanel.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <tlhelp32.h>
#include <vector>
#include <winternl.h>

namespace {

// The table of GDI objects that the process environment block of a 32-bit process points to.
int CountGdiObjects() {
    constexpr std::size_t TABLE = 0x94;
    constexpr int ENTRY_COUNT = 16384;
    struct Entry {
        std::uint64_t object;
        std::uint32_t owner;
        std::uint16_t unique;
        std::uint8_t type; // 0: free
        std::uint8_t flags;
        std::uint64_t userPointer;
    };
    PROCESS_BASIC_INFORMATION process{};
    Exported<decltype(NtQueryInformationProcess)>("ntdll.dll", "NtQueryInformationProcess")(
        GetCurrentProcess(), ProcessBasicInformation, &process, sizeof process, nullptr);
    const auto* environment = reinterpret_cast<const char*>(process.PebBaseAddress);
    const auto* entries = *reinterpret_cast<const Entry* const*>(environment + TABLE);
    int count = 0;
    for (int i = 0; i < ENTRY_COUNT; ++i) {
        count += entries[i].type != 0 ? 1 : 0;
    }
    return count;
}

int CountKernelHandles() {
    constexpr auto SYSTEM_HANDLES = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    struct Entry {
        ULONG process;
        BYTE type;
        BYTE flags;
        USHORT handle;
        void* object;
        ACCESS_MASK access;
    };
    struct Table {
        ULONG count;
        Entry entries[1];
    };
    std::vector<char> buffer(1 << 20);
    ULONG length = 0;
    const auto query = Exported<decltype(NtQuerySystemInformation)>("ntdll.dll", "NtQuerySystemInformation");
    while (query(SYSTEM_HANDLES, buffer.data(), static_cast<ULONG>(buffer.size()), &length) != 0) {
        buffer.resize(buffer.size() * 2);
    }
    const auto& table = *reinterpret_cast<const Table*>(buffer.data());
    int count = 0;
    for (ULONG i = 0; i < table.count; ++i) {
        count += table.entries[i].process == GetCurrentProcessId() ? 1 : 0;
    }
    return count;
}

BOOL CALLBACK CountWithChildren(HWND window, LPARAM count) {
    *reinterpret_cast<int*>(count) += 1 + static_cast<int>(ChildrenOf(window).size());
    return TRUE;
}

int CountWindows() {
    int count = 0;
    EnumThreadWindows(GetCurrentThreadId(), CountWithChildren, reinterpret_cast<LPARAM>(&count));
    HWND window = nullptr;
    while ((window = FindWindowExA(HWND_MESSAGE, window, nullptr, nullptr)) != nullptr) {
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        count += process == GetCurrentProcessId() ? 1 : 0;
    }
    return count;
}

} // namespace

std::set<DWORD> ListThreads() {
    HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
    THREADENTRY32 entry{};
    entry.dwSize = sizeof entry;
    std::set<DWORD> threads;
    for (BOOL found = Thread32First(snapshot, &entry); found; found = Thread32Next(snapshot, &entry)) {
        if (entry.th32OwnerProcessID == GetCurrentProcessId()) {
            threads.insert(entry.th32ThreadID);
        }
    }
    CloseHandle(snapshot);
    return threads;
}

Resources CountResources() {
    return {a_HostinfoCount(),
            a_BitmapCount(),
            a_FontCount(),
            CountGdiObjects(),
            CountKernelHandles(),
            CountWindows(),
            static_cast<int>(ListThreads().size())};
}

int CountHeapBlocks() {
    HANDLE heaps[64];
    const DWORD heapCount = std::min<DWORD>(GetProcessHeaps(64, heaps), 64);
    int count = 0;
    for (DWORD i = 0; i < heapCount; ++i) {
        HeapLock(heaps[i]);
        PROCESS_HEAP_ENTRY entry{};
        while (HeapWalk(heaps[i], &entry)) {
            count += (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY) != 0 ? 1 : 0;
        }
        HeapUnlock(heaps[i]);
    }
    return count;
}

std::string LeftBehind(int rounds, const std::function<void()>& live) {
    live();
    live();
    const Resources before = CountResources();
    const int blocks = CountHeapBlocks();
    for (int round = 0; round < rounds; ++round) {
        live();
    }
    Resources after;
    int blocksAfter = 0;
    const bool isAll = Await([&] { // threads that end by themselves take a moment
        after = CountResources().Settled(before);
        blocksAfter = CountHeapBlocks();
        return after.IsAtMost(before) && blocksAfter < blocks + 5 + rounds / 4;
    });
    if (isAll) {
        return "";
    }
    std::ostringstream text;
    text << before << " blocks " << blocks << "; then " << after << " blocks " << blocksAfter;
    return text.str();
}
