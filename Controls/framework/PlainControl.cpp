// The common part alone: a default value that is sent, polled and shown by name. Serves every class that has
// no file of its own.

#include "Controls/OSMIRControlLib.h"
#include "Controls/framework/Controls.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/RelativeMode.h"

namespace {

class PLAINPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override { interval = 1000; }
    int ValueDatatype() const override {
        const int type = controlClass->controlType;
        return type == DATATYPE_INTEGER || type == DATATYPE_FLOAT ? type : DATATYPE_TEXT;
    }
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;

    int integer =
        0; // the value, in the member of the class's datatype; classes of no other datatype hold text
    float number = 0;
    std::string text;

private:
    template <class Number>
    int PollInto(Number& member, int datatype) {
        Number polled = member;
        const int result = Ask(requests, datatype, &polled);
        if (result == REQUEST_DELIVERED) {
            member = polled;
        }
        return result;
    }
};

// Takes a new value and passes it on. Returns 0 when it was held already.
template <class Value>
int Replace(PLAINPROPERTIES& plain, Value PLAINPROPERTIES::*member, Value value) {
    if (plain.*member == value) {
        return 0;
    }
    plain.*member = value;
    plain.Redraw();
    return 1;
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& plain = *static_cast<PLAINPROPERTIES*>(object);
    const bool get = record->command == COMMAND_GET;
    if (!get && record->command != COMMAND_SET) {
        return 0;
    }
    switch (plain.controlClass->controlType) {
    case DATATYPE_INTEGER: {
        int value = 0;
        if (get || a_ReadInteger(record, &value) == 0 ||
            Replace(plain, &PLAINPROPERTIES::integer, value) == 0) {
            return get ? a_AnswerInteger(record, plain.integer) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr);
        return 1;
    }
    case DATATYPE_FLOAT: {
        float value = 0;
        if (get || a_ReadFloat(record, &value) == 0 || Replace(plain, &PLAINPROPERTIES::number, value) == 0) {
            return get ? a_AnswerFloat(record, plain.number) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_FLOAT, &value, nullptr);
        return 1;
    }
    default: {
        std::string value;
        if (get || a_ReadText(record, &value) == 0 || Replace(plain, &PLAINPROPERTIES::text, value) == 0) {
            return get ? a_AnswerText(record, plain.text.c_str()) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_TEXT, value.data(), nullptr);
        return 1;
    }
    }
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

const KEYWORDROW* PLAINPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

void PLAINPROPERTIES::Poll() {
    int result = REQUEST_UNCHANGED;
    switch (controlClass->controlType) {
    case DATATYPE_INTEGER:
        result = PollInto(integer, DATATYPE_INTEGER);
        break;
    case DATATYPE_FLOAT:
        result = PollInto(number, DATATYPE_FLOAT);
        break;
    default: {
        char polled[TEXT_SIZE];
        std::snprintf(polled, sizeof polled, "%s", text.c_str());
        result = Ask(requests, DATATYPE_TEXT, polled);
        if (result == REQUEST_DELIVERED) {
            text = polled;
        }
    }
    }
    if (result == REQUEST_DELIVERED) {
        Redraw();
    }
    ShowPollResult(result);
}

// A plate with the name, so that it is seen where the control stands; readable on any background.
void PLAINPROPERTIES::Draw(HDC dc, const RECT& client) const {
    constexpr COLORREF PLATE = RGB(58, 62, 68);
    constexpr COLORREF EDGE = RGB(92, 98, 106);
    constexpr COLORREF LETTERS = RGB(222, 226, 230);
    if (controlClass->name[0] == 'I' && mode == 0) {
        return; // the interface controls are invisible while the panel is operated
    }
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, PLATE);
    FillRect(dc, &client, brush);
    SetDCBrushColor(dc, EDGE);
    FrameRect(dc, &client, brush);
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, LETTERS);
    SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    RECT place = client;
    DrawTextA(dc, a_OwnName(this).c_str(), -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

} // namespace

// The reverse meter sends as the knob does.
class REVMETERPROPERTIES : public PLAINPROPERTIES {
public:
    RelativeMode relativeMode;
};

int l_SendRequest(REVMETERPROPERTIES* object, int command, int datatype, long value, int* result) {
    return SendByMode(object->relativeMode, *object, static_cast<float>(object->integer), command, datatype,
                      value, result);
}

const ControlImplementation plainControl{CreateProperties<PLAINPROPERTIES>, CommonProc};
const ControlImplementation plainReverseMeter{CreateProperties<REVMETERPROPERTIES>, CommonProc};
