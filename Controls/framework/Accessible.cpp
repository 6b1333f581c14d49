// A control as an object of the system's accessibility interface.

#include "Controls/framework/Accessible.h"

#include "Controls/framework/Control.h"
#include "Panelhost/PropertyValues.h"
#include "base/Guard.h"
#include "base/Handles.h"

#include <oleacc.h>
#include <oleauto.h>

#include <algorithm>
#include <atomic>
#include <new>
#include <optional>
#include <string>
#include <utility>

namespace {

// What is needed of the system libraries for such objects, which are loaded when somebody asks for one.
class ObjectLibraries {
public:
    static const ObjectLibraries& Get() {
        static const ObjectLibraries libraries;
        return libraries;
    }
    bool AreThere() const {
        return resultOf != nullptr && makeStandard != nullptr && makeText != nullptr &&
               initialize != nullptr && disconnect != nullptr;
    }

    decltype(LresultFromObject)* resultOf = nullptr;
    decltype(CreateStdAccessibleObject)* makeStandard = nullptr;
    decltype(SysAllocStringLen)* makeText = nullptr;
    decltype(CoInitialize)* initialize = nullptr;
    decltype(CoDisconnectObject)* disconnect = nullptr;

private:
    // They stay: objects of other libraries may live in them.
    ObjectLibraries() {
        const HMODULE oleacc = LoadLibraryA("oleacc.dll");
        const HMODULE automation = LoadLibraryA("oleaut32.dll");
        const HMODULE ole = LoadLibraryA("ole32.dll");
        Find(resultOf, oleacc, "LresultFromObject");
        Find(makeStandard, oleacc, "CreateStdAccessibleObject");
        Find(makeText, automation, "SysAllocStringLen");
        Find(initialize, ole, "CoInitialize");
        Find(disconnect, ole, "CoDisconnectObject");
    }
    template <class Function>
    static void Find(Function*& function, HMODULE library, const char* name) {
        if (library != nullptr) {
            function = reinterpret_cast<Function*>(reinterpret_cast<void*>(GetProcAddress(library, name)));
        }
    }
};

bool IsSelf(const VARIANT& child) {
    return child.vt == VT_I4 && child.lVal == CHILDID_SELF;
}

std::string ValueOf(CONTROLPROPERTIES& control) {
    return control.hasNoValue ? CONTROLPROPERTIES::NO_VALUE : control.StatusText();
}

LONG StateOf(const CONTROLPROPERTIES& control) {
    const HWND window = control.window;
    const HWND focus = GetFocus();
    const bool isFocused = focus == window || IsChild(window, focus);
    LONG state = control.SpokenState();
    if (control.controlClass->palette.takesFocus) {
        state |= STATE_SYSTEM_FOCUSABLE | (isFocused ? STATE_SYSTEM_FOCUSED : 0);
    } else {
        state |= STATE_SYSTEM_READONLY;
    }
    return state | (IsWindowVisible(window) ? 0 : STATE_SYSTEM_INVISIBLE) |
           (IsWindowEnabled(window) ? 0 : STATE_SYSTEM_UNAVAILABLE);
}

std::wstring Wide(const std::string& text) {
    const int size = static_cast<int>(text.size());
    std::wstring wide(text.size(), L'\0'); // no code page of the system has more characters than bytes
    wide.resize(static_cast<std::size_t>(
        std::max(MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), size), 0)));
    return wide;
}

// Nothing for what is too long to be a value.
std::optional<std::string> Plain(const wchar_t* text) {
    char plain[TEXT_SIZE];
    const int size = WideCharToMultiByte(CP_ACP, 0, text, -1, plain, sizeof plain, nullptr, nullptr);
    return size > 0 ? std::optional(std::string(plain)) : std::nullopt;
}

} // namespace

class Accessible final : public IAccessible, private IOleWindow {
public:
    explicit Accessible(HWND window) : window_(window) {}
    Accessible(const Accessible&) = delete;
    Accessible& operator=(const Accessible&) = delete;

    IAccessible* Object() { return this; }
    // Whether it is to be announced.
    bool IsNew(std::string value, LONG state) {
        const bool isValueNew = value != value_;
        isStateNew_ = state != state_;
        value_ = std::move(value);
        state_ = state;
        return isValueNew;
    }
    bool IsStateNew() const { return isStateNew_; }
    void Disconnect() {
        window_ = nullptr;
        if (standard_ != nullptr) {
            std::exchange(standard_, nullptr)->Release();
        }
        ObjectLibraries::Get().disconnect(Object(), 0);
    }

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) {
            return E_POINTER;
        }
        if (id == __uuidof(IUnknown) || id == __uuidof(IDispatch) || id == __uuidof(IAccessible)) {
            *object = static_cast<IAccessible*>(this);
        } else if (id == __uuidof(IOleWindow)) {
            *object = static_cast<IOleWindow*>(this);
        } else {
            *object = nullptr;
            return E_NOINTERFACE;
        }
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references_;
        if (left == 0) {
            delete this;
        }
        return left;
    }

    // Only the functions themselves are answered, no names for them.
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo** info) override {
        *info = nullptr;
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, OLECHAR**, UINT, LCID, DISPID*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                                     UINT*) override {
        return E_NOTIMPL;
    }

    HRESULT STDMETHODCALLTYPE GetWindow(HWND* window) override {
        *window = window_;
        return window_ != nullptr ? S_OK : CO_E_OBJNOTCONNECTED;
    }
    HRESULT STDMETHODCALLTYPE ContextSensitiveHelp(BOOL) override { return E_NOTIMPL; }

    HRESULT STDMETHODCALLTYPE get_accName(VARIANT child, BSTR* name) override {
        return Text(child, name, [](CONTROLPROPERTIES& control) { return control.SpokenName(); });
    }
    HRESULT STDMETHODCALLTYPE get_accValue(VARIANT child, BSTR* value) override {
        return Text(child, value, ValueOf);
    }
    HRESULT STDMETHODCALLTYPE get_accDescription(VARIANT child, BSTR* description) override {
        return Text(child, description, [](CONTROLPROPERTIES& control) {
            char text[TEXT_SIZE] = "";
            control.OnGetTooltip(0, reinterpret_cast<LPARAM>(text));
            return std::string(text);
        });
    }
    HRESULT STDMETHODCALLTYPE get_accDefaultAction(VARIANT child, BSTR* action) override {
        return Text(child, action, [](const CONTROLPROPERTIES& control) {
            return control.controlClass->palette.takesFocus ? control.DefaultAction() : std::string();
        });
    }
    HRESULT STDMETHODCALLTYPE get_accHelp(VARIANT child, BSTR* help) override {
        return Text(child, help, [](CONTROLPROPERTIES&) { return std::string(); });
    }
    HRESULT STDMETHODCALLTYPE get_accKeyboardShortcut(VARIANT child, BSTR* shortcut) override {
        return Text(child, shortcut, [](CONTROLPROPERTIES&) { return std::string(); });
    }
    HRESULT STDMETHODCALLTYPE get_accHelpTopic(BSTR* file, VARIANT, long*) override {
        *file = nullptr;
        return S_FALSE;
    }
    HRESULT STDMETHODCALLTYPE get_accRole(VARIANT child, VARIANT* role) override {
        return Number(child, role, [](CONTROLPROPERTIES& control) { return control.controlClass->role; });
    }
    HRESULT STDMETHODCALLTYPE get_accState(VARIANT child, VARIANT* state) override {
        return Number(child, state, StateOf);
    }

    // As the hand does it: refused where a hand could not.
    HRESULT STDMETHODCALLTYPE put_accValue(VARIANT child, BSTR value) override {
        return Operate(child, [&](CONTROLPROPERTIES& control) {
            const auto text = value == nullptr ? std::nullopt : Plain(value);
            const int row = a_FindKeyword(control.GetHostinfoTable(), "value");
            if (!text || row < 0) {
                return E_INVALIDARG;
            }
            char buffer[TEXT_SIZE];
            buffer[text->copy(buffer, TEXT_SIZE - 1)] = '\0';
            VALUERECORD record = VALUERECORD::SetText(buffer, row).Named("value");
            const bool isTaken =
                SendMessageA(control.window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)) != 0;
            return isTaken || ValueOf(control) == *text ? S_OK : E_INVALIDARG; // some refuse what they have
        });
    }
    HRESULT STDMETHODCALLTYPE put_accName(VARIANT, BSTR) override { return E_ACCESSDENIED; }
    HRESULT STDMETHODCALLTYPE accDoDefaultAction(VARIANT child) override {
        return Operate(child, [](const CONTROLPROPERTIES& control) {
            if (control.DefaultAction().empty()) {
                return DISP_E_MEMBERNOTFOUND;
            }
            // Posted, since there may be a question before anything is done.
            PostMessageA(control.window, WM_KEYDOWN, VK_RETURN, 1);
            PostMessageA(control.window, WM_KEYUP, VK_RETURN, static_cast<LPARAM>(0xC0000001));
            return S_OK;
        });
    }
    HRESULT STDMETHODCALLTYPE accSelect(long how, VARIANT child) override {
        return Operate(child, [&](const CONTROLPROPERTIES& control) {
            if ((how & ~static_cast<long>(SELFLAG_TAKEFOCUS)) != 0 || !IsWindowVisible(control.window)) {
                return E_INVALIDARG;
            }
            SetFocus(control.window);
            return S_OK;
        });
    }

    HRESULT STDMETHODCALLTYPE accLocation(long* left, long* top, long* width, long* height,
                                          VARIANT child) override {
        RECT place{};
        if (!IsSelf(child)) {
            return E_INVALIDARG;
        }
        if (!GetWindowRect(window_, &place)) {
            return CO_E_OBJNOTCONNECTED;
        }
        *left = place.left;
        *top = place.top;
        *width = place.right - place.left;
        *height = place.bottom - place.top;
        return S_OK;
    }

    // The rest is what the system says of any window.
    HRESULT STDMETHODCALLTYPE get_accParent(IDispatch** parent) override {
        return Standard([&](IAccessible& object) { return object.get_accParent(parent); });
    }
    HRESULT STDMETHODCALLTYPE get_accChildCount(long* count) override {
        return Standard([&](IAccessible& object) { return object.get_accChildCount(count); });
    }
    HRESULT STDMETHODCALLTYPE get_accChild(VARIANT child, IDispatch** object) override {
        return Standard([&](IAccessible& standard) { return standard.get_accChild(child, object); });
    }
    HRESULT STDMETHODCALLTYPE get_accFocus(VARIANT* focus) override {
        return Standard([&](IAccessible& object) { return object.get_accFocus(focus); });
    }
    HRESULT STDMETHODCALLTYPE get_accSelection(VARIANT* selection) override {
        return Standard([&](IAccessible& object) { return object.get_accSelection(selection); });
    }
    HRESULT STDMETHODCALLTYPE accNavigate(long direction, VARIANT start, VARIANT* end) override {
        return Standard([&](IAccessible& object) { return object.accNavigate(direction, start, end); });
    }
    HRESULT STDMETHODCALLTYPE accHitTest(long x, long y, VARIANT* child) override {
        return Standard([&](IAccessible& object) { return object.accHitTest(x, y, child); });
    }

private:
    ~Accessible() = default;

    CONTROLPROPERTIES* Control() const {
        return window_ == nullptr ? nullptr : PropertiesOf<CONTROLPROPERTIES>(window_);
    }
    // What `ask` says of the control.
    template <class Ask>
    HRESULT About(const VARIANT& child, Ask ask) {
        if (!IsSelf(child)) {
            return E_INVALIDARG;
        }
        CONTROLPROPERTIES* control = Control();
        if (control == nullptr) {
            return CO_E_OBJNOTCONNECTED;
        }
        return Guarded(HRESULT{E_OUTOFMEMORY}, [&] {
            const Held held(*control);
            return HRESULT{ask(*control)};
        });
    }
    template <class Ask>
    HRESULT Text(const VARIANT& child, BSTR* text, Ask ask) {
        if (text == nullptr) {
            return E_POINTER;
        }
        *text = nullptr;
        return About(child, [&](CONTROLPROPERTIES& control) {
            const std::wstring wide = Wide(ask(control));
            if (wide.empty()) {
                return HRESULT{S_FALSE};
            }
            *text = ObjectLibraries::Get().makeText(wide.data(), static_cast<UINT>(wide.size()));
            return HRESULT{*text != nullptr ? S_OK : E_OUTOFMEMORY};
        });
    }
    template <class Ask>
    HRESULT Number(const VARIANT& child, VARIANT* number, Ask ask) {
        if (number == nullptr) {
            return E_POINTER;
        }
        number->vt = VT_EMPTY;
        return About(child, [&](CONTROLPROPERTIES& control) {
            number->lVal = ask(control);
            number->vt = VT_I4;
            return S_OK;
        });
    }
    template <class Act>
    HRESULT Operate(const VARIANT& child, Act act) {
        return About(child, [&](CONTROLPROPERTIES& control) {
            if (!control.controlClass->palette.takesFocus) {
                return HRESULT{DISP_E_MEMBERNOTFOUND};
            }
            const bool canBe = control.mode == 0 && IsWindowEnabled(control.window);
            return canBe ? HRESULT{act(control)} : HRESULT{E_ACCESSDENIED};
        });
    }
    template <class Ask>
    HRESULT Standard(Ask ask) {
        if (standard_ == nullptr && window_ != nullptr) {
            ObjectLibraries::Get().makeStandard(window_, OBJID_CLIENT, __uuidof(IAccessible),
                                                reinterpret_cast<void**>(&standard_));
        }
        return window_ == nullptr ? CO_E_OBJNOTCONNECTED : standard_ == nullptr ? E_FAIL : ask(*standard_);
    }

    std::atomic<ULONG> references_ = 1;
    HWND window_;
    IAccessible* standard_ = nullptr;
    std::string value_; // as last announced
    LONG state_ = 0;
    bool isStateNew_ = false;
};

LRESULT AccessibleLink::Answer(CONTROLPROPERTIES& control, WPARAM wParam) noexcept {
    const ObjectLibraries& libraries = ObjectLibraries::Get();
    if (!libraries.AreThere()) {
        return 0;
    }
    if (object_ == nullptr) {
        object_ = new (std::nothrow) Accessible(control.window);
    }
    if (object_ == nullptr) {
        return 0;
    }
    LRESULT result = libraries.resultOf(__uuidof(IAccessible), wParam, object_->Object());
    // A host need not use such objects itself.
    if (result == CO_E_NOTINITIALIZED && SUCCEEDED(libraries.initialize(nullptr))) {
        result = libraries.resultOf(__uuidof(IAccessible), wParam, object_->Object());
    }
    return result;
}

void AccessibleLink::Announce(CONTROLPROPERTIES& control) noexcept {
    if (object_ == nullptr) {
        return;
    }
    Guarded([&] {
        const HWND window = control.window;
        const bool isValueNew = object_->IsNew(ValueOf(control), StateOf(control));
        const bool isStateNew = object_->IsStateNew();
        if (isValueNew) {
            NotifyWinEvent(EVENT_OBJECT_VALUECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
        }
        if (isStateNew) {
            NotifyWinEvent(EVENT_OBJECT_STATECHANGE, window, OBJID_CLIENT, CHILDID_SELF);
        }
    });
}

void AccessibleLink::Disconnect() noexcept {
    if (Accessible* object = std::exchange(object_, nullptr); object != nullptr) {
        object->Disconnect();
        object->Release();
    }
}
