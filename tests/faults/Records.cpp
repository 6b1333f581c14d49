// Value records, property lines and window messages of every sort to controls of every class.

#include "tests/faults/Scenery.h"

#include <climits>
#include <cstring>
#include <functional>
#include <limits>

namespace {

constexpr std::size_t GUARD = 64; // bytes behind a buffer that nobody may touch

void SendRecord(Random& random, HWND control) {
    constexpr int COMMANDS[] = {COMMAND_GET,     COMMAND_SET, COMMAND_GET, COMMAND_SET,
                                COMMAND_RESOLVE, 0,           3,           INT_MIN};
    constexpr int DATATYPES[] = {DATATYPE_NONE,      DATATYPE_INTEGER,   DATATYPE_FLOAT, DATATYPE_TEXT,
                                 DATATYPE_TEXT,      DATATYPE_DATA,      DATATYPE_DELAY, DATATYPE_CROSSOVER,
                                 DATATYPE_MASTER_EQ, DATATYPE_CHANNEL_EQ};
    constexpr int INDEXES[] = {0, 0, 0, 1, 5, 12, 40, -1, INT_MAX, INT_MIN};
    const float numbers[] = {0, -1, 1e38F, std::numeric_limits<float>::quiet_NaN(),
                             -std::numeric_limits<float>::infinity()};
    std::vector<char> data(TEXT_SIZE + GUARD, '\x5A');
    const std::string line = Scenery::Line(random, control);
    const std::string keyword = line.substr(0, line.find('='));
    VALUERECORD record{random.Pick(COMMANDS),
                       random.Pick(INDEXES),
                       random.OneIn(8) ? random.Pick(INDEXES) : random.Pick(DATATYPES),
                       0,
                       data.data(),
                       random.OneIn(3) ? nullptr : keyword.c_str(),
                       0};
    if (record.datatype == DATATYPE_INTEGER) {
        const int number = random.OneIn(2) ? random.Below(5) : random.Pick(INDEXES);
        std::memcpy(data.data(), &number, sizeof number);
    } else if (record.datatype == DATATYPE_FLOAT) {
        std::memcpy(data.data(), &random.Pick(numbers), sizeof(float));
    } else {
        const std::string text = RandomValue(random, "");
        data[TEXT_SIZE - 1] = '\0';
        std::memcpy(data.data(), text.c_str(), std::min<std::size_t>(text.size() + 1, TEXT_SIZE - 1));
    }
    if (random.OneIn(8)) {
        record.data = nullptr;
    }
    Doing("record %d index %d datatype %d name %s data %s to %s", record.command, record.index,
          record.datatype, record.name == nullptr ? "(null)" : Shown(record.name, 80).c_str(),
          record.data == nullptr ? "(null)" : Shown(std::string(data.data(), 40)).c_str(),
          Described(control).c_str());
    SendMessageA(control, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    Expect(std::string(data.end() - GUARD, data.end()) == std::string(GUARD, '\x5A'),
           "an answer is larger than any text may be");
}

void SendWindowMessage(Random& random, HWND control) {
    constexpr UINT MESSAGES[] = {
        WM_LBUTTONDOWN, WM_MOUSEMOVE, WM_LBUTTONUP,  WM_LBUTTONDBLCLK, WM_RBUTTONDOWN, WM_MOUSEWHEEL,
        WM_KEYDOWN,     WM_KEYUP,     WM_CHAR,       WM_SETFOCUS,      WM_KILLFOCUS,   WM_CAPTURECHANGED,
        WM_TIMER,       WM_PAINT,     WM_SIZE,       WM_CLOSE,         WM_CANCELMODE,  WM_ENABLE,
        WM_SHOWWINDOW,  WM_COMMAND,   WM_GETDLGCODE, WM_USER + 1,      CWM_LOAD};
    constexpr UINT OWN_MESSAGES[] = {
        CWM_GETPROPERTIES, CWM_GETCONTROLTYPE,  CWM_SAVETOLISTCTRL, CWM_PARAMETERDLG,      CWM_EXTENDMENU,
        CWM_MENUCOMMAND,   CWM_FUNCTIONCHANGED, CWM_GETCAPTION,     CWM_GETPREFERREDWIDTH, CWM_ATTACHDIALOG};
    constexpr WPARAM KEYS[] = {0,        1,         2,      9,         14,  VK_UP, VK_NEXT,
                               VK_SPACE, VK_RETURN, VK_TAB, VK_ESCAPE, 'C', 'V',   11};
    const UINT message = random.OneIn(3) ? random.Pick(OWN_MESSAGES) : random.Pick(MESSAGES);
    // What is a device context or a pointer is null.
    const WPARAM wParam = message == WM_PAINT ? 0 : random.Pick(KEYS);
    const LPARAM lParam = message < CWM_MESSAGE && message != WM_GETDLGCODE
                              ? At(random.Below(120) - 10, random.Below(60) - 10)
                              : 0;
    Doing("message %x %x %lx to %s", message, wParam, lParam, Described(control).c_str());
    SendMessageA(control, message, wParam, lParam);
}

void Round(Random& random, int) {
    Scenery scenery(random, 8);
    for (int i = 0; i < 60; ++i) {
        HWND control = scenery.Control(random);
        if (control == nullptr) {
            break;
        }
        const std::function<void()> operations[] = {
            [&] { SendWindowMessage(random, control); }, [&] { SendWindowMessage(random, control); },
            [&] { Scenery::LoadLine(random, control, static_cast<WPARAM>(random.Below(3))); },
            [&] {
                Doing("picture of %s", Described(control).c_str());
                const Picture picture(control);
            },
            [&] {
                Doing("tick");
                ph_SetMode(scenery.panel.Root(), random.OneIn(4) ? 1 : 0);
                ph_Tick(scenery.panel.Root());
                PumpAll();
            }};
        if (random.OneIn(3)) {
            SendRecord(random, control);
        } else {
            random.Pick(operations)();
        }
    }
    Doing("close the panel");
}

} // namespace

const Topic recordsTopic{"records", Round};
