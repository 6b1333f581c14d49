// The common part alone: a default value that is sent, polled and shown by name. Serves every class that has
// no file of its own.

#include "Controls/families/PlainControl.h"

#include "Controls/OSMIRControlLib.h"
#include "Controls/drawing/BitmapProperty.h"
#include "Controls/families/InterfaceControl.h"
#include "Controls/families/RelativeMode.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"

namespace {

// Base: CONTROLPROPERTIES or a class below it.
template <class Base>
class PLAINPROPERTIES : public Base {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override {
        Base::SetDefaults();
        this->interval = 1000;
    }
    int ValueDatatype() const override {
        const int type = this->controlClass->controlType;
        return type == DATATYPE_INTEGER || type == DATATYPE_FLOAT ? type : DATATYPE_TEXT;
    }
    void Poll() override;

    int integer =
        0; // the value, in the member of the class's datatype; classes of no other datatype hold text
    float number = 0;
    std::string text;

private:
    template <class Number>
    int PollInto(Number& member, int datatype) {
        Number polled = member;
        const int result = this->Ask(this->requests, datatype, &polled);
        if (result == REQUEST_DELIVERED) {
            member = polled;
        }
        return result;
    }
};

// Takes a new value and passes it on. Returns 0 when it was held already.
template <class Plain, class Value>
int Replace(Plain& plain, Value Plain::*member, Value value) {
    if (plain.*member == value) {
        return 0;
    }
    plain.*member = value;
    plain.Redraw();
    return 1;
}

template <class Plain>
int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& plain = *static_cast<Plain*>(object);
    const bool get = record->command == COMMAND_GET;
    if (!get && record->command != COMMAND_SET) {
        return 0;
    }
    switch (plain.controlClass->controlType) {
    case DATATYPE_INTEGER: {
        int value = 0;
        if (get || a_ReadInteger(record, &value) == 0 || Replace(plain, &Plain::integer, value) == 0) {
            return get ? a_AnswerInteger(record, plain.integer) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr);
        return 1;
    }
    case DATATYPE_FLOAT: {
        float value = 0;
        if (get || a_ReadFloat(record, &value) == 0 || Replace(plain, &Plain::number, value) == 0) {
            return get ? a_AnswerFloat(record, plain.number) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_FLOAT, &value, nullptr);
        return 1;
    }
    default: {
        std::string value;
        if (get || a_ReadText(record, &value) == 0 || Replace(plain, &Plain::text, value) == 0) {
            return get ? a_AnswerText(record, plain.text.c_str()) : 0;
        }
        a_SendRequest(plain.requests, COMMAND_SET, DATATYPE_TEXT, value.data(), nullptr);
        return 1;
    }
    }
}

template <class Plain>
constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword<Plain>, 0},
    {"connection", ConnectionKeyword, KEYWORD_BINDINGS},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {},
};

template <class Base>
const KEYWORDROW* PLAINPROPERTIES<Base>::GetHostinfoTable() {
    static_assert(KeywordsAreUnique(KEYWORDS<PLAINPROPERTIES>));
    return KEYWORDS<PLAINPROPERTIES>;
}

template <class Base>
void PLAINPROPERTIES<Base>::Poll() {
    int result = REQUEST_UNCHANGED;
    switch (this->controlClass->controlType) {
    case DATATYPE_INTEGER:
        result = PollInto(integer, DATATYPE_INTEGER);
        break;
    case DATATYPE_FLOAT:
        result = PollInto(number, DATATYPE_FLOAT);
        break;
    default: {
        char polled[TEXT_SIZE];
        std::snprintf(polled, sizeof polled, "%s", text.c_str());
        result = this->Ask(this->requests, DATATYPE_TEXT, polled);
        if (result == REQUEST_DELIVERED) {
            text = polled;
        }
    }
    }
    if (result == REQUEST_DELIVERED) {
        this->Redraw();
    }
    this->ShowPollResult(result);
}

// Readable on any background.
void DrawPlate(HDC dc, const RECT& client) {
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, RGB(58, 62, 68));
    FillRect(dc, &client, brush);
    SetDCBrushColor(dc, RGB(92, 98, 106)); // the edge
    FrameRect(dc, &client, brush);
}

void DrawName(HDC dc, const RECT& client, const HOSTINFO& object) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, RGB(222, 226, 230));
    SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    RECT place = client;
    DrawTextA(dc, a_OwnName(&object).c_str(), -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// A plate with the name, so that it is seen where the control stands.
class NAMEDPROPERTIES : public PLAINPROPERTIES<CONTROLPROPERTIES> {
public:
    void Draw(HDC dc, const RECT& client) const override {
        DrawPlate(dc, client);
        DrawName(dc, client, *this);
    }
};

// A plate with the picture of the class.
class MINIVIEWPROPERTIES : public PLAINPROPERTIES<CONTROLPROPERTIES> {
public:
    void SetDefaults() override {
        PLAINPROPERTIES::SetDefaults();
        image_.Load(controlClass->image);
    }
    void Draw(HDC dc, const RECT& client) const override;

private:
    BitmapProperty image_;
};

void MINIVIEWPROPERTIES::Draw(HDC dc, const RECT& client) const {
    DrawPlate(dc, client);
    const HBITMAP opaque = PictureOf(*controlClass);
    if (const OSMIRBitmap* image = image_.Get()) {
        image->Draw(dc, (client.right - image->Width()) / 2, (client.bottom - image->Height()) / 2);
    } else if (opaque != nullptr) {
        const SIZE size = SizeOf(opaque);
        const MemoryDc memory(opaque);
        BitBlt(dc, (client.right - size.cx) / 2, (client.bottom - size.cy) / 2, size.cx, size.cy,
               memory.Get(), 0, 0, SRCCOPY);
    } else {
        DrawName(dc, client, *this);
    }
}

} // namespace

// The reverse meter sends as the knob does.
class REVMETERPROPERTIES : public NAMEDPROPERTIES {
public:
    RelativeMode relativeMode;
};

int l_SendRequest(REVMETERPROPERTIES* object, int command, int datatype, long value, int* result) {
    return SendByMode(object->relativeMode, *object, static_cast<float>(object->integer), command, datatype,
                      value, result);
}

int l_SendRequestReverseMeter(HOSTINFO* object, int command, int datatype, long value, int* result) {
    return RequestBy<REVMETERPROPERTIES>(object, command, datatype, value, result);
}

CONTROLPROPERTIES* CreatePlainInterface() {
    return CreateProperties<PLAINPROPERTIES<INTERFACEPROPERTIES>>();
}

CONTROLPROPERTIES* CreateMiniView() {
    return CreateProperties<MINIVIEWPROPERTIES>();
}

extern const ControlImplementation plainControl{.create = CreateProperties<NAMEDPROPERTIES>,
                                                .procedure = CommonProc};
extern const ControlImplementation plainTooltipControl{
    .create = CreateProperties<NAMEDPROPERTIES>, .procedure = CommonProc, .share = ShareTooltip};
extern const ControlImplementation plainInterface{
    .create = CreatePlainInterface, .procedure = InterfaceProc, .share = SharePicture<>};
extern const ControlImplementation miniView{
    .create = CreateMiniView, .procedure = CommonProc, .share = SharePicture<>};
extern const ControlImplementation plainReverseMeter{.create = CreateProperties<REVMETERPROPERTIES>,
                                                     .procedure = CommonProc};
