#include "Panel/ControlLibrary.h"

#include "Panel/common/Paths.h"
#include "base/FileNames.h"

bool ControlLibrary::Load(std::string& error) {
    const std::string file = ModuleFolder(nullptr) + "OSMIRControlLib.dll";
    library_.reset(LoadLibraryA(file.c_str()));
    if (!library_) {
        error = "cannot load the control library " + file + ": " + ErrorText(GetLastError());
        return false;
    }
    return true;
}

std::string ControlLibrary::BuildStamp() const {
    using Callback = const char*(__stdcall*)(int, unsigned, unsigned);
    constexpr int BUILD_STAMP = 13;
    const auto callback =
        reinterpret_cast<Callback>(reinterpret_cast<void*>(GetProcAddress(library_.get(), "fnCallback")));
    const char* stamp = callback ? callback(BUILD_STAMP, 0, 0) : nullptr;
    return stamp ? stamp : "";
}
