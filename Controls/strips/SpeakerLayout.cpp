// The controls inside the monitor section, where they stand, and what is drawn beside them.

#include "Controls/strips/SpeakerControl.h"
#include "base/Gdi.h"

#include <algorithm>
#include <cstdio>
#include <utility>

// A picture that buttons come in.
struct SwitchFace {
    SIZE size;
    const char* name; // in that of its file
};

namespace {

using Control = SPEAKERCONTROLPROPERTIES;

constexpr SIZE SIZE_OF_NEW{160, 120};
constexpr SIZE LEAST_SIZE{64, 64};
constexpr const char* SETS[Control::MOST_SETS] = {"Set1", "Set2", "Set3", "Set4",
                                                  "Set5", "Set6", "Set7", "Set8"};
constexpr const char* KNOB = "Level";
constexpr const char* LOWER_ROW[] = {"DIM", "MONO", "MUTE", "TALK"};
constexpr const char* FONT_LINE = "font=Small Fonts,7";

constexpr StripChild Set(const char* name, const char* number) {
    return {"BRADIOBUTTON",
            name,
            {},
            12,
            {"style=button", number, "textcolorwhenpressed=0x00000000", "textcolorwhenreleased=0x00ffffff",
             FONT_LINE, "interval=100", "connection=%n"},
            WS_TABSTOP}; // shown when there is such a set
}

constexpr StripChild Button(const char* className, const char* name, const char* caption,
                            const char* connection) {
    return {className,
            name,
            {},
            12,
            {caption, "textcolorwhenpressed=0x00000000", "textcolorwhenreleased=0x00ffffff", FONT_LINE,
             "interval=100", connection},
            WS_VISIBLE | WS_TABSTOP};
}

// The largest first.
constexpr SwitchFace SET_FACES[] = {{{104, 24}, "104x24"}, {{48, 24}, "48x24"}, {{26, 16}, "26x16"}};
constexpr SwitchFace ROW_FACES[] = {{{48, 24}, "48x24"}, {{38, 24}, "38x24"}, {{26, 16}, "26x16"}};
constexpr const char* ROW_COLOURS[] = {"yellow", "blue", "red", "green"};

const SwitchFace& LargestIn(std::span<const SwitchFace> faces, int width, int height) {
    const auto fits = [&](const SwitchFace& face) { return face.size.cx <= width && face.size.cy <= height; };
    const auto largest = std::find_if(faces.begin(), faces.end(), fits);
    return largest != faces.end() ? *largest : faces.back();
}

constexpr StripChild CHILDREN[] = {
    Set(SETS[0], "onvalue=1"),
    Set(SETS[1], "onvalue=2"),
    Set(SETS[2], "onvalue=3"),
    Set(SETS[3], "onvalue=4"),
    Set(SETS[4], "onvalue=5"),
    Set(SETS[5], "onvalue=6"),
    Set(SETS[6], "onvalue=7"),
    Set(SETS[7], "onvalue=8"),
    {"KNOB",
     KNOB,
     {},
     12,
     {"bitmap=.\\Controls\\Knob.bmp", "properties=-80,10,-80", "resolution=.5", "interval=100",
      "connection=%n*volume"},
     WS_VISIBLE | WS_TABSTOP},
    Button("BTRISTATEBUTTON", LOWER_ROW[0], "caption=DIM", "connection=%n*dimmed"),
    Button("BTRISTATEBUTTON", LOWER_ROW[1], "caption=MONO", "connection=%n*summed"),
    Button("BTRISTATEBUTTON", LOWER_ROW[2], "caption=MUTE", "connection=%n*muted"),
    Button("CONTACTBUTTON", LOWER_ROW[3], "caption=TALK", "connection=%n*talking"),
};

} // namespace

std::span<const StripChild> SPEAKERCONTROLPROPERTIES::Children() const {
    return CHILDREN;
}

SIZE SPEAKERCONTROLPROPERTIES::StripSize() const {
    const SIZE own{rectangle.right - rectangle.left, rectangle.bottom - rectangle.top};
    return own.cx <= 0 || own.cy <= 0
               ? SIZE_OF_NEW
               : SIZE{std::max(own.cx, LEAST_SIZE.cx), std::max(own.cy, LEAST_SIZE.cy)};
}

void SPEAKERCONTROLPROPERTIES::SetDefaults() {
    interval = 100;
    for (FunctionList& list : std::span(lists_).subspan(LEVEL)) {
        list.Attach(*this);
    }
    numberFont_.Load("ms sans serif,8");
    STRIPPROPERTIES::SetDefaults();
    Arrange();
}

namespace {

constexpr int MARGIN = 4;
constexpr int GAP = 2;
constexpr int KNOB_SIDE = 47;
constexpr int NUMBER_HEIGHT = 15;
constexpr int ROW_HEIGHT = 24;

// The part of a length that the place has among so many alike, with gaps between them.
std::pair<int, int> Shared(int from, int to, int count, int place) {
    const int step = to - from + GAP;
    return {from + step * place / count, from + step * (place + 1) / count - GAP};
}

} // namespace

// In the middle of the cell. The face gives the button its size.
void SPEAKERCONTROLPROPERTIES::PutButton(const char* child, RECT cell, std::span<const SwitchFace> faces,
                                         const char* colour) const {
    const SwitchFace& face = LargestIn(faces, cell.right - cell.left, cell.bottom - cell.top);
    const std::string bitmap =
        std::string("bitmap=.\\Controls\\SWITCHBUTTON_") + colour + "_" + face.name + ".bmp";
    const StripChange change[] = {{.child = child, .line = bitmap.c_str()}};
    Change(change);
    SetWindowPos(Child(child), nullptr, (cell.left + cell.right - face.size.cx) / 2,
                 (cell.top + cell.bottom - face.size.cy) / 2, 0, 0,
                 SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
}

void SPEAKERCONTROLPROPERTIES::Arrange() {
    const SIZE size = StripSize();
    const int rowTop = size.cy - MARGIN - ROW_HEIGHT;
    for (int i = 0; i < static_cast<int>(std::size(LOWER_ROW)); ++i) {
        const auto [left, right] = Shared(MARGIN, size.cx - MARGIN, std::size(LOWER_ROW), i);
        PutButton(LOWER_ROW[i], {left, rowTop, right, rowTop + ROW_HEIGHT}, ROW_FACES, ROW_COLOURS[i]);
    }
    const int knobLeft = size.cx - MARGIN - KNOB_SIDE;
    const int knobTop = std::max<int>(MARGIN, (rowTop - KNOB_SIDE - NUMBER_HEIGHT) / 2);
    MoveWindow(Child(KNOB), knobLeft, knobTop, KNOB_SIDE, KNOB_SIDE, TRUE);
    const int count = static_cast<int>(names_.size());
    const int columns = count > 4 ? 2 : 1;
    const int rows = std::max((count + columns - 1) / columns, 1);
    for (int i = 0; i < static_cast<int>(MOST_SETS); ++i) {
        if (i < count) {
            const auto [left, right] = Shared(MARGIN, knobLeft - 2 * MARGIN, columns, i / rows);
            const auto [top, bottom] = Shared(MARGIN, rowTop - MARGIN, rows, i % rows);
            PutButton(SETS[i], {left, top, right, bottom}, SET_FACES, "green");
        }
        const std::string caption = "caption=" + (i < count ? names_[static_cast<std::size_t>(i)] : "");
        const StripChange change[] = {
            {.child = SETS[i], .line = caption.c_str(), .show = i < count ? SW_SHOWNA : SW_HIDE}};
        Change(change);
    }
    LookChanged();
}

// Drawing

RECT SPEAKERCONTROLPROPERTIES::NumberPlace() const {
    RECT place{};
    if (HWND knob = Child(KNOB); a_FromWindow(knob) != nullptr) {
        GetWindowRect(knob, &place);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&place), 2);
    }
    return {place.left - MARGIN, place.bottom, place.right + MARGIN, place.bottom + NUMBER_HEIGHT};
}

std::string SPEAKERCONTROLPROPERTIES::NumberText() const {
    if (!monitor_.parts[LEVEL].isKnown) {
        return NO_VALUE;
    }
    char text[32];
    std::snprintf(text, sizeof text, "%.1f dB", static_cast<double>(Level()));
    return text;
}

POINT SPEAKERCONTROLPROPERTIES::NotEqualPlace() const {
    const RECT number = NumberPlace();
    return {number.left - 2 * MARGIN, number.top - MARGIN};
}

void SPEAKERCONTROLPROPERTIES::Draw(HDC dc, const RECT& client) const {
    STRIPPROPERTIES::Draw(dc, client);
    RECT place = NumberPlace();
    const Selected font(dc, numberFont_.Get());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, InkColour());
    const std::string text = NumberText();
    DrawTextA(dc, text.c_str(), -1, &place, DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX);
}
