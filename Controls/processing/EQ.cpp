// EQ: a form for one band of a parametric equaliser. It holds the band's block, shows it in a list,
// fields and a toggle of its own, follows the device and sends the block whenever one of them is changed.
// Frequencies are in Hz, gains in dB, bandwidths in octaves, interval in milliseconds.

#include "Controls/families/BlockForm.h"
#include "Controls/families/EqDatatype.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "Panelhost/Clipboard.h"
#include "Panelhost/Root.h"
#include "base/Gdi.h"
#include "logic/controls/EqBand.h"
#include "logic/controls/FilterValues.h"

#include <cstdio>
#include <utility>

namespace {

using logic::EqBand;
using logic::EqField;

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

constexpr FormChild LAYOUT[] = {
    {FormPart::Title, "", 5, 5, 115, 15},
    {FormPart::Label, "TYPE", 5, 26, 35, 24},
    {FormPart::List, "", 45, 26, 75, 200, TYPE_LIST, CBS_OWNERDRAWFIXED | WS_TABSTOP},
    {FormPart::Label, "GAIN", 5, UPPER_ROW, 35, 23},
    {FormPart::Field, "+0.0 dB", 45, UPPER_ROW, 75, 23, GAIN_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, GAIN_SPIN},
    {FormPart::Label, "FREQ", 5, 84, 40, 23},
    {FormPart::Field, "0 Hz", 45, 84, 75, 23, FREQUENCY_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, FREQUENCY_SPIN},
    {FormPart::Label, "Q", 5, LOWER_ROW, 40, 23},
    {FormPart::Field, "0.0", 45, LOWER_ROW, 75, 23, Q_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, Q_SPIN},
    {FormPart::Label, "SLOPE", 5, LOWER_ROW, 40, 24, 0, 0, true},
    {FormPart::List, "", 45, LOWER_ROW, 75, 200, SLOPE_LIST, CBS_OWNERDRAWFIXED | WS_TABSTOP, true},
    {FormPart::Toggle, "BYPASS", 5, 142, 115, 23, BYPASS, WS_TABSTOP},
};

// The children that can be disabled, by bit.
constexpr int DISABLED_BY_BIT[] = {BYPASS, TYPE_LIST, SLOPE_LIST, FREQUENCY_FIELD, GAIN_FIELD, Q_FIELD};

constexpr EqField FieldOf(int id) {
    return id == GAIN_FIELD ? EqField::Gain : id == FREQUENCY_FIELD ? EqField::Frequency : EqField::Q;
}

} // namespace

namespace {

// The image list of the filter types.
class FilterImages : public SharedResources {
public:
    explicit FilterImages(HINSTANCE module)
        : images(
              ImageList_LoadImageA(module, MAKEINTRESOURCEA(IDB_FILTERS), WIDTH, 1, MASK, IMAGE_BITMAP, 0)) {}

    static std::unique_ptr<SharedResources> Share(const ControlClass&, HINSTANCE module) {
        return std::make_unique<FilterImages>(module);
    }

    const ImageList images;

private:
    static constexpr int WIDTH = 13; // pixels of each
    static constexpr COLORREF MASK = 0xFFFFFF;
};

} // namespace

class EQPROPERTIES : public BLOCKFORM<EqBand> {
public:
    EQPROPERTIES() { parts = {WholeBlock<EqBand>(requests, DATATYPE_MASTER_EQ)}; }
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void BindingsChanged() override;

    std::span<const FormChild> Layout() const override { return LAYOUT; }
    SIZE FixedSize() const override { return {125, 170}; }
    int FirstId(bool backwards) const override { return backwards || value.bypass != 0 ? BYPASS : TYPE_LIST; }
    bool IsMarked(int) const override { return isFocused; }
    bool IsDimmed(int) const override { return IsGroundDimmed(); }
    bool IsGroundDimmed() const override { return value.bypass != 0; }
    void ShowMenu(HWND child, POINT place) override;
    const char* UnlistedText(int listId) const override;
    void DrawPicture(int listId, int item, HDC dc, const RECT& place) const override;

    std::string Text(const EqBand& band) const override { return logic::EqBandText(band); }
    std::optional<EqBand> Read(std::string_view text, const EqBand& before) const override {
        return logic::ReadEqBand(text, before);
    }
    EqBand Different() const override { return {1, logic::AllPass, 1.0F, 1.0F, 1.0F, 2}; }
    void Show(const EqBand& next) override;
    void ShowLists(const EqBand& band) override;
    std::string ValueText(int fieldId, bool isTyped) const override;
    void Enter(int fieldId, const std::string* typed) override;
    bool Step(int fieldId, int steps, const std::string* typed) override;
    void Choose(EqBand& band, int listId, int item) const override;
    std::int32_t& Bypass(EqBand& band) const override { return band.bypass; }

    void SetDatatype(int type);
    void SetBandwidth(bool isBandwidth);
    int BandwidthKeyword(VALUERECORD& record);
    int DatatypeKeyword(VALUERECORD& record);
    std::string DisabledItems() const;
    bool SetDisabledItems(const std::string& text);
    std::string BandText() const { return Text(value); }
    bool SetBandText(const std::string& text) { return LoadText(text, true) != 0; }
    unsigned DisabledMask() const;
    void SetDisabledMask(unsigned mask);
    void SetTitle();

    bool asBandwidth = false; // shows and edits bandwidth in place of Q

private:
    void FillTypes();
    void Arrange();

    int offeredTypes_ = 0;
    std::span<const std::string_view> slopeTexts_;
    UINT clipboardFormat_ = 0;
};

// Keywords

namespace {

constexpr Keyword BLOCK = Handled<&EQPROPERTIES::BlockKeyword>("value", KeywordKind::Block);

constexpr KeywordTable KEYWORDS({
    BLOCK.Named(" ").Says(
        "The same as `value`, but a text is refused: it was meant for a keyword that there is not."),
    Handled<&EQPROPERTIES::BandwidthKeyword>("bw", KeywordKind::Words)
        .OneOf("q,bw")
        .Label("Q or bandwidth")
        .Items(IDC_EQ_BANDWIDTH)
        .Says("`bw`: shows and edits bandwidth in octaves; `q`, or any word that does not begin with b: Q."),
    CONNECTION_KEYWORD,
    Handled<&EQPROPERTIES::DatatypeKeyword>("datatype", KeywordKind::Words)
        .Saved()
        .OneOf(EQ_DATATYPES)
        .Label("Equalizer")
        .Items(IDC_EQ_DATATYPE)
        .Says("`channeleq`: a band of a channel; `mastereq`, or anything else: of a master equaliser, which "
              "has one filter type less."),
    Property<&EQPROPERTIES::DisabledItems, &EQPROPERTIES::SetDisabledItems>("disableitems")
        .Says("Children that cannot be operated, hexadecimal bits: 1 bypass, 2 type, 4 slope, 8 frequency, "
              "0x10 gain, 0x20 Q."),
    FOCUS_KEYWORD.Saved(),
    FOCUS_COLOUR_KEYWORD.Saved(),
    FUNCTION_KEYWORD,
    Property<&EQPROPERTIES::BandText, &EQPROPERTIES::SetBandText>("properties")
        .Saved()
        .Label("Values")
        .Items(IDC_EQ_VALUES)
        .Says("Bypass, filter type (`PEQ`, `Loshelv`, `Hishelv`, `Hipass`, `Lopass`, `Allpass`), slope in dB "
              "an octave, frequency, gain and Q, joined by `,`. What is missing at the end stays; a field "
              "that cannot be read spoils the line; the units may be left out. Always sent, except what a "
              "new control has when it has asked nobody yet."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    BLOCK.Says(
        "The band: 24 bytes of the datatype that `datatype` names (30 or 32), or the text of `properties`. "
        "Set, it is shown and, unless it is the old one, sent to everything the control is bound to."),
});

} // namespace

KeywordList EQPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int EQPROPERTIES::BandwidthKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerText(&record, asBandwidth ? "bw" : "q");
    }
    const auto text = TextToSet(&record);
    if (text) {
        SetBandwidth(!text->empty() && (text->front() == 'b' || text->front() == 'B'));
    }
    return text ? 1 : 0;
}

int EQPROPERTIES::DatatypeKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerText(&record, EqDatatypeWord(ControlType()));
    }
    const auto text = TextToSet(&record);
    if (text) {
        SetDatatype(EqDatatypeOf(*text));
    }
    return text ? 1 : 0;
}

std::string EQPROPERTIES::DisabledItems() const {
    char text[16];
    std::snprintf(text, sizeof text, "0x%x", DisabledMask());
    return text;
}

bool EQPROPERTIES::SetDisabledItems(const std::string& text) {
    const auto mask = logic::ParseWholeHex(text);
    if (mask) {
        SetDisabledMask(*mask);
    }
    return mask.has_value();
}

// Showing

void EQPROPERTIES::SetDefaults() {
    FORMPROPERTIES::SetDefaults();
    clipboardFormat_ = a_GetClipboardFormat("EQ band");
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
        logic::OfferedFilterTypes(device.substr(0, device.rfind('*')), ControlType() == DATATYPE_MASTER_EQ);
    if (offered != offeredTypes_) {
        offeredTypes_ = offered;
        FillList(TYPE_LIST, std::span(logic::FILTER_TYPE_NAMES).first(static_cast<std::size_t>(offered)));
        Select(TYPE_LIST, value.type);
    }
}

// What there is to edit of the filter type.
void EQPROPERTIES::Arrange() {
    const bool hasGain = logic::HasGain(value.type);
    const bool hasQ = logic::HasQ(value.type, value.slope);
    const bool hasSlope = logic::HasSlope(value.type);
    for (const int row : {GAIN_LABEL, GAIN_ROW, GAIN_SPIN_ROW}) {
        ShowChild(row, hasGain);
    }
    for (const int row : {Q_LABEL, Q_ROW, Q_SPIN_ROW}) {
        ShowChild(row, hasQ);
    }
    const bool isAllPass = value.type == logic::AllPass;
    if (const std::span<const std::string_view> texts =
            isAllPass ? logic::FILTER_ORDERS : logic::FILTER_SLOPES;
        texts.data() != slopeTexts_.data()) {
        slopeTexts_ = texts;
        SetLabel(SLOPE_LABEL, isAllPass ? "ORDER" : "SLOPE");
        FillList(SLOPE_LIST, texts);
    }
    Select(SLOPE_LIST, value.slope - 1);
    const int y = hasGain ? LOWER_ROW : UPPER_ROW;
    for (const int row : {SLOPE_LABEL, SLOPE_ROW}) {
        SetWindowPos(Child(row), nullptr, LAYOUT[row].x, y, 0, 0,
                     SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
        ShowChild(row, hasSlope);
    }
    // One child may have lain where another one is now.
    RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN);
}

void EQPROPERTIES::Show(const EqBand& next) {
    const EqBand before = std::exchange(value, next);
    if (next.bypass != before.bypass) {
        Check(BYPASS, next.bypass != 0);
        DimmedChanged();
    }
    if (next.type != before.type || next.slope != before.slope) {
        Arrange();
    }
    for (const int id : {GAIN_FIELD, Q_FIELD, FREQUENCY_FIELD}) {
        if (logic::FieldOf(next, FieldOf(id)) != logic::FieldOf(before, FieldOf(id))) {
            FollowField(id, ValueText(id, false));
        }
    }
}

void EQPROPERTIES::ShowLists(const EqBand& band) {
    Select(TYPE_LIST, band.type);
    Select(SLOPE_LIST, band.slope - 1);
}

void EQPROPERTIES::SetBandwidth(bool isBandwidth) {
    asBandwidth = isBandwidth;
    SetLabel(Q_LABEL, asBandwidth ? "BW" : "Q");
    ShowField(Q_FIELD, ValueText(Q_FIELD, false));
    if (AreAllKnown() && !IsAnyOdd()) {
        CommitAgain(Q_FIELD);
    }
}

void EQPROPERTIES::SetDatatype(int type) {
    if (type == ControlType()) {
        return;
    }
    parts.front().datatype = type;
    FillTypes();
    // The devices are asked for the other block from now on.
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
    const bool isNamed = listId == TYPE_LIST && value.type >= offeredTypes_;
    return isNamed ? logic::FILTER_TYPE_NAMES[static_cast<std::size_t>(value.type)].data() : "";
}

void EQPROPERTIES::DrawPicture(int listId, int item, HDC dc, const RECT& place) const {
    const auto* shared = SharedOf<FilterImages>(*controlClass);
    const HIMAGELIST images = shared == nullptr ? nullptr : shared->images.get();
    int width = 0;
    int height = 0;
    if (listId == TYPE_LIST && ImageList_GetIconSize(images, &width, &height)) {
        ImageList_Draw(images, item, dc, place.right - width,
                       place.top + (place.bottom - place.top - height) / 2, ILD_TRANSPARENT);
    }
}

// Values and input

void EQPROPERTIES::BindingsChanged() {
    BLOCKFORM::BindingsChanged();
    FillTypes();
}

std::string EQPROPERTIES::ValueText(int fieldId, bool isTyped) const {
    return isTyped ? logic::TypedFieldText(value, FieldOf(fieldId), asBandwidth)
                   : logic::FieldText(value, FieldOf(fieldId), asBandwidth);
}

void EQPROPERTIES::Enter(int fieldId, const std::string* typed) {
    const auto number = typed != nullptr ? logic::ParseFloat(*typed) : std::nullopt;
    logic::TypeField(value, FieldOf(fieldId), number, asBandwidth);
}

bool EQPROPERTIES::Step(int fieldId, int steps, const std::string*) {
    return logic::StepField(value, FieldOf(fieldId), steps, asBandwidth);
}

void EQPROPERTIES::Choose(EqBand& band, int listId, int item) const {
    (listId == TYPE_LIST ? band.type : band.slope) = listId == TYPE_LIST ? item : item + 1;
    logic::LimitPassQ(band);
}

void EQPROPERTIES::ShowMenu(HWND, POINT place) {
    CopyOrPaste(IDR_EQ_MENU, clipboardFormat_, sizeof(EqBand), place,
                [](EqBand& band) -> EqBand& { return band; });
}

namespace {

LRESULT CALLBACK EqProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = FormProc(window, message, wParam, lParam);
    if (message == WM_SETTEXT) {
        if (auto* eq = PropertiesOf<EQPROPERTIES>(window); eq != nullptr) {
            eq->SetTitle();
        }
    }
    return result;
}

} // namespace

extern const ControlImplementation eqControl = Implement<EQPROPERTIES>(
    EqProc, IDD_EQ,
    "Editor of one band of an equaliser, 125 by 170 pixels. Its title is the window's text. [What "
    "it takes besides](panel-files.md#equalisers-and-crossovers).",
    FilterImages::Share);
