#pragma once

#include <windows.h>

#include <cstring>
#include <stdexcept>
#include <string>

// Has a loaded library call something else in place of a system function that it imports.
class ImportHook {
public:
    template <class Function>
    ImportHook(const char* library, const char* function, Function* replacement)
        : place_(Find(GetModuleHandleA(library), function)) {
        original_ = *place_;
        Write(reinterpret_cast<void*>(replacement));
    }
    ~ImportHook() { Write(original_); } // the library still has to be there, or there again
    ImportHook(const ImportHook&) = delete;
    ImportHook& operator=(const ImportHook&) = delete;

    template <class Function>
    Function* Original() const {
        return reinterpret_cast<Function*>(original_);
    }

private:
    static void** Find(HMODULE library, const char* function) {
        char* base = reinterpret_cast<char*>(library);
        const auto at = [base](DWORD offset) { return static_cast<void*>(base + offset); };
        const auto* dos = static_cast<const IMAGE_DOS_HEADER*>(at(0));
        const auto* headers = static_cast<const IMAGE_NT_HEADERS*>(at(dos->e_lfanew));
        const auto* imported = static_cast<const IMAGE_IMPORT_DESCRIPTOR*>(
            at(headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT].VirtualAddress));
        for (; imported->Name != 0; ++imported) {
            const auto* name = static_cast<const IMAGE_THUNK_DATA*>(at(imported->OriginalFirstThunk));
            auto* address = static_cast<void**>(at(imported->FirstThunk));
            for (; name->u1.AddressOfData != 0; ++name, ++address) {
                if (!IMAGE_SNAP_BY_ORDINAL(name->u1.Ordinal) &&
                    std::strcmp(static_cast<const IMAGE_IMPORT_BY_NAME*>(at(name->u1.AddressOfData))->Name,
                                function) == 0) {
                    return address;
                }
            }
        }
        throw std::runtime_error(std::string("nothing imports ") + function);
    }

    void Write(void* value) {
        DWORD protection = 0;
        VirtualProtect(place_, sizeof *place_, PAGE_READWRITE, &protection);
        *place_ = value;
        VirtualProtect(place_, sizeof *place_, protection, &protection);
    }

    void** place_;
    void* original_ = nullptr;
};
