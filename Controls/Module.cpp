// Entry point of the library and the function through which a host asks for its build stamp.

#include <winsock2.h> // refuses to stand behind windows.h

#include "Controls/ClassTable.h"
#include "Controls/OSMIRControlLib.h"
#include "Controls/dialog/ParameterDialog.h"
#include "Panelhost/Trace.h"
#include "base/Threads.h"

namespace {

HINSTANCE moduleInstance = nullptr;

constexpr int BUILD_STAMP_CODE = 13;
constexpr WORD SOCKETS_VERSION = 0x0202;

} // namespace

HINSTANCE ModuleInstance() {
    return moduleInstance;
}

const char* __stdcall fnCallback(int code, unsigned, unsigned) {
    return code == BUILD_STAMP_CODE ? "May 18 2022  15:44:35\tBuild: 10026" : nullptr;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID reserved) {
    if (reason == DLL_PROCESS_ATTACH) {
        moduleInstance = module;
        TellWorkerFailures([](const char* what) { TRACE("A worker failed: %s\n", what); });
        RegisterControls(ControlClasses(), module, OpenParameterDialog);
        WSADATA data;
        if (WSAStartup(SOCKETS_VERSION, &data) != 0) {
            TRACE("WSAStartup %d\n", WSAGetLastError());
        }
    } else if (reason == DLL_PROCESS_DETACH) {
        if (reserved == nullptr) { // unloaded; at the end of the process all this is gone already
            ReleaseControls(module);
        }
        WSACleanup();
    }
    return TRUE;
}
