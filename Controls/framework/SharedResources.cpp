#include "Controls/framework/SharedResources.h"

#include "Controls/resources/resource.h"

#include <algorithm>

namespace {

constexpr DWORD TOOLTIP_STYLE = TTS_ALWAYSTIP | TTS_NOPREFIX;
constexpr int MAXIMUM_TIP_WIDTH = 32767;
constexpr int FILTER_IMAGE_WIDTH = 13;
constexpr COLORREF FILTER_IMAGE_MASK = 0xFFFFFF;

HWND CreateTooltip(DWORD style, HINSTANCE module) {
    return CreateWindowExA(0, TOOLTIPS_CLASSA, "", style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                           CW_USEDEFAULT, nullptr, nullptr, module, nullptr);
}

HBITMAP LoadBitmapFile(const char* file) {
    char path[MAX_PATH];
    a_MakeFullPathName(file, path);
    return static_cast<HBITMAP>(LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
}

} // namespace

void ClassResources::Make(const ControlClass& controlClass, HINSTANCE module) {
    switch (controlClass.resource) {
    case SharedResource::None:
        break;
    case SharedResource::Tooltip:
        tooltip = CreateTooltip(TOOLTIP_STYLE, module);
        SendMessageA(tooltip, TTM_SETMAXTIPWIDTH, 0, MAXIMUM_TIP_WIDTH);
        break;
    case SharedResource::PopupTooltip:
        tooltip = CreateTooltip(WS_POPUP, module);
        SendMessageA(tooltip, TTM_SETMAXTIPWIDTH, 0, MAXIMUM_TIP_WIDTH);
        break;
    case SharedResource::Picture:
        picture = LoadBitmapFile(controlClass.resourceFile);
        break;
    case SharedResource::MidiPicture:
        picture = LoadBitmapFile(controlClass.resourceFile);
        if (picture == nullptr) {
            TRACE("Midi Bitmap %d\n", static_cast<int>(GetLastError()));
        }
        break;
    case SharedResource::NetworkPicture:
        picture = LoadBitmapFile(controlClass.resourceFile);
        lock = new CRITICAL_SECTION;
        InitializeCriticalSection(lock);
        break;
    case SharedResource::MessagingPicture:
        picture = LoadBitmapFile(controlClass.resourceFile);
        mailLibrary = LoadLibraryA("MAPI32.DLL");
        if (mailLibrary != nullptr) {
            std::transform(std::begin(MAIL_FUNCTIONS), std::end(MAIL_FUNCTIONS), mailFunctions.begin(),
                           [this](const char* name) { return GetProcAddress(mailLibrary, name); });
        }
        break;
    case SharedResource::FilterImages:
        images = ImageList_LoadImageA(module, MAKEINTRESOURCEA(IDB_FILTERS), FILTER_IMAGE_WIDTH, 1,
                                      FILTER_IMAGE_MASK, IMAGE_BITMAP, 0);
        break;
    case SharedResource::DelayPictures:
        picture = LoadBitmapFile(controlClass.resourceFile);
        lamps[0] = LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_ON));
        lamps[1] = LoadBitmapA(module, MAKEINTRESOURCEA(IDB_DELAY_OFF));
        break;
    }
}

void ClassResources::Release() {
    // The last one to let go of the library can be a worker, and a window goes on its own thread only.
    if (tooltip != nullptr && !DestroyWindow(tooltip)) {
        PostMessageA(tooltip, WM_CLOSE, 0, 0);
    }
    for (HBITMAP bitmap : {picture, lamps[0], lamps[1]}) {
        if (bitmap != nullptr) {
            DeleteObject(bitmap);
        }
    }
    if (images != nullptr) {
        ImageList_Destroy(images);
    }
    if (mailLibrary != nullptr) {
        FreeLibrary(mailLibrary);
    }
    if (lock != nullptr) {
        DeleteCriticalSection(lock);
        delete lock;
    }
    *this = {};
}
