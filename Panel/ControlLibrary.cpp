#include "Panel/ControlLibrary.h"

#include "Panel/common/Paths.h"
#include "Panelhost/Trace.h"
#include "base/FileNames.h"

#include <set>

bool ControlLibrary::Load(std::string& error) {
    const std::string file = ModuleFolder(nullptr) + "OSMIRControlLib.dll";
    library_.reset(LoadLibraryA(file.c_str()));
    if (!library_) {
        error = "cannot load the control library " + file + ": " + ErrorText(GetLastError());
        return false;
    }
    return true;
}

int ControlLibrary::LoadFurther(const std::wstring& folder) {
    std::set<std::wstring> names;
    WIN32_FIND_DATAW found;
    const HANDLE search = FindFirstFileW((folder + L"*.dll").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return 0;
    }
    do {
        names.insert(found.cFileName);
    } while (FindNextFileW(search, &found));
    FindClose(search);
    for (const std::wstring& name : names) {
        // What such a library needs may lie beside it.
        Library library(LoadLibraryExW((folder + name).c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH));
        if (!library) {
            const std::string reason = ErrorText(GetLastError());
            TRACE("Panel: the control library %s was not loaded: %s\n", NarrowText(name).c_str(),
                  reason.c_str());
            continue;
        }
        further_.push_back(std::move(library));
    }
    return static_cast<int>(further_.size());
}

std::string ControlLibrary::BuildStamp() const {
    using Callback = const char*(__stdcall*)(int, unsigned, unsigned);
    constexpr int BUILD_STAMP = 13;
    const auto callback =
        reinterpret_cast<Callback>(reinterpret_cast<void*>(GetProcAddress(library_.get(), "fnCallback")));
    const char* stamp = callback ? callback(BUILD_STAMP, 0, 0) : nullptr;
    return stamp ? stamp : "";
}
