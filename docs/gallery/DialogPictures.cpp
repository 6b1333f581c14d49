// Takes a picture of the parameter dialog of every control, and of the library's own dialogs, into a folder:
// dialog_pictures FOLDER. On a display where nothing else covers them.

#include "Panelhost/Bitmap.h"
#include "Panelhost/ControlProtocol.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"

#include <windows.h>

#include <cstdio>
#include <string>
#include <vector>

namespace {

struct Class {
    std::string windowClass;
    std::string name;
    SIZE size;
};

void ShowWhole(HWND window) {
    SetWindowPos(window, HWND_TOPMOST, 40, 40, 0, 0, SWP_NOSIZE | SWP_SHOWWINDOW);
    for (int round = 0; round < 20; ++round) {
        UpdateWindow(window);
        MSG message;
        while (PeekMessageA(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageA(&message);
        }
        Sleep(10);
    }
}

// 1 when there is such a dialog and its picture was written, 0 when there is none, -1 on failure.
int TakePicture(HWND dialog, const std::string& file) {
    if (dialog == nullptr) {
        return 0;
    }
    ShowWhole(dialog);
    RECT place;
    GetWindowRect(dialog, &place);
    const HDC dc = GetDC(nullptr); // with the frame
    const int width = place.right - place.left;
    const int height = place.bottom - place.top;
    const HDC copy = CreateCompatibleDC(dc);
    const HBITMAP bitmap = CreateCompatibleBitmap(dc, width, height);
    const HGDIOBJ before = SelectObject(copy, bitmap);
    BitBlt(copy, 0, 0, width, height, dc, place.left, place.top, SRCCOPY);
    const bool isSaved = a_SavePicture(copy, width, height, file.c_str()) != 0;
    SelectObject(copy, before);
    DeleteObject(bitmap);
    DeleteDC(copy);
    ReleaseDC(nullptr, dc);
    return isSaved ? 1 : -1;
}

} // namespace

int main(int count, char** arguments) {
    if (count != 2 || LoadLibraryA("OSMIRControlLib.dll") == nullptr) {
        std::fprintf(stderr, "usage: dialog_pictures FOLDER\n");
        return 2;
    }
    const std::string folder = std::string(arguments[1]) + "\\";
    const HWND panel = CreateWindowExA(0, "STATIC", "Panel", WS_OVERLAPPED, 0, 0, 800, 600, nullptr, nullptr,
                                       nullptr, nullptr);
    HOSTINFO* root = ph_CreateRoot(panel, "Panel");
    std::vector<Class> classes;
    ph_ListControlClasses(
        [](const PH_CONTROLCLASS* known, void* list) {
            static_cast<std::vector<Class>*>(list)->push_back(
                {known->windowClass, known->name, {known->width, known->height}});
        },
        &classes);
    int pictures = 0;
    int failures = 0;
    const auto taken = [&](HWND dialog, const std::string& name) {
        const int result = TakePicture(dialog, folder + name + ".png");
        pictures += result > 0 ? 1 : 0;
        failures += result < 0 ? 1 : 0;
        if (dialog != nullptr && IsWindow(dialog)) {
            DestroyWindow(dialog);
        }
    };
    for (const Class& known : classes) {
        const HWND control = CreateWindowExA(0, known.windowClass.c_str(), known.name.c_str(), WS_CHILD, 0, 0,
                                             known.size.cx, known.size.cy, panel, nullptr, nullptr, root);
        HWND dialog = nullptr;
        SendMessageA(control, CWM_PARAMETERDLG, 0, reinterpret_cast<LPARAM>(&dialog));
        taken(dialog, known.windowClass);
    }
    HOSTINFO* first = a_FromWindow(GetWindow(panel, GW_CHILD));
    taken(a_PropertyDlg(1, panel, first), "properties");
    taken(a_ConnectionDlg(1, first->window, first), "connections");
    std::printf("%d dialogs, %d failures\n", pictures, failures);
    ph_DestroyRoot(root);
    DestroyWindow(panel);
    return failures == 0 && pictures > 20 ? 0 : 1;
}
