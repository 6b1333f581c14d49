// EQ: an editor for one band of a parametric equaliser. It holds the band's record, shows it in a list,
// fields and a toggle of its own, follows the device and sends the record whenever one of them is changed.
// Frequencies are in Hz, gains in dB, bandwidths in octaves, interval in milliseconds.

#include "Controls/framework/ClassTable.h"
#include "Controls/framework/Controls.h"
#include "Controls/framework/EditorPanel.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/ParameterDialog.h"
#include "Controls/framework/SharedResources.h"
#include "Controls/framework/ValueClipboard.h"
#include "Controls/resources/resource.h"
#include "logic/EqBand.h"
#include "logic/FilterValues.h"

#include <array>
#include <cstdio>
#include <utility>

namespace {

using logic::EqBand;

enum EqId {
    TYPE_LIST = 100,
    GAIN_FIELD,
    FREQUENCY_FIELD,
    Q_FIELD,
    SLOPE_LIST,
    BYPASS,
    GAIN_SPIN,
    FREQUENCY_SPIN,
    Q_SPIN
};

// Rows of the layout that are spoken to by their number.
enum EqRow {
    CAPTION,
    GAIN_LABEL = 3,
    GAIN_ROW,
    GAIN_SPIN_ROW,
    Q_LABEL = 9,
    Q_ROW,
    Q_SPIN_ROW,
    SLOPE_LABEL,
    SLOPE_ROW
};

constexpr int UPPER_ROW = 55;
constexpr int LOWER_ROW = 113;

constexpr EditorChild LAYOUT[] = {
    {EditorPart::Title, "", 5, 5, 115, 15},
    {EditorPart::Label, "TYPE", 5, 26, 35, 24},
    {EditorPart::List, "", 45, 26, 75, 200, TYPE_LIST, CBS_OWNERDRAWFIXED | WS_TABSTOP},
    {EditorPart::Label, "GAIN", 5, UPPER_ROW, 35, 23},
    {EditorPart::Field, "+0.0 dB", 45, UPPER_ROW, 75, 23, GAIN_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, GAIN_SPIN},
    {EditorPart::Label, "FREQ", 5, 84, 40, 23},
    {EditorPart::Field, "0 Hz", 45, 84, 75, 23, FREQUENCY_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, FREQUENCY_SPIN},
    {EditorPart::Label, "Q", 5, LOWER_ROW, 40, 23},
    {EditorPart::Field, "0.0", 45, LOWER_ROW, 75, 23, Q_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, Q_SPIN},
    {EditorPart::Label, "SLOPE", 5, LOWER_ROW, 40, 24, 0, 0, true},
    {EditorPart::List, "", 45, LOWER_ROW, 75, 200, SLOPE_LIST, CBS_OWNERDRAWFIXED | WS_TABSTOP, true},
    {EditorPart::Toggle, "BYPASS", 5, 142, 115, 23, BYPASS, WS_TABSTOP},
};

// The children that can be disabled, by bit.
constexpr int DISABLED_BY_BIT[] = {BYPASS, TYPE_LIST, SLOPE_LIST, FREQUENCY_FIELD, GAIN_FIELD, Q_FIELD};

constexpr std::array<std::string_view, 2> SLOPES{"6dB/Oct", "12dB/Oct"};
constexpr std::array<std::string_view, 2> ORDERS{"first", "second"};

} // namespace

class EQPROPERTIES : public EDITORPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    void SetDefaults() override;
    int ControlType() const override { return datatype; }
    void BindingsChanged() override;

    std::span<const EditorChild> Layout() const override { return LAYOUT; }
    SIZE FixedSize() const override { return {125, 170}; }
    void PollRecord() override;
    void CommitField(int id, const std::string* typed) override;
    void StepField(int spinId, int steps) override;
    void ItemSelected(int listId, int item) override;
    void Toggled(int id, bool isDown) override;
    int FirstId(bool backwards) const override { return backwards || band.bypass != 0 ? BYPASS : TYPE_LIST; }
    bool IsMarked(int) const override { return isFocused; }
    void ShowMenu(HWND child, POINT place) override;
    const char* UnlistedText(int listId) const override;
    void DrawPicture(int listId, int item, HDC dc, const RECT& place) const override;

    // Shows a known record; touches only what is new.
    void Show(const EqBand& next);
    // Takes a record from outside and, unless it is the one that is shown, passes it on.
    void Take(const EqBand& next);
    int LoadText(std::string_view text, bool isSentAlways);
    void SetDatatype(int type);
    void SetBandwidth(bool isBandwidth);
    unsigned DisabledMask() const;
    void SetDisabledMask(unsigned mask);
    void SetTitle();

    EqBand band;
    int datatype = DATATYPE_MASTER_EQ;
    bool asBandwidth = false; // shows and edits bandwidth in place of Q

private:
    void FillTypes();
    void Arrange();
    void ShowQ() { ShowField(Q_FIELD, logic::QText(band.q, asBandwidth)); }
    // Before the record is changed in part: what is bound may hold another one. False when the control is
    // gone.
    bool LearnRecord();
    void SendBand();

    // Whether the record was set as a whole or is what the bound devices hold. The one that a new control
    // starts with must reach no device.
    bool isKnown = false;
    int offeredTypes = 0;
    std::span<const std::string_view> slopeTexts;
    UINT clipboardFormat = 0;
};

// Keyword handlers

namespace {

EQPROPERTIES& Eq(HOSTINFO* object) {
    return *static_cast<EQPROPERTIES*>(object);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    EQPROPERTIES& eq = Eq(object);
    const bool isText = record->datatype == DATATYPE_TEXT;
    if (record->command == COMMAND_GET) {
        return isText ? a_AnswerText(record, logic::EqBandText(eq.band).c_str())
                      : a_AnswerBytes(record, eq.datatype, &eq.band, sizeof eq.band);
    }
    if (isText) {
        const auto text = TextToSet(record);
        return text ? eq.LoadText(*text, false) : 0;
    }
    EqBand band;
    if (record->command != COMMAND_SET || a_ReadBytes(record, eq.datatype, &band, sizeof band) == 0 ||
        !logic::IsKnown(band)) {
        return 0;
    }
    eq.Take(band);
    return 1;
}

int BandwidthKeyword(VALUERECORD* record, HOSTINFO* object) {
    EQPROPERTIES& eq = Eq(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, eq.asBandwidth ? "bw" : "q");
    }
    const auto text = TextToSet(record);
    if (text) {
        eq.SetBandwidth(!text->empty() && (text->front() == 'b' || text->front() == 'B'));
    }
    return text ? 1 : 0;
}

int DatatypeKeyword(VALUERECORD* record, HOSTINFO* object) {
    EQPROPERTIES& eq = Eq(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, eq.datatype == DATATYPE_CHANNEL_EQ ? "channeleq" : "mastereq");
    }
    const auto text = TextToSet(record);
    if (text) {
        eq.SetDatatype(lstrcmpiA(text->c_str(), "channeleq") == 0 ? DATATYPE_CHANNEL_EQ : DATATYPE_MASTER_EQ);
    }
    return text ? 1 : 0;
}

int DisabledItemsKeyword(VALUERECORD* record, HOSTINFO* object) {
    EQPROPERTIES& eq = Eq(object);
    if (record->command == COMMAND_GET) {
        char text[16];
        std::snprintf(text, sizeof text, "0x%x", eq.DisabledMask());
        return a_AnswerText(record, text);
    }
    const auto text = TextToSet(record);
    const auto mask = text ? logic::ParseHex(*text) : std::nullopt;
    if (mask) {
        eq.SetDisabledMask(*mask);
    }
    return mask ? 1 : 0;
}

int PropertiesKeyword(VALUERECORD* record, HOSTINFO* object) {
    EQPROPERTIES& eq = Eq(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, logic::EqBandText(eq.band).c_str());
    }
    const auto text = TextToSet(record);
    return text ? eq.LoadText(*text, true) : 0;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"bw", BandwidthKeyword, 0},
    {"connection", ConnectionKeyword, 0},
    {"datatype", DatatypeKeyword, KEYWORD_SAVED},
    {"disableitems", DisabledItemsKeyword, 0},
    {"focus", FocusKeyword, KEYWORD_SAVED},
    {"focuscolor", FocusColourKeyword, KEYWORD_SAVED},
    {"function", FunctionKeyword, KEYWORD_SAVED},
    {"properties", PropertiesKeyword, KEYWORD_SAVED},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* EQPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// Showing

void EQPROPERTIES::SetDefaults() {
    EDITORPROPERTIES::SetDefaults();
    clipboardFormat = a_GetClipboardFormat("EQ band");
    int isBandwidth = 0;
    a_Request(this, "bandwidth", &isBandwidth);
    asBandwidth = isBandwidth != 0;
    SetLabel(Q_LABEL, asBandwidth ? "BW" : "Q");
    SetTitle();
    FillTypes();
    Arrange();
}

void EQPROPERTIES::SetTitle() {
    char title[TEXT_SIZE] = "";
    GetWindowTextA(window, title, sizeof title);
    SetLabel(CAPTION, title);
}

// The list's index is the filter type. A type beyond the list stays unselected and is shown by its name.
void EQPROPERTIES::FillTypes() {
    const std::string device = functions.empty() ? "" : functions.front();
    const int offered =
        logic::OfferedFilterTypes(device.substr(0, device.rfind('*')), datatype == DATATYPE_MASTER_EQ);
    if (offered != offeredTypes) {
        offeredTypes = offered;
        FillList(TYPE_LIST, std::span(logic::filterTypeNames).first(static_cast<std::size_t>(offered)));
        Select(TYPE_LIST, band.type);
    }
}

// What there is to edit of the filter type.
void EQPROPERTIES::Arrange() {
    const bool hasGain = logic::HasGain(band.type);
    const bool hasQ = logic::HasQ(band.type, band.slope);
    const bool hasSlope = logic::HasSlope(band.type);
    for (const int row : {GAIN_LABEL, GAIN_ROW, GAIN_SPIN_ROW}) {
        ShowChild(row, hasGain);
    }
    for (const int row : {Q_LABEL, Q_ROW, Q_SPIN_ROW}) {
        ShowChild(row, hasQ);
    }
    const bool isAllPass = band.type == logic::AllPass;
    if (const std::span<const std::string_view> texts = isAllPass ? ORDERS : SLOPES;
        texts.data() != slopeTexts.data()) {
        slopeTexts = texts;
        SetLabel(SLOPE_LABEL, isAllPass ? "ORDER" : "SLOPE");
        FillList(SLOPE_LIST, texts);
    }
    Select(SLOPE_LIST, band.slope - 1);
    const int y = hasGain ? LOWER_ROW : UPPER_ROW;
    for (const int row : {SLOPE_LABEL, SLOPE_ROW}) {
        SetWindowPos(Child(row), nullptr, LAYOUT[row].x, y, 0, 0, SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE);
        ShowChild(row, hasSlope);
    }
}

void EQPROPERTIES::Show(const EqBand& next) {
    const EqBand before = std::exchange(band, next);
    if (next.bypass != before.bypass) {
        Check(BYPASS, next.bypass != 0);
    }
    if (next.type != before.type) {
        Select(TYPE_LIST, next.type);
    }
    if (next.type != before.type || next.slope != before.slope) {
        Arrange();
    }
    if (next.gain != before.gain) {
        FollowField(GAIN_FIELD, logic::GainText(next.gain));
    }
    if (next.q != before.q) {
        FollowField(Q_FIELD, logic::QText(next.q, asBandwidth));
    }
    if (next.frequency != before.frequency) {
        FollowField(FREQUENCY_FIELD, logic::FrequencyText(next.frequency));
    }
}

void EQPROPERTIES::SetBandwidth(bool isBandwidth) {
    asBandwidth = isBandwidth;
    SetLabel(Q_LABEL, asBandwidth ? "BW" : "Q");
    ShowQ();
    if (isKnown) {
        CommitAgain(Q_FIELD);
    }
}

void EQPROPERTIES::SetDatatype(int type) {
    if (type == datatype) {
        return;
    }
    datatype = type;
    FillTypes();
    // The devices are asked for the other record from now on.
    const std::string line = "function=" + a_BuildString(functions);
    SendMessageA(window, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
}

unsigned EQPROPERTIES::DisabledMask() const {
    unsigned mask = 0;
    unsigned bit = 1;
    for (const int id : DISABLED_BY_BIT) {
        mask |= IsWindowEnabled(Item(id)) ? 0 : bit;
        bit <<= 1;
    }
    return mask;
}

void EQPROPERTIES::SetDisabledMask(unsigned mask) {
    for (const int id : DISABLED_BY_BIT) {
        EnableItem(id, (mask & 1) == 0);
        mask >>= 1;
    }
    for (const auto& [field, spin] :
         {std::pair(FREQUENCY_FIELD, FREQUENCY_SPIN), {GAIN_FIELD, GAIN_SPIN}, {Q_FIELD, Q_SPIN}}) {
        EnableItem(spin, IsWindowEnabled(Item(field)));
    }
}

const char* EQPROPERTIES::UnlistedText(int listId) const {
    const bool isNamed = listId == TYPE_LIST && band.type >= 0 && band.type < logic::filterTypeCount;
    return isNamed ? logic::filterTypeNames[static_cast<std::size_t>(band.type)].data() : "";
}

void EQPROPERTIES::DrawPicture(int listId, int item, HDC dc, const RECT& place) const {
    const HIMAGELIST images = ResourcesOf(*controlClass).images;
    int width = 0;
    int height = 0;
    if (listId == TYPE_LIST && ImageList_GetIconSize(images, &width, &height)) {
        ImageList_Draw(images, item, dc, place.right - width,
                       place.top + (place.bottom - place.top - height) / 2, ILD_TRANSPARENT);
    }
}

// Values

void EQPROPERTIES::BindingsChanged() {
    isKnown = false;
    FillTypes();
}

bool EQPROPERTIES::LearnRecord() {
    if (isKnown || parent == nullptr) {
        return true;
    }
    const HWND self = window;
    EqBand held = band;
    const bool isAnswered = requests.empty() || AskForValue(requests, datatype, &held);
    if (!StillHas(self, this)) {
        return false;
    }
    if (isAnswered && logic::IsKnown(held)) {
        isKnown = true;
        Show(held);
    }
    return true;
}

void EQPROPERTIES::SendBand() {
    if (parent != nullptr && isKnown) {
        EqBand sent = band;
        a_SendRequest(requests, COMMAND_SET, datatype, &sent, nullptr);
    }
}

void EQPROPERTIES::Take(const EqBand& next) {
    if (next == band) {
        return;
    }
    isKnown = true;
    Show(next);
    if (parent != nullptr) {
        SendBand();
    } else { // a window that is no panel uses the control by itself
        EqBand sent = band;
        SendMessageA(GetParent(window), WM_USER, static_cast<WPARAM>(GetDlgCtrlID(window)),
                     reinterpret_cast<LPARAM>(&sent));
    }
}

int EQPROPERTIES::LoadText(std::string_view text, bool isSentAlways) {
    if (!logic::ReadEqBand(text, band)) {
        return 0;
    }
    const bool wasKnown = isKnown;
    if (!LearnRecord()) {
        return 1;
    }
    const EqBand next = logic::ReadEqBand(text, band).value_or(band);
    if (!wasKnown && next == EqBand{}) {
        return 1; // saved before anything was known
    }
    if (!isSentAlways) {
        Take(next);
        return 1;
    }
    Show(next);
    SendBand();
    return 1;
}

void EQPROPERTIES::PollRecord() {
    const HWND self = window;
    EqBand polled = band;
    int result = REQUEST_UNCHANGED;
    a_SendRequest(requests, COMMAND_GET, datatype, &polled, &result);
    if (!StillHas(self, this)) {
        return;
    }
    if (result == REQUEST_DELIVERED && !logic::IsKnown(polled)) {
        result = REQUEST_DISAGREE; // a record of another kind of device: what is shown stays
    }
    if (result <= REQUEST_DELIVERED) {
        isKnown = isKnown || !requests.empty();
        Show(polled);
    }
    ShowPollResult(result);
}

// Input

// What cannot be read is replaced by what is held, and so is a text that is still the one that was shown: it
// has lost digits.
void EQPROPERTIES::CommitField(int id, const std::string* typed) {
    const std::optional<float> read = logic::ParseFloat(typed == nullptr ? "" : *typed);
    const bool isSent = typed == nullptr || read;
    if (isSent && !LearnRecord()) {
        return;
    }
    EqBand next = band;
    if (id == GAIN_FIELD) {
        next.gain = logic::Clamp(read ? *read : band.gain, logic::lowestEqGain, logic::highestEqGain);
    } else if (id == FREQUENCY_FIELD) {
        next.frequency =
            logic::Clamp(read ? *read : band.frequency, logic::lowestFrequency, logic::highestFrequency);
    } else {
        next.q = read ? logic::TypedQ(*read, band.type, asBandwidth)
                      : logic::StepQ(band.q, 0, band.type, asBandwidth);
    }
    if (isSent) {
        band = next;
    }
    if (id == GAIN_FIELD) {
        ShowField(id, logic::GainText(band.gain));
    } else if (id == FREQUENCY_FIELD) {
        ShowField(id, logic::TypedBandFrequencyText(band.frequency)); // with a digit behind the point always
    } else {
        ShowQ();
    }
    if (isSent) {
        SendBand();
    }
}

void EQPROPERTIES::StepField(int spinId, int steps) {
    if (!LearnRecord()) {
        return;
    }
    const EqBand before = band;
    switch (spinId) {
    case GAIN_SPIN:
        band.gain = logic::StepGain(band.gain, steps, logic::lowestEqGain, logic::highestEqGain);
        break;
    case FREQUENCY_SPIN:
        band.frequency = logic::StepFrequency(band.frequency, steps);
        break;
    default:
        band.q = logic::StepQ(band.q, steps, band.type, asBandwidth);
        break;
    }
    if (band == before) {
        return;
    }
    if (spinId == GAIN_SPIN) {
        ShowField(GAIN_FIELD, logic::GainText(band.gain));
    } else if (spinId == FREQUENCY_SPIN) {
        ShowField(FREQUENCY_FIELD, logic::FrequencyText(band.frequency));
    } else {
        ShowQ();
    }
    SendBand();
}

void EQPROPERTIES::ItemSelected(int listId, int item) {
    if (item < 0 || !LearnRecord()) {
        return;
    }
    (listId == TYPE_LIST ? band.type : band.slope) = listId == TYPE_LIST ? item : item + 1;
    if (logic::LimitPassQ(band)) {
        ShowQ();
    }
    Select(TYPE_LIST, band.type);
    Arrange();
    SendBand();
}

void EQPROPERTIES::Toggled(int, bool isDown) {
    if (!LearnRecord()) {
        return;
    }
    band.bypass = isDown ? 1 : 0;
    Check(BYPASS, isDown);
    SendBand();
}

void EQPROPERTIES::ShowMenu(HWND, POINT place) {
    const HWND self = window;
    const int command = TrackMenu(IDR_EQ_MENU, HasValueToPaste(clipboardFormat), place);
    if (command == 0 || !LearnRecord()) {
        return;
    }
    if (command == IDM_COPY_VALUE) {
        CopyValue(self, clipboardFormat, &band, sizeof band, sizeof band);
    } else {
        EqBand pasted;
        if (PasteValue(self, clipboardFormat, &pasted, sizeof pasted)) {
            VALUERECORD record{COMMAND_SET, 0, datatype, 0, &pasted, nullptr, 0};
            SendMessageA(self, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
        }
    }
}

namespace {

LRESULT CALLBACK EqProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = EditorProc(window, message, wParam, lParam);
    if (message == WM_SETTEXT) {
        if (auto* eq = PropertiesOf<EQPROPERTIES>(window); eq != nullptr) {
            eq->SetTitle();
        }
    }
    return result;
}

} // namespace

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_EQ_VALUES, "Values", FieldKind::Text, "properties"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
    {IDC_FOCUS_COLOUR, "Focus colour", FieldKind::Colour, "focuscolor", 0, 0, IDC_CHOOSE_FOCUS_COLOUR},
};
constexpr DialogChoice CHOICES[] = {
    {IDC_EQ_DATATYPE, "datatype", "mastereq,channeleq"},
    {IDC_EQ_BANDWIDTH, "bw", "q,bw"},
};
constexpr ParameterDialog DIALOG{.resource = IDD_EQ, .edits = EDITS, .choices = CHOICES};

} // namespace

const ControlImplementation eqControl{CreateProperties<EQPROPERTIES>, EqProc, &DIALOG};
