#pragma once

#include "Controls/families/Strip.h"

// Children that look alike in all strips.

constexpr StripChild StripLabel(const char* name, RECT place) {
    return {"BSTATIC",
            name,
            place,
            14,
            {"backgroundcolor=0x004c4c4c", "textcolor=0x00ffffff", "datatype=string", "font=ms sans serif,8",
             "alignment=center", "caption="}};
}

// What its user writes on a strip.
constexpr StripChild StripNameField(const char* name, RECT place) {
    return {"BEDIT",
            name,
            place,
            13,
            {"*alignment=center", "*backgroundcolor=0x004C4C4C", "*textcolor=0x00ffffff",
             "*caption=", "*font=ms sans serif,8"},
            WS_VISIBLE | STRIP_FIELD_STYLE};
}

// A level beside the fader that has it, too.
constexpr StripChild StripNumber(const char* name, RECT place, const char* connection) {
    return {"BEDIT",
            name,
            place,
            12,
            {"font=ms sans serif,8", "textcolor=0x00ccff", "backgroundcolor=0x00000000", "datatype=f",
             "fmt=%.1f", "alignment=center", "interval=250", connection},
            WS_VISIBLE | STRIP_FIELD_STYLE,
            WS_EX_STATICEDGE};
}

// Its bitmap gives it the size.
constexpr StripChild StripSwitch(const char* name, POINT place, const char* bitmap, const char* caption,
                                 const char* connection) {
    return {"BTRISTATEBUTTON",
            name,
            {place.x, place.y, 26, 16},
            12,
            {bitmap, caption, "textcolor=0xffffff,0", "font=Small Fonts,5", "interval=100", connection},
            WS_VISIBLE | WS_TABSTOP};
}
