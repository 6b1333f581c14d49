// A control library with one control: a lamp that is lit while its value reaches a threshold. In the folder
// Libraries beside Panel.exe its control stands in the palette. To build it, in this folder:
//   i686-w64-mingw32-g++-posix -std=c++20 -O2 -shared -static -I ../../include Lamp.cpp
//       ../../lib/libPanelhost.dll.a -lgdi32 -o Lamp.dll

#include "Panelhost/SimpleControl.h"

namespace {

class Lamp : public SimpleControl {
public:
    Lamp() { interval = 200; }
    const KEYWORDROW* GetHostinfoTable() override;
    void Paint(HDC dc, const RECT& client) const override;

    float threshold = 1;
};

int Threshold(VALUERECORD* record, HOSTINFO* object) {
    auto& lamp = static_cast<Lamp&>(*object);
    if (record->command != COMMAND_SET) {
        return a_AnswerFloat(record, lamp.threshold);
    }
    if (a_ReadFloat(record, &lamp.threshold) == 0) {
        return 0;
    }
    lamp.Show(lamp.Value());
    return 1;
}

const KEYWORDROW* Lamp::GetHostinfoTable() {
    static constexpr KEYWORDROW TABLE[] = {{" ", ValueRow}, // the default value
                                           {"connection", ConnectionRow, KEYWORD_BINDINGS},
                                           {"function", FunctionRow, KEYWORD_SAVED | KEYWORD_BINDINGS},
                                           {"interval", IntervalRow, KEYWORD_SAVED},
                                           {"threshold", Threshold, KEYWORD_SAVED},
                                           {"value", ValueRow},
                                           {}};
    return TABLE;
}

void Lamp::Paint(HDC dc, const RECT& client) const {
    SelectObject(dc, GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, Value() >= threshold ? RGB(80, 220, 120) : RGB(40, 60, 48));
    RoundRect(dc, client.left, client.top, client.right, client.bottom, 8, 8);
}

constexpr PH_CONTROLCLASS DESCRIBED = {.windowClass = "EXAMPLELAMP",
                                       .systemClass = nullptr,
                                       .purpose = "A lamp that is lit while its value reaches a threshold.",
                                       .group = PH_GROUP_DISCRETE,
                                       .position = 1000,
                                       .name = "Example lamp",
                                       .letters = "Ex",
                                       .width = 24,
                                       .height = 24,
                                       .takesFocus = 0};

} // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, void*) {
    if (reason == DLL_PROCESS_ATTACH) {
        return SimpleControl::Register<Lamp>(library, DESCRIBED);
    }
    if (reason == DLL_PROCESS_DETACH) {
        SimpleControl::Unregister(library, DESCRIBED.windowClass);
    }
    return TRUE;
}
