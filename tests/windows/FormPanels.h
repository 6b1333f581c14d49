#pragma once

#include "Panelhost/Devices.h"
#include "tests/windows/Buttons.h"

#include <commctrl.h>
#include <cstring>
#include <string>
#include <thread>
#include <vector>

// What the tests of the editor panels share.

// An object of a panel that holds a value of one datatype and writes what it is set to into a common log.
template <class Value>
class ValueTarget : public Recorder {
public:
    using ToText = std::string (*)(const Value&);
    ValueTarget(const TestPanel& panel, const char* ownName, int type, ToText toText,
                std::vector<std::string>& sent)
        : Recorder(panel, ownName), datatype(type), text(toText), log(sent) {}

    LRESULT OnMessage(WPARAM wParam, LPARAM lParam) override {
        auto& record = *reinterpret_cast<VALUERECORD*>(lParam);
        switch (record.command) {
        case COMMAND_GET:
            return reachable ? a_AnswerBytes(&record, datatype, &held, sizeof held) : -1;
        case COMMAND_SET:
            if (record.datatype != datatype) {
                return 0;
            }
            std::memcpy(&held, record.data, sizeof held);
            log.push_back(text(held));
            if (onSet) {
                onSet();
            }
            return 1;
        default:
            return Recorder::OnMessage(wParam, lParam);
        }
    }

    int datatype;
    ToText text;
    std::vector<std::string>& log;
    Value held{};
};

// A device whose only parameter holds any bytes.
template <class Value>
class OddDevice : public DEVICE {
public:
    explicit OddDevice(const TestPanel& panel) { Register(panel.Root(), "ODD"); }
    LRESULT OnRequestList(WPARAM, LPARAM item) override {
        auto& request = *reinterpret_cast<REQUESTITEM*>(item);
        request.handler = [](VALUERECORD* record, void* context) {
            auto& device = *static_cast<OddDevice*>(context);
            if (record->command == COMMAND_SET) {
                ++device.sets;
                std::memcpy(&device.held, record->data, sizeof device.held);
            } else {
                std::memcpy(record->data, &device.held, sizeof device.held);
            }
            return 1;
        };
        request.context = this;
        return 1;
    }
    Value held{};
    int sets = 0;
};

// The log as one text, which is then empty: "a | b".
std::string TakeAll(std::vector<std::string>& log);

inline HWND Item(HWND panel, int id) {
    return GetDlgItem(panel, id);
}
// Left, top, right and bottom in the parent's client area.
std::string PlaceOf(HWND child);
// The items of a drop-down list, joined by ",".
std::string ItemsOf(HWND list);

// All children in their order: number, class, text, place (of a field only left and top, its arrows take some
// of it; of arrows the number of their field), and "hidden", "Tab", "centred", "scrolls" where it is so. "; "
// between.
std::string LayoutOf(HWND panel);

// What a user does to a child: a text typed and ended by a key or the loss of the focus, an arrow pressed, an
// item chosen.
void TypeInto(HWND panel, int fieldId, const char* typed, WPARAM key = VK_RETURN);
void LeaveField(HWND panel, int fieldId, const char* typed);
void StepSpin(HWND panel, int spinId, int delta);
// A text typed into a field, or typed and not ended before its arrows are pressed; what is shown and sent
// then.
struct Entry {
    const char* value; // before
    int id;            // of a field, or of arrows
    const char* typed;
    int delta;
    const char* shown;
    const char* sent;
};
// What the field shows after it.
std::string Enter(HWND panel, const Entry& entry, WPARAM key = VK_RETURN);
void ChooseItem(HWND panel, int listId, int item);
// A key as the keyboard would send it to the window with the focus, with Shift held or not.
void PressKey(WPARAM key, bool shift = false);

// Whether a menu opens, or closes, soon. Called from another thread.
bool WaitForMenu(bool isOpen);
// While it lives, menus of its thread know no mouse: a cursor that happens to lie over one, or that anybody
// moves, would light another entry, or none, between the key that reaches one and the key that chooses it.
class MenusByKeyboard {
public:
    MenusByKeyboard();
    ~MenusByKeyboard() { UnhookWindowsHookEx(hook_); }
    MenusByKeyboard(const MenusByKeyboard&) = delete;
    MenusByKeyboard& operator=(const MenusByKeyboard&) = delete;

private:
    HHOOK hook_;
};
// Chooses an entry of the menu that is open, counted from 1 without its lines, by the keys of its owner; 0 is
// Escape. Called from another thread, while that of the menu has a MenusByKeyboard.
// False when the system has ended the menu before.
bool ChooseShownEntry(HWND owner, int down);
// Chooses an entry of the menu of a child, by the number of steps down. One that cannot be chosen is left by
// Escape.
void ChooseFromMenu(HWND panel, int childId, int down);
constexpr int COPY = 1, PASTE = 2; // the entries

// Null only empties it.
void PutOnClipboard(UINT format, const void* bytes, std::size_t size);
