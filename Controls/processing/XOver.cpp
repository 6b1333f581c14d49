// XOVER: a form for one output channel of a loudspeaker crossover: a high-pass and a low-pass filter, a
// gain trim, the polarity and a delay. Each of the four has functions of its own, so that each travels alone;
// a connected control gets all of them as one record. Frequencies are in Hz, gains in dB, interval in
// milliseconds.

#include "Controls/drawing/DarkParts.h"
#include "Controls/families/BlockForm.h"
#include "Controls/families/CrossoverParts.h"
#include "Controls/families/FunctionList.h"
#include "Controls/framework/Control.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/Clipboard.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Trace.h"
#include "base/Gdi.h"
#include "logic/controls/Crossover.h"

#include <cstdio>
#include <cstring>
#include <utility>

namespace {

using logic::Crossover;
using logic::CrossoverField;
using logic::CrossoverFilter;

enum XOverId {
    HIGH_PASS_TITLE = 100,
    HIGH_PASS_TYPE,
    HIGH_PASS_FIELD,
    HIGH_PASS_SPIN,
    LOW_PASS_TITLE,
    LOW_PASS_TYPE,
    LOW_PASS_FIELD,
    LOW_PASS_SPIN,
    GAIN_FIELD,
    GAIN_SPIN,
    DELAY_FIELD,
    DELAY_SPIN,
    DELAY_BYPASS,
    POLARITY
};

constexpr int SEPARATOR = 85; // y of the line between the filters and the rest
constexpr int MIDDLE = 146;   // x between the two filters
constexpr int WIDTH = 292;
constexpr int MARGIN = 5;

constexpr FormChild LAYOUT[] = {
    {FormPart::Title, "HIPASS", 5, 5, 136, 15, HIGH_PASS_TITLE},
    {FormPart::Title, "LOPASS", 151, 5, 136, 15, LOW_PASS_TITLE},
    {FormPart::Label, "RESPONSE", 5, 26, 60, 24},
    {FormPart::Label, "RESPONSE", 151, 26, 60, 24},
    {FormPart::List, "", 66, 26, 75, 200, HIGH_PASS_TYPE, CBS_OWNERDRAWVARIABLE | WS_TABSTOP},
    {FormPart::List, "", 212, 26, 75, 200, LOW_PASS_TYPE, CBS_OWNERDRAWFIXED | WS_TABSTOP},
    {FormPart::Label, "FREQ", 5, 54, 60, 23},
    {FormPart::Label, "FREQ", 151, 54, 60, 23},
    {FormPart::Field, "0 Hz", 66, 54, 75, 23, HIGH_PASS_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, HIGH_PASS_SPIN},
    {FormPart::Field, "0 Hz", 212, 54, 75, 23, LOW_PASS_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, LOW_PASS_SPIN},
    {FormPart::Label, "GAIN TRIM", 5, 106, 60, 23},
    {FormPart::Field, "+0.0 dB", 66, 106, 75, 23, GAIN_FIELD, WS_TABSTOP},
    {FormPart::Spin, "", 0, 0, 0, 0, GAIN_SPIN},
    {FormPart::Label, "POLARITY", 5, 134, 60, 23},
    {FormPart::TextList, "", 66, 134, 75, 200, POLARITY, WS_TABSTOP},
    {FormPart::Label, "DELAY", 151, 106, 60, 23},
    {FormPart::Field, "0 ms", 212, 106, 75, 23, DELAY_FIELD},
    {FormPart::Spin, "", 0, 0, 0, 0, DELAY_SPIN},
    {FormPart::Toggle, "BYPASS", 151, 134, 135, 23, DELAY_BYPASS},
};
constexpr int HIGH_PASS_TITLE_ROW = 0;
constexpr int DELAY_ROWS = 17; // the first of the three

// What is bound by the keywords function, function1, function2 and function3.
enum Slot { FILTERS, GAIN, POLARITY_SLOT, DELAY, SLOT_COUNT };

constexpr std::size_t COPIED_FILTER_BLOCK = 24; // bytes on the clipboard

constexpr CrossoverField FieldOf(int id) {
    return id == HIGH_PASS_FIELD  ? CrossoverField::HighPassFrequency
           : id == LOW_PASS_FIELD ? CrossoverField::LowPassFrequency
           : id == GAIN_FIELD     ? CrossoverField::Gain
                                  : CrossoverField::Delay;
}

} // namespace

class XOVERPROPERTIES : public BLOCKFORM<Crossover> {
public:
    XOVERPROPERTIES();
    KeywordList Keywords() const override;
    LRESULT OnGetTooltip(WPARAM wParam, LPARAM text) override;
    void SetDefaults() override;
    void Draw(HDC dc, const RECT& client) const override;

    std::span<const FormChild> Layout() const override { return LAYOUT; }
    SIZE FixedSize() const override { return {WIDTH, 170}; }
    int FirstId(bool backwards) const override { return backwards ? POLARITY : HIGH_PASS_TYPE; }
    bool IsMarked(int titleRow) const override {
        return isFocused && (titleRow == HIGH_PASS_TITLE_ROW) == (section == HIGH_PASS_TITLE);
    }
    bool IsDimmed(int row) const override;
    void ChildFocused(int id) override;
    void TitleClicked(int id) override { SetFocus(Item(id + 1)); }
    void ShowMenu(HWND child, POINT place) override;

    std::string Text(const Crossover& crossover) const override { return logic::CrossoverText(crossover); }
    std::optional<Crossover> Read(std::string_view text, const Crossover& before) const override {
        return logic::ReadCrossover(text, before);
    }
    Crossover Different() const override { return {{{1, 1.0F}, {1, 1.0F}}, 1.0F, 1, {1, 1.0F, 1}}; }
    void Show(const Crossover& next) override;
    void ShowLists(const Crossover& crossover) override;
    std::string ValueText(int fieldId, bool isTyped) const override;
    void Enter(int fieldId, const std::string* typed) override;
    bool Step(int fieldId, int steps, const std::string* typed) override;
    void Choose(Crossover& crossover, int listId, int item) const override;
    std::int32_t& Bypass(Crossover& crossover) const override { return crossover.delay.bypass; }
    std::size_t PartOf(int id) const override;
    bool IsSending() override { return parent != nullptr && !isLoading_; }
    void PartSent() override;

    std::string Configuration() const { return configuration; }
    // False when it cannot be loaded; everything is then as it was. Of a file that cannot be read the name is
    // kept.
    bool LoadConfiguration(const std::string& wanted);
    template <int slot>
    std::string SlotFunctions() const {
        return slots[slot].Text();
    }
    template <int slot>
    bool SetSlotFunctions(const std::string& text) {
        parts[slot].SetKnown(false);
        return slots[slot].Load(*this, text);
    }

    std::string configuration;      // name of the file that was loaded last, or is missing
    FunctionList slots[SLOT_COUNT]; // behind the first, which is the base's own
    int section = HIGH_PASS_TITLE;  // id of the title whose filter has or had the focus last

private:
    REQUESTLIST filterRequests_; // of the first slot without what is connected
    REQUESTLIST connectedControls_;
    bool isLoading_ = false; // a configuration; what it changes is sent at its end
    UINT filterFormat_ = 0;
    UINT channelFormat_ = 0;
};

XOVERPROPERTIES::XOVERPROPERTIES() {
    parts = CrossoverParts(requests, filterRequests_, slots[GAIN].Requests(), slots[POLARITY_SLOT].Requests(),
                           slots[DELAY].Requests());
}

namespace {

// Empty when the name is none of a file in the folder of configurations.
std::string ConfigurationPath(std::string_view name) {
    const std::string file = "Controls\\" + std::string(name) + ".cfg";
    char path[MAX_PATH];
    return name.find_first_of("\\/:*?\"<>|") == std::string::npos &&
                   a_MakeFullPathName2(ModuleInstance(), file.c_str(), path) != 0
               ? path
               : "";
}

bool IsMissingConfiguration(std::string_view name) {
    return !name.empty() && GetFileAttributesA(ConfigurationPath(name).c_str()) == INVALID_FILE_ATTRIBUTES;
}

std::string ConfigurationState(std::string_view name) {
    return IsMissingConfiguration(name) ? "file is missing" : "";
}

} // namespace

// Keywords

namespace {

constexpr Keyword BLOCK = Handled<&XOVERPROPERTIES::BlockKeyword>("value", KeywordKind::Block);

template <int slot>
constexpr Keyword SlotKeyword(const char* name) {
    return Property<&XOVERPROPERTIES::SlotFunctions<slot>, &XOVERPROPERTIES::SetSlotFunctions<slot>>(
               name, KeywordKind::Addresses)
        .Saved();
}

constexpr KeywordTable KEYWORDS({
    BLOCK.Named(" ").Says(
        "The same as `value`, but a text is refused: it was meant for a keyword that there is not."),
    CONNECTION_KEYWORD.Says("Controls it is connected to, `OBJECT*keyword` or `OBJECT`, joined by `;`. They "
                            "get the whole block at every change, but keep what they hold of a part whose "
                            "function cannot be reached. Saved after all other keywords."),
    Property<&XOVERPROPERTIES::Configuration, &XOVERPROPERTIES::LoadConfiguration>("config",
                                                                                   KeywordKind::File)
        .Saved()
        .Label("Configuration")
        .Items(IDC_CONFIGURATION)
        .Preview(ConfigurationState, IDC_CONFIGURATION_STATE)
        .Says("Name of a [configuration](panel-files.md#crossover-configurations) in the folder `Controls`, "
              "which is loaded; empty for none. One that is missing changes nothing and is shown as missing; "
              "its name stays."),
    FOCUS_KEYWORD.Says("1 while the title of the filter that has or last had the keyboard focus is drawn in "
                       "the focus colour, else 0."),
    FOCUS_COLOUR_KEYWORD.Says("Colour of that title, `0x00bbggrr`."),
    FUNCTION_KEYWORD.Says("Device parameters that hold the two filters, `DEVICE*parameter`, joined by `;`."),
    SlotKeyword<GAIN>("function1")
        .Label("Gain function")
        .Items(IDC_GAIN_FUNCTION)
        .Says("Device parameters that hold the gain trim in dB, joined by `;`."),
    SlotKeyword<POLARITY_SLOT>("function2")
        .Label("Polarity function")
        .Items(IDC_POLARITY_FUNCTION)
        .Says("Device parameters that hold the polarity, 0 normal, 1 inverted, joined by `;`."),
    SlotKeyword<DELAY>("function3")
        .Label("Delay function")
        .Items(IDC_DELAY_FUNCTION)
        .Says("Device parameters that hold the delay, joined by `;`."),
    INTERVAL_KEYWORD,
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    BLOCK.Says("The channel: 36 bytes of datatype 19, or a [text](panel-files.md#crossover-configurations). "
               "Set, it is shown and, unless it is the old one, all of it is sent."),
});

} // namespace

KeywordList XOVERPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

LRESULT XOVERPROPERTIES::OnGetTooltip(WPARAM wParam, LPARAM lParam) {
    FORMPROPERTIES::OnGetTooltip(wParam, lParam);
    if (IsMissingConfiguration(configuration)) {
        auto* text = reinterpret_cast<char*>(lParam);
        const std::size_t length = std::strlen(text);
        std::snprintf(text + length, TEXT_SIZE - length, "   (configuration %s is missing)",
                      configuration.c_str());
    }
    return 1;
}

bool XOVERPROPERTIES::LoadConfiguration(const std::string& wanted) {
    if (wanted.empty()) {
        configuration.clear();
        return true;
    }
    const std::string path = ConfigurationPath(wanted);
    if (path.empty()) {
        TRACE("XOver configuration %s: not a file name\n", wanted.c_str());
        return false;
    }
    if (!Learn()) {
        return true;
    }
    const Crossover before = value;
    const bool outer = std::exchange(isLoading_, true);
    const int taken = a_LoadFile(this, path.c_str(), LOAD_FROM_FILE);
    isLoading_ = outer;
    if (taken <= 0) {
        TRACE("XOver configuration %s: %s\n", wanted.c_str(),
              taken < 0 ? "cannot be read" : "nothing to load");
        ShowBlock(before);
        if (taken == 0 || isLoading_) {
            return false;
        }
        configuration = wanted; // the file may be there when the panel is opened next
        return true;
    }
    configuration = wanted;
    if (value != before) {
        SendAll();
    }
    return true;
}

// Showing

void XOVERPROPERTIES::SetDefaults() {
    FORMPROPERTIES::SetDefaults();
    filterFormat_ = a_GetClipboardFormat("XOver filter");
    channelFormat_ = a_GetClipboardFormat("XOver");
    FillList(HIGH_PASS_TYPE, logic::CROSSOVER_NAMES);
    FillList(LOW_PASS_TYPE, logic::CROSSOVER_NAMES);
    FillList(POLARITY, logic::POLARITIES);
    ShowLists(value);
    a_FollowRequests(this, functions, filterRequests_);
    for (const int slot : {GAIN, POLARITY_SLOT, DELAY}) {
        slots[slot].Attach(*this);
    }
    a_FollowRequests(this, connections, connectedControls_);
}

void XOVERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    FORMPROPERTIES::Draw(dc, client);
    int y = SEPARATOR;
    const Selected selected(dc, GetStockObject(DC_PEN));
    const COLORREF lit = IsDark() ? DARK_OFF : RGB(255, 255, 255);
    for (const COLORREF colour : {IsDark() ? COLORREF{logic::PANEL_WELL} : RGB(0, 0, 0), lit}) {
        SetDCPenColor(dc, colour);
        MoveToEx(dc, MARGIN, y, nullptr);
        LineTo(dc, WIDTH - MARGIN, y);
        ++y;
    }
}

void XOVERPROPERTIES::Show(const Crossover& next) {
    const Crossover before = std::exchange(value, next);
    if (next.filters.highPass.frequency != before.filters.highPass.frequency) {
        FollowField(HIGH_PASS_FIELD, ValueText(HIGH_PASS_FIELD, false));
    }
    if (next.filters.lowPass.frequency != before.filters.lowPass.frequency) {
        FollowField(LOW_PASS_FIELD, ValueText(LOW_PASS_FIELD, false));
    }
    if (next.gain != before.gain) {
        FollowField(GAIN_FIELD, ValueText(GAIN_FIELD, false));
    }
    if (next.delay.amount != before.delay.amount || next.delay.unit != before.delay.unit) {
        FollowField(DELAY_FIELD, ValueText(DELAY_FIELD, false));
    }
    if (next.delay.bypass != before.delay.bypass) {
        Check(DELAY_BYPASS, next.delay.bypass != 0);
        EnableItem(DELAY_FIELD, next.delay.bypass == 0);
        EnableItem(DELAY_SPIN, next.delay.bypass == 0);
        DimmedChanged();
    }
}

void XOVERPROPERTIES::ShowLists(const Crossover& crossover) {
    Select(HIGH_PASS_TYPE, crossover.filters.highPass.type);
    Select(LOW_PASS_TYPE, crossover.filters.lowPass.type);
    Select(POLARITY, crossover.polarity);
}

// There is but the delay to bypass.
bool XOVERPROPERTIES::IsDimmed(int row) const {
    return value.delay.bypass != 0 && row >= DELAY_ROWS;
}

void XOVERPROPERTIES::ChildFocused(int id) {
    const int focused = id >= GAIN_FIELD ? section : id >= LOW_PASS_TITLE ? LOW_PASS_TITLE : HIGH_PASS_TITLE;
    if (std::exchange(section, focused) != focused) {
        FocusChanged();
    }
}

// Values and input

std::size_t XOVERPROPERTIES::PartOf(int id) const {
    switch (id) {
    case GAIN_FIELD:
        return GAIN;
    case POLARITY:
        return POLARITY_SLOT;
    case DELAY_FIELD:
    case DELAY_BYPASS:
        return DELAY;
    default:
        return FILTERS;
    }
}

// A connected control keeps what it holds of the parts of which nobody knows here what they should be.
void XOVERPROPERTIES::PartSent() {
    for (const REQUESTITEM& item : ItemsOf(connectedControls_)) {
        REQUESTLIST one{item};
        Crossover held = value;
        int result = REQUEST_UNCHANGED;
        if (!AreAllKnown() || IsAnyOdd()) {
            a_SendRequest(one, COMMAND_GET, DATATYPE_CROSSOVER, &held, &result);
        }
        if (parent == nullptr) {
            return;
        }
        Crossover sent = value;
        for (const auto& part : parts) {
            if (!part.isKnown || part.odd) {
                part.copy(sent, logic::KnownOf(held, value));
            }
        }
        if (result <= REQUEST_DELIVERED) {
            a_SendRequest(one, COMMAND_SET, DATATYPE_CROSSOVER, &sent, nullptr);
        }
    }
}

std::string XOVERPROPERTIES::ValueText(int fieldId, bool isTyped) const {
    return isTyped ? logic::TypedFieldText(value, FieldOf(fieldId))
                   : logic::FieldText(value, FieldOf(fieldId));
}

void XOVERPROPERTIES::Enter(int fieldId, const std::string* typed) {
    logic::TypeField(value, FieldOf(fieldId), typed);
}

// The delay goes on from what was typed, and is sent when it stays 0 as well.
bool XOVERPROPERTIES::Step(int fieldId, int steps, const std::string* typed) {
    const Crossover before = value;
    if (fieldId == DELAY_FIELD) {
        logic::TypeField(value, CrossoverField::Delay, typed);
    }
    logic::StepField(value, FieldOf(fieldId), steps);
    return fieldId == DELAY_FIELD || value != before;
}

void XOVERPROPERTIES::Choose(Crossover& crossover, int listId, int item) const {
    (listId == POLARITY         ? crossover.polarity
     : listId == HIGH_PASS_TYPE ? crossover.filters.highPass.type
                                : crossover.filters.lowPass.type) = item;
}

// Copy and paste: on a filter's children of that filter, elsewhere of the whole channel.

void XOVERPROPERTIES::ShowMenu(HWND child, POINT place) {
    POINT inside = place;
    MapWindowPoints(nullptr, window, &inside, 1);
    if (child != nullptr) {
        RECT area{};
        GetWindowRect(child, &area);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
        inside = {area.left, area.top};
    }
    if (inside.y >= SEPARATOR) {
        CopyOrPaste(IDR_XOVER_MENU, channelFormat_, sizeof(Crossover), place,
                    [](Crossover& all) -> Crossover& { return all; });
    } else {
        const bool isHighPass = inside.x < MIDDLE;
        CopyOrPaste(IDR_XOVER_FILTER_MENU, filterFormat_, COPIED_FILTER_BLOCK, place,
                    [isHighPass](Crossover& all) -> CrossoverFilter& {
                        return isHighPass ? all.filters.highPass : all.filters.lowPass;
                    });
    }
}

extern const ControlImplementation xoverControl = Implement<XOVERPROPERTIES>(
    FormProc, LAID_OUT,
    "Editor of one output channel of a loudspeaker crossover, 292 by 170 pixels: two filters, "
    "gain trim, polarity and delay, each bound by functions of its own. [What it takes "
    "besides](panel-files.md#equalisers-and-crossovers).");
