// dialog_pictures: a picture of the parameter dialog of each control class, as CLASS.png in the current
// folder.

#include "Panel/export/PanelPicture.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/ControlProtocol.h"

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

void PumpAll() {
    MSG message;
    while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        TranslateMessage(&message);
        DispatchMessageA(&message);
    }
}

// Whether there was one, or there is none to the class.
bool TakePicture(HWND panel, HOSTINFO* root, const std::string& className) {
    const HWND control = CreateWindowExA(0, className.c_str(), "Control", WS_CHILD, 10, 10, 100, 40, panel,
                                         nullptr, GetModuleHandleA(nullptr), root);
    HWND dialog = nullptr;
    SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
    bool isTaken = true;
    if (dialog != nullptr) {
        // Without its frame, which is the system's.
        RECT client{};
        GetClientRect(dialog, &client);
        SetWindowLongA(dialog, GWL_STYLE, WS_POPUP);
        SetWindowLongA(dialog, GWL_EXSTYLE, WS_EX_CONTROLPARENT);
        SetWindowPos(dialog, nullptr, 0, 0, client.right, client.bottom,
                     SWP_FRAMECHANGED | SWP_NOMOVE | SWP_NOZORDER | SWP_SHOWWINDOW | SWP_NOACTIVATE);
        PumpAll();
        isTaken = SavePanelPicture(dialog, {client.right, client.bottom}, className + ".png");
        DestroyWindow(dialog);
    }
    DestroyWindow(control);
    return isTaken;
}

} // namespace

int main() {
    if (LoadLibraryA("OSMIRControlLib.dll") == nullptr) {
        std::fprintf(stderr, "dialog_pictures: OSMIRControlLib.dll cannot be loaded\n");
        return 1;
    }
    const HWND panel = CreateWindowExA(0, "STATIC", "Panel", WS_POPUP, 0, 0, 400, 300, nullptr, nullptr,
                                       GetModuleHandleA(nullptr), nullptr);
    HOSTINFO* root = ph_CreateRoot(panel, "Panel");
    int status = 0;
    std::vector<std::string> classes;
    ph_ListControlClasses(
        [](const PH_CONTROLCLASS* one, void* all) {
            static_cast<std::vector<std::string>*>(all)->emplace_back(one->windowClass);
        },
        &classes);
    for (const std::string& className : classes) {
        if (!TakePicture(panel, root, className)) {
            std::fprintf(stderr, "dialog_pictures: %s.png cannot be written\n", className.c_str());
            status = 1;
        }
    }
    ph_DestroyRoot(root);
    return status;
}
