// What all devices share: the message-only window and the answering of value records by parameter name.

#include "Panelhost/Devices.h"

#include "Panelhost/Remote.h"
#include "Panelhost/devices/DeviceKind.h"
#include "Panelhost/objects/PanelRoot.h"
#include "Panelhost/objects/RequestAddress.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <cstring>

namespace {

constexpr const char* DEVICE_CLASS = "PanelhostDevice";

LRESULT CALLBACK DeviceProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    auto* device = reinterpret_cast<DEVICE*>(GetWindowLongPtrA(window, GWLP_USERDATA));
    if (device != nullptr) {
        switch (message) {
        case CWM_MESSAGE:
            return Guarded(LRESULT{0}, [&] { return device->OnMessage(wParam, lParam); });
        case CWM_GETPROPERTIES:
            return reinterpret_cast<LRESULT>(static_cast<HOSTINFO*>(device));
        case DEVICE_NEWS:
            return Guarded(LRESULT{0}, [&] { return device->OnDataInBuffer(wParam, lParam); });
        case WM_TIMER:
            return Guarded(LRESULT{0}, [&] { return device->OnTimer(wParam, lParam); });
        default:
            break;
        }
    }
    return DefWindowProcA(window, message, wParam, lParam);
}

HWND CreateDeviceWindow(const char* name) {
    HINSTANCE module = nullptr;
    GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       reinterpret_cast<const char*>(&CreateDeviceWindow), &module);
    static const ATOM registered = [module] {
        UnregisterClassA(DEVICE_CLASS, module); // of an earlier life of this library at the same place
        WNDCLASSA deviceClass{};
        deviceClass.lpfnWndProc = DeviceProc;
        deviceClass.hInstance = module;
        deviceClass.lpszClassName = DEVICE_CLASS;
        return RegisterClassA(&deviceClass);
    }();
    return registered == 0 ? nullptr
                           : CreateWindowExA(0, DEVICE_CLASS, name, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                                             module, nullptr);
}

} // namespace

DEVICE::DEVICE() {
    kind = KIND_DEVICE;
}

DEVICE::~DEVICE() {
    a_HostinfoDestroyed(a_FindRootHostinfo(this), this);
    a_RemoveHostinfo(parent, this);
    if (window != nullptr) {
        SetWindowLongPtrA(window, GWLP_USERDATA, 0);
        DestroyWindow(window);
    }
}

bool DEVICE::Register(HOSTINFO* root, const char* deviceName) {
    return Guarded(false, [&] {
        PanelRoot* panel = PanelRoot::From(root);
        const std::string clean = logic::CleanName(deviceName == nullptr ? "" : deviceName);
        if (panel == nullptr || clean.empty() || clean != deviceName || panel->Find(clean) != nullptr) {
            return false;
        }
        HWND own = CreateDeviceWindow(deviceName);
        if (own == nullptr) {
            return false;
        }
        a_InitializeHostinfo(own, this, root);
        a_AddHostinfo(root, this);
        SetWindowLongPtrA(own, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
        a_HostinfoCreated(root, this);
        wasLive = OnStatus().state == DEVICE_LIVE;
        return true;
    });
}

LRESULT DEVICE::OnMessage(WPARAM, LPARAM lParam) {
    auto* record = reinterpret_cast<VALUERECORD*>(lParam);
    if (record == nullptr || record->name == nullptr) {
        return 0;
    }
    REQUESTITEM item;
    if (OnRequestList(reinterpret_cast<WPARAM>(record->name), reinterpret_cast<LPARAM>(&item)) == 0) {
        return 0;
    }
    record->index = item.record.index;
    if (record->command == COMMAND_RESOLVE) {
        return 1;
    }
    if (record->command == COMMAND_SET) {
        item.address = std::make_shared<REQUESTADDRESS>(
            REQUESTADDRESS{a_FindRootHostinfo(this), nullptr, name + "*" + record->name});
    }
    const RemoteSetting fromHere(false);
    const int answer = SendToParameter(item, *record);
    return answer < 0 ? 0 : answer;
}

int DEVICE::OnParameterState(const char* keyword, DWORD* age) {
    REQUESTITEM item;
    if (OnRequestList(reinterpret_cast<WPARAM>(keyword), reinterpret_cast<LPARAM>(&item)) == 0) {
        return PARAMETER_NONE;
    }
    *age = NO_AGE;
    return OnIsAlive(0, 0) != 0 ? PARAMETER_LIVE : PARAMETER_LOST;
}

int DEVICE::OnLastValue(const char* keyword, std::string* value) {
    int found = 0;
    return OnGet(keyword, *value, &found);
}

DEVICESTATUS DEVICE::OnStatus() {
    return {OnIsAlive(0, 0) != 0 ? DEVICE_LIVE : DEVICE_LOST, NO_AGE, NO_AGE};
}

bool DEVICE::OnIsRecallable(const char* keyword, logic::FadeScale*) {
    REQUESTITEM item;
    return OnRequestList(reinterpret_cast<WPARAM>(keyword), reinterpret_cast<LPARAM>(&item)) != 0;
}

bool DEVICE::OnHolds(const char* keyword, const std::string& text) {
    std::string held;
    int result = 0;
    return OnGet(keyword, held, &result) != 0 && held == text;
}

unsigned DEVICE::OnWriteRate() {
    return 0;
}

int a_ParameterState(HOSTINFO* root, const char* address, DWORD* age) {
    PanelRoot* panel = PanelRoot::From(root);
    const char* star = address == nullptr ? nullptr : std::strrchr(address, '*');
    DWORD unasked = NO_AGE;
    DWORD& known = age != nullptr ? *age : unasked;
    known = NO_AGE;
    if (panel == nullptr || star == nullptr) {
        return PARAMETER_NONE;
    }
    return Guarded(PARAMETER_NONE, [&] {
        auto* device = dynamic_cast<DEVICE*>(panel->Find(std::string(address, star)));
        return device == nullptr ? PARAMETER_NONE : device->OnParameterState(star + 1, &known);
    });
}

void a_AnnounceFunction(HOSTINFO* root, const char* address) {
    PanelRoot* panel = PanelRoot::From(root);
    if (panel == nullptr || address == nullptr) {
        return;
    }
    for (HOSTINFO* object : panel->bindings.WaitingFor(address)) {
        if (a_IsAlive(object)) {
            TellOfFunction(object, address);
        }
    }
}

void TellOfFunction(HOSTINFO* object, const char* address) {
    const HWND target = object->window;
    const WORD changed = object->flags & FLAG_CHANGED;
    SendMessageA(target, CWM_FUNCTIONCHANGED, FUNCTION_CHANGED, reinterpret_cast<LPARAM>(address));
    if (a_FromWindow(target) == object &&
        changed == 0) { // what it is bound to came or went, not its properties
        object->flags = static_cast<WORD>(object->flags & ~FLAG_CHANGED);
    }
}
