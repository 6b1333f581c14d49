// The common part alone: a default value that is sent, polled and shown by name. Serves every class that has
// no file of its own.

#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "base/Gdi.h"
#include "logic/drawing/PanelColours.h"

#include <cstdio>
#include <type_traits>

namespace {

template <class Value>
constexpr int DATATYPE_OF = DATATYPE_TEXT;
template <>
constexpr int DATATYPE_OF<int> = DATATYPE_INTEGER;

// Base: CONTROLPROPERTIES or a class below it.
template <class Base>
class PLAINPROPERTIES : public Base {
public:
    void SetDefaults() override {
        Base::SetDefaults();
        this->interval = 1000;
    }
    virtual int ValueKeyword(VALUERECORD& record) = 0;
};

template <class Base, KeywordKind Kind>
constexpr KeywordTable KEYWORDS({
    Handled<&PLAINPROPERTIES<Base>::ValueKeyword>(" ", Kind).Says(
        "What a line or a record without a keyword sets and reads."),
    CONNECTION_KEYWORD,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
});

// Value: int, float, or std::string for classes of any other datatype.
template <class Base, class Value>
class PLAINVALUEPROPERTIES : public PLAINPROPERTIES<Base> {
public:
    // The rows are the same whatever the value, which the reference goes by; what it is, is not.
    KeywordList Keywords() const override {
        KeywordList keywords = KEYWORDS<Base, KindOf<Value>()>.List();
        keywords.rows = KEYWORDS<Base, KeywordKind::Text>.List().rows;
        return keywords;
    }
    int ValueDatatype() const override { return DATATYPE_OF<Value>; }
    void Poll() override;
    int ValueKeyword(VALUERECORD& record) override;

    Value value{};
};

template <class Base, class Value>
int PLAINVALUEPROPERTIES<Base, Value>::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return AnswerWith(&record, value);
    }
    Value wanted{};
    if (record.command != COMMAND_SET || ReadValue(&record, &wanted) == 0 || wanted == value) {
        return 0;
    }
    value = wanted;
    this->Redraw();
    void* data = &wanted;
    if constexpr (std::is_same_v<Value, std::string>) {
        data = wanted.data();
    }
    a_SendRequest(this->requests, COMMAND_SET, DATATYPE_OF<Value>, data, nullptr);
    return 1;
}

template <class Base, class Value>
void PLAINVALUEPROPERTIES<Base, Value>::Poll() {
    int result = REQUEST_UNCHANGED;
    if constexpr (std::is_same_v<Value, std::string>) {
        char polled[TEXT_SIZE];
        std::snprintf(polled, sizeof polled, "%s", value.c_str());
        result = this->Ask(this->requests, DATATYPE_TEXT, polled);
        if (result == REQUEST_DELIVERED) {
            value = polled;
        }
    } else {
        Value polled = value;
        result = this->Ask(this->requests, DATATYPE_OF<Value>, &polled);
        if (result == REQUEST_DELIVERED) {
            value = polled;
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
    SetDCBrushColor(dc, logic::PANEL_PLATE);
    FillRect(dc, &client, brush);
    SetDCBrushColor(dc, logic::PANEL_EDGE); // the edge
    FrameRect(dc, &client, brush);
}

void DrawName(HDC dc, const RECT& client, const HOSTINFO& object) {
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, logic::PANEL_TEXT);
    SelectObject(dc, GetStockObject(DEFAULT_GUI_FONT));
    RECT place = client;
    DrawTextA(dc, a_OwnName(&object).c_str(), -1, &place,
              DT_CENTER | DT_VCENTER | DT_SINGLELINE | DT_NOPREFIX | DT_END_ELLIPSIS);
}

// A plate with the name, so that it is seen where the control stands.
template <class Value>
class NAMEDPROPERTIES : public PLAINVALUEPROPERTIES<CONTROLPROPERTIES, Value> {
public:
    void Draw(HDC dc, const RECT& client) const override {
        DrawPlate(dc, client);
        DrawName(dc, client, *this);
    }
};

} // namespace

extern const ControlImplementation plainInteger{.create = CreateProperties<NAMEDPROPERTIES<int>>,
                                                .procedure = CommonProc};
