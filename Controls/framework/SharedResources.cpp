#include "Controls/framework/SharedResources.h"

#include "Controls/framework/ControlClass.h"
#include "Panelhost/ApplicationPaths.h"

#include <commctrl.h>

SharedTooltip::SharedTooltip(DWORD style, HINSTANCE module)
    : window_(CreateWindowExA(0, TOOLTIPS_CLASSA, "", style, CW_USEDEFAULT, CW_USEDEFAULT, CW_USEDEFAULT,
                              CW_USEDEFAULT, nullptr, nullptr, module, nullptr)) {
    constexpr int MAXIMUM_WIDTH = 32767;
    SendMessageA(window_, TTM_SETMAXTIPWIDTH, 0, MAXIMUM_WIDTH);
}

SharedTooltip::~SharedTooltip() {
    // The last one to let go of the library can be a worker, and a window goes on its own thread only.
    if (window_ != nullptr && !DestroyWindow(window_)) {
        PostMessageA(window_, WM_CLOSE, 0, 0);
    }
}

SharedPicture::SharedPicture(const ControlClass& controlClass) {
    char path[MAX_PATH];
    a_MakeFullPathName(controlClass.picture, path);
    bitmap_ = static_cast<HBITMAP>(LoadImageA(nullptr, path, IMAGE_BITMAP, 0, 0, LR_LOADFROMFILE));
}

SharedPicture::~SharedPicture() {
    if (bitmap_ != nullptr) {
        DeleteObject(bitmap_);
    }
}

HBITMAP PictureOf(const ControlClass& controlClass) {
    const auto* shared = SharedOf<SharedPicture>(controlClass);
    return shared == nullptr ? nullptr : shared->Get();
}

std::unique_ptr<SharedResources> ShareTooltip(const ControlClass&, HINSTANCE module) {
    return std::make_unique<SharedTooltip>(TTS_ALWAYSTIP | TTS_NOPREFIX, module);
}

std::unique_ptr<SharedResources> SharePopupTooltip(const ControlClass&, HINSTANCE module) {
    return std::make_unique<SharedTooltip>(WS_POPUP, module);
}
