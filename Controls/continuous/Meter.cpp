// METER: one integer value, or several combined, as a bar that is polled on every tick. It takes no input of
// its own. Interval in milliseconds, geometry in pixels.

#include "Controls/dialog/ParameterDialog.h"
#include "Controls/drawing/BitmapParts.h"
#include "Controls/drawing/Shading.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "logic/controls/MeterLogic.h"
#include "logic/text/Numbers.h"

#include <cstdio>
#include <vector>

namespace {

constexpr int UNLIT = 0; // parts of the image
constexpr int LIT = 1;

} // namespace

class METERPROPERTIES : public CONTROLPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    int PreferredWidth() const override;
    void BitmapChanged();
    void Poll() override;
    void Draw(HDC dc, const RECT& client) const override;

    bool IsReversed() const { return minimum >= maximum; } // grows downwards
    int FillHeight(int height) const { return logic::FillHeight(value, minimum, maximum, height); }
    // Redraws only when it shows.
    void Show(int newValue);

    int value = 0;
    int minimum = 0;
    int maximum = 0;
    logic::MeterCombination combine = logic::MeterCombination::Maximum;
    BitmapProperty face; // unlit and lit half; gives the window its size
};

// Keyword handlers

namespace {

constexpr const char* MAXIMUM_WORD = "max";
constexpr const char* AVERAGE_WORD = "avg";

METERPROPERTIES& Meter(HOSTINFO* object) {
    return *static_cast<METERPROPERTIES*>(object);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    METERPROPERTIES& meter = Meter(object);
    if (record->command == COMMAND_GET) {
        const bool same = record->datatype == DATATYPE_FLOAT && record->data != nullptr &&
                          logic::TruncateToInteger(*static_cast<const float*>(record->data)) == meter.value;
        return same ? 0 : a_AnswerInteger(record, meter.value);
    }
    int value = 0;
    if (record->command != COMMAND_SET || a_ReadInteger(record, &value) == 0 || value == meter.value) {
        return 0;
    }
    meter.Show(value);
    a_SendRequest(meter.requests, COMMAND_SET, DATATYPE_INTEGER, &value, nullptr);
    return 1;
}

int CombineKeyword(VALUERECORD* record, HOSTINFO* object) {
    METERPROPERTIES& meter = Meter(object);
    if (record->command == COMMAND_GET) {
        const bool isMaximum = meter.combine == logic::MeterCombination::Maximum;
        return a_AnswerText(record, isMaximum ? MAXIMUM_WORD : AVERAGE_WORD);
    }
    const auto text = TextToSet(record);
    if (text != MAXIMUM_WORD && text != AVERAGE_WORD) {
        return 0;
    }
    meter.combine =
        text == MAXIMUM_WORD ? logic::MeterCombination::Maximum : logic::MeterCombination::Average;
    return 1;
}

int PropertiesKeyword(VALUERECORD* record, HOSTINFO* object) {
    METERPROPERTIES& meter = Meter(object);
    if (record->command == COMMAND_GET) {
        char text[32];
        std::snprintf(text, sizeof text, "%d,%d", meter.minimum, meter.maximum);
        return a_AnswerText(record, text);
    }
    const auto text = TextToSet(record);
    std::int32_t ends[] = {meter.minimum, meter.maximum};
    if (!text || !logic::ParseIntegers(*text, ends)) {
        return 0;
    }
    meter.minimum = ends[0];
    meter.maximum = ends[1];
    meter.Redraw();
    return 1;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bitmap", BitmapKeyword<&METERPROPERTIES::face>, KEYWORD_SAVED | KEYWORD_FILE},
    {"combine", CombineKeyword, KEYWORD_SAVED},
    // Deliberately saved although it answers no text: the line of the connections follows it and prevails.
    {"connection", ConnectionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"function", FunctionKeyword, KEYWORD_SAVED | KEYWORD_BINDINGS},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"properties", PropertiesKeyword, KEYWORD_SAVED},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* METERPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

void METERPROPERTIES::SetDefaults() {
    interval = 1; // every tick
    DragAcceptFiles(window, TRUE);
}

// Value

void METERPROPERTIES::Show(int newValue) {
    RECT client{};
    GetClientRect(window, &client);
    const int before = FillHeight(client.bottom);
    value = newValue;
    if (FillHeight(client.bottom) != before) {
        Redraw();
    }
}

void METERPROPERTIES::Poll() {
    logic::MeterAnswers answers(combine, minimum, maximum);
    int result = REQUEST_UNCHANGED;
    for (const REQUESTITEM& item : ItemsOf(requests)) {
        if (item.target == nullptr && item.handler == nullptr) {
            continue;
        }
        int answer = answers.Cell();
        const int status = a_SendToItem(item, COMMAND_GET, DATATYPE_INTEGER, &answer);
        if (status > 0) {
            answers.Cell() = answer;
        }
        answers.Take();
        result = status < 0 ? REQUEST_UNREACHABLE : result;
    }
    lastPollResult = result;
    if (const int combined = answers.Result(); combined != value) {
        Show(combined);
    }
}

// Drawing

int METERPROPERTIES::PreferredWidth() const {
    return face.Get() != nullptr ? BitmapParts(*face.Get(), 2).Width() : CONTROLPROPERTIES::PreferredWidth();
}

void METERPROPERTIES::BitmapChanged() {
    if (face.Get() != nullptr) {
        const BitmapParts parts(*face.Get(), 2);
        Resize(parts.Width(), parts.Height());
    }
    Redraw();
}

void METERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    const int fill = FillHeight(client.bottom);
    const RECT top{0, 0, client.right, IsReversed() ? fill : client.bottom - fill};
    const RECT bottom{0, top.bottom, client.right, client.bottom};
    if (face.Get() != nullptr) {
        const BitmapParts parts(*face.Get(), 2);
        parts.Draw(dc, IsReversed() ? LIT : UNLIT, top);
        parts.Draw(dc, IsReversed() ? UNLIT : LIT, bottom);
        return;
    }
    FrameRect(dc, &client, static_cast<HBRUSH>(GetStockObject(BLACK_BRUSH)));
    // Growing upwards, the bar without an image deliberately stands for what is not filled.
    const RECT bar = IsReversed() ? top : RECT{0, fill, client.right, client.bottom};
    DrawShadedColumns(dc, bar, BAR_COLOUR);
}

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_MAXIMUM, "Maximum Value", FieldKind::Integer, "properties", 1, 1},
    {IDC_MINIMUM, "Minimum Value", FieldKind::Integer, "properties", 0, 1},
};
constexpr DialogChoice CHOICES[] = {{IDC_COMBINE, "combine", "max,avg"}};
constexpr ParameterDialog DIALOG{
    .resource = IDD_METER, .edits = EDITS, .choices = CHOICES, .bitmapPrefix = "METER_"};

} // namespace

extern const ControlImplementation meterControl{
    .create = CreateProperties<METERPROPERTIES>, .procedure = IndicatorProc, .dialog = &DIALOG};
