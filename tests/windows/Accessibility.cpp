// What screen readers and programs that test user interfaces are told of controls, and can do to them.

#include "tests/windows/Buttons.h"
#include "tests/windows/ControlClasses.h"
#include "tests/windows/Resources.h"

#include <oleacc.h>

#include <functional>
#include <memory>

TEST_SUITE_BEGIN("Accessibility");

namespace {

struct Releaser {
    void operator()(IUnknown* object) const { object->Release(); }
};
using Object = std::unique_ptr<IAccessible, Releaser>;

Object ObjectFor(HWND window) {
    void* object = nullptr;
    CHECK(AccessibleObjectFromWindow(window, static_cast<DWORD>(OBJID_CLIENT), IID_IAccessible, &object) ==
          S_OK);
    return Object(static_cast<IAccessible*>(object));
}

VARIANT Self() {
    VARIANT self;
    self.vt = VT_I4;
    self.lVal = CHILDID_SELF;
    return self;
}

using TextOfObject = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, BSTR*);
using NumberOfObject = HRESULT (STDMETHODCALLTYPE IAccessible::*)(VARIANT, VARIANT*);

std::string Plain(BSTR text) {
    char plain[TEXT_SIZE] = "";
    WideCharToMultiByte(CP_ACP, 0, text, -1, plain, sizeof plain, nullptr, nullptr);
    SysFreeString(text);
    return plain;
}

std::string Ask(const Object& object, TextOfObject ask) {
    BSTR text = nullptr;
    const HRESULT result = (object.get()->*ask)(Self(), &text);
    CHECK((result == S_OK) == (text != nullptr));
    return text == nullptr ? "" : Plain(text);
}

LONG Ask(const Object& object, NumberOfObject ask) {
    VARIANT number;
    CHECK((object.get()->*ask)(Self(), &number) == S_OK);
    CHECK(number.vt == VT_I4);
    return number.lVal;
}

HRESULT Put(const Object& object, const wchar_t* value) {
    BSTR text = SysAllocString(value);
    const HRESULT result = object->put_accValue(Self(), text);
    SysFreeString(text);
    return result;
}

int changes[2];

void CALLBACK Changed(HWINEVENTHOOK, DWORD event, HWND, LONG, LONG, DWORD, DWORD) {
    ++changes[event == EVENT_OBJECT_VALUECHANGE ? 0 : 1];
}

} // namespace

TEST_CASE("controls of all classes tell name, role, value, state and place") {
    const TestPanel panel(TestPanel::Visible);
    for (const ExpectedClass& expected : EXPECTED_CLASSES) {
        INFO(std::string(expected.name));
        HWND control = panel.Create(expected.name, expected.name);
        const Object object = ObjectFor(control);
        REQUIRE(object);
        const bool hasCaption = a_FindKeyword(ObjectOf(control).GetHostinfoTable(), "caption") >= 0;
        const std::string caption = hasCaption ? Text(control, "caption") : "";
        CHECK(Ask(object, &IAccessible::get_accName) == (caption.empty() ? expected.name : caption));
        CHECK(Ask(object, &IAccessible::get_accRole) != 0);
        CHECK(Ask(object, &IAccessible::get_accValue) == Text(control));
        CHECK(Ask(object, &IAccessible::get_accDescription).find(expected.name) == 0);
        const LONG state = Ask(object, &IAccessible::get_accState);
        CHECK(((state & STATE_SYSTEM_FOCUSABLE) != 0) != ((state & STATE_SYSTEM_READONLY) != 0));
        CHECK(((state & STATE_SYSTEM_INVISIBLE) == 0) == (IsWindowVisible(control) != FALSE));
        RECT place;
        GetWindowRect(control, &place);
        long left = 0;
        long top = 0;
        long width = 0;
        long height = 0;
        CHECK(object->accLocation(&left, &top, &width, &height, Self()) == S_OK);
        const RECT told{left, top, left + width, top + height};
        CHECK(EqualRect(&told, &place));
        VARIANT other = Self();
        other.lVal = 1;
        BSTR none = nullptr;
        CHECK(object->get_accName(other, &none) == E_INVALIDARG);
        DestroyWindow(control);
        CHECK(object->get_accName(Self(), &none) == CO_E_OBJNOTCONNECTED);
        CHECK(object->get_accChildCount(&left) == CO_E_OBJNOTCONNECTED);
        CHECK(Put(object, L"1") == CO_E_OBJNOTCONNECTED);
        CHECK(none == nullptr);
    }
}

TEST_CASE("what is operated can be set, while it is operated") {
    const TestPanel panel(TestPanel::Visible);
    panel.Declare("AMP1*device=simulated\nAMP1*gain=float,0,100,0\n");
    constexpr struct {
        const char* className;
        const char* line;
        const wchar_t* value;
        const char* result;
    } ROWS[] = {
        {"KNOB", "function=AMP1*gain", L"12", "12"},
        {"FADER", "properties=-80,10,0", L"-30", "-30"},
        {"SPINEDIT", "properties=0,100,0", L"12.5", "12.5"},
        {"BRANGE", "settable=value", L"40", "40"},
        {"BTRISTATEBUTTON", "offvalue=2", L"1", "1"},
        {"BRADIOBUTTON", "onvalue=3", L"3", "3"},
        {"SWITCH", "positions=0,1,2", L"2", "2"},
        {"BEDIT", "caption=", L"Hall 2", "Hall 2"},
        {"BEDIT2", "caption=", L"Hall 2", "Hall 2"},
        {"LISTSELECTION", "items=A;B;C", L"2", "2"},
        {"BCOMBOBOX", "items=A;B;C", L"C", "C"},
    };
    for (const auto& row : ROWS) {
        INFO(std::string(row.className));
        HWND control = panel.Create(row.className, row.className);
        Load(control, row.line);
        const Object object = ObjectFor(control);
        ph_SetMode(panel.Root(), 1);
        CHECK(Put(object, row.value) == E_ACCESSDENIED);
        ph_SetMode(panel.Root(), 0);
        CHECK(Put(object, row.value) == S_OK);
        CHECK(Put(object, row.value) == S_OK);
        CHECK(Ask(object, &IAccessible::get_accValue) == row.result);
        CHECK(Put(object, std::wstring(5000, L'1').c_str()) == E_INVALIDARG);
        CHECK(object->put_accValue(Self(), nullptr) == E_INVALIDARG);
        CHECK(Ask(object, &IAccessible::get_accValue) == row.result);
    }
    CHECK(panel.Parameter("AMP1*gain") == "12");
    const Object meter = ObjectFor(panel.Create("METER", "Meter"));
    CHECK(Put(meter, L"-12") == DISP_E_MEMBERNOTFOUND);
}

TEST_CASE("buttons are pressed, tell whether they are on, and what changes is announced") {
    const TestPanel panel(TestPanel::Visible);
    HWND button = panel.Create("BTRISTATEBUTTON", "Mute");
    HWND dummy = panel.Create("KNOB", "Knob");
    Load(button, "caption=MUTE");
    const Object object = ObjectFor(button);
    CHECK(Ask(object, &IAccessible::get_accRole) == ROLE_SYSTEM_CHECKBUTTON);
    CHECK((Ask(object, &IAccessible::get_accState) & STATE_SYSTEM_CHECKED) == 0);
    UpdateWindow(button);
    PumpAll();
    changes[0] = changes[1] = 0;
    const HWINEVENTHOOK hook =
        SetWinEventHook(EVENT_OBJECT_STATECHANGE, EVENT_OBJECT_VALUECHANGE, GetModuleHandleA(nullptr),
                        Changed, GetCurrentProcessId(), 0, WINEVENT_INCONTEXT);
    CHECK(object->accDoDefaultAction(Self()) == S_OK);
    CHECK(Await([&] { return (Ask(object, &IAccessible::get_accState) & STATE_SYSTEM_CHECKED) != 0; }));
    UpdateWindow(button);
    CHECK(changes[0] >= 1);
    CHECK(changes[1] >= 1);
    const int told = changes[0];
    InvalidateRect(button, nullptr, FALSE);
    UpdateWindow(button);
    CHECK(changes[0] == told);
    UnhookWinEvent(hook);
    CHECK(object->accSelect(SELFLAG_TAKEFOCUS, Self()) == S_OK);
    CHECK(GetFocus() == button);
    CHECK((Ask(object, &IAccessible::get_accState) & STATE_SYSTEM_FOCUSED) != 0);
    const Object knob = ObjectFor(dummy);
    CHECK(knob->accDoDefaultAction(Self()) == DISP_E_MEMBERNOTFOUND);
}

TEST_CASE("objects leave nothing behind, whoever holds them longest") {
    const auto left = [](const std::function<void()>& round) {
        round(); // what is made once
        const int before = CountHeapBlocks();
        for (int i = 0; i < 20; ++i) {
            round();
        }
        return CountHeapBlocks() - before;
    };
    // The system can keep something of each question itself.
    const TestPanel panel;
    HWND plain = panel.Create("STATIC", "Plain");
    const auto ofSystem = left([&] {
        void* object = nullptr;
        CreateStdAccessibleObject(plain, OBJID_CLIENT, IID_IAccessible, &object);
        const Object standard(static_cast<IAccessible*>(object));
        for (int i = 0; i < 2; ++i) {
            const LRESULT result = LresultFromObject(IID_IAccessible, 0, standard.get());
            ObjectFromLresult(result, IID_IAccessible, 0, &object);
            Object{static_cast<IAccessible*>(object)};
        }
    });
    CHECK(left([&] {
              HWND knob = panel.Create("KNOB", "Knob");
              const Object first = ObjectFor(knob);
              ObjectFor(knob);
              DestroyWindow(knob);
          }) < ofSystem + 10);
}

TEST_SUITE_END();
