// XOVER: an editor for one output channel of a loudspeaker crossover: a high-pass and a low-pass filter, a
// gain trim, the polarity and a delay. Each of the four has functions of its own, so that each travels alone;
// a connected control gets all of them as one record. Frequencies are in Hz, gains in dB, interval in
// milliseconds.

#include "Controls/framework/Controls.h"
#include "Controls/framework/EditorPanel.h"
#include "Controls/framework/Keywords.h"
#include "Controls/framework/ParameterDialog.h"
#include "Controls/framework/ValueClipboard.h"
#include "Controls/resources/resource.h"
#include "Panelhost/Gdi.h"
#include "logic/Crossover.h"
#include "logic/EqBand.h"
#include "logic/FilterValues.h"

#include <algorithm>
#include <utility>

namespace {

using logic::Crossover;

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

constexpr EditorChild LAYOUT[] = {
    {EditorPart::Title, "HIPASS", 5, 5, 136, 15, HIGH_PASS_TITLE},
    {EditorPart::Title, "LOPASS", 151, 5, 136, 15, LOW_PASS_TITLE},
    {EditorPart::Label, "RESPONSE", 5, 26, 60, 24},
    {EditorPart::Label, "RESPONSE", 151, 26, 60, 24},
    {EditorPart::List, "", 66, 26, 75, 200, HIGH_PASS_TYPE, CBS_OWNERDRAWVARIABLE | WS_TABSTOP},
    {EditorPart::List, "", 212, 26, 75, 200, LOW_PASS_TYPE, CBS_OWNERDRAWFIXED | WS_TABSTOP},
    {EditorPart::Label, "FREQ", 5, 54, 60, 23},
    {EditorPart::Label, "FREQ", 151, 54, 60, 23},
    {EditorPart::Field, "0 Hz", 66, 54, 75, 23, HIGH_PASS_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, HIGH_PASS_SPIN},
    {EditorPart::Field, "0 Hz", 212, 54, 75, 23, LOW_PASS_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, LOW_PASS_SPIN},
    {EditorPart::Label, "GAIN TRIM", 5, 106, 60, 23},
    {EditorPart::Field, "+0.0 dB", 66, 106, 75, 23, GAIN_FIELD, WS_TABSTOP},
    {EditorPart::Spin, "", 0, 0, 0, 0, GAIN_SPIN},
    {EditorPart::Label, "POLARITY", 5, 134, 60, 23},
    {EditorPart::TextList, "", 66, 134, 75, 200, POLARITY, WS_TABSTOP},
    {EditorPart::Label, "DELAY", 151, 106, 60, 23},
    {EditorPart::Field, "0 ms", 212, 106, 75, 23, DELAY_FIELD},
    {EditorPart::Spin, "", 0, 0, 0, 0, DELAY_SPIN},
    {EditorPart::Toggle, "BYPASS", 151, 134, 135, 23, DELAY_BYPASS},
};
constexpr int HIGH_PASS_TITLE_ROW = 0;

// What is bound by the keywords function, function1, function2 and function3.
enum Slot { FILTERS, GAIN, POLARITY_SLOT, DELAY, SLOT_COUNT };

// A filter on the clipboard.
struct CopiedFilter {
    std::int32_t type = 0;
    float frequency = 0.0F; // Hz
};
constexpr std::size_t COPIED_FILTER_BLOCK = 24; // bytes

} // namespace

class XOVERPROPERTIES : public EDITORPROPERTIES {
public:
    const KEYWORDROW* GetHostinfoTable() override;
    LRESULT OnLoad(WPARAM loadMode, LPARAM line) override;
    void SetDefaults() override;
    void BindingsChanged() override { areFiltersKnown = false; }
    void Draw(HDC dc, const RECT& client) const override;

    std::span<const EditorChild> Layout() const override { return LAYOUT; }
    SIZE FixedSize() const override { return {WIDTH, 170}; }
    void PollRecord() override;
    void CommitField(int id, const std::string* typed) override;
    void StepField(int spinId, int steps) override;
    void ItemSelected(int listId, int item) override;
    void Toggled(int id, bool isDown) override;
    int FirstId(bool backwards) const override { return backwards ? POLARITY : HIGH_PASS_TYPE; }
    bool IsMarked(int titleRow) const override {
        return isFocused && (titleRow == HIGH_PASS_TITLE_ROW) == (section == HIGH_PASS_TITLE);
    }
    void ChildFocused(int id) override;
    void TitleClicked(int id) override { SetFocus(Item(id + 1)); }
    void ShowMenu(HWND child, POINT place) override;

    // Shows a known record; touches only what is new.
    void Show(const Crossover& next);
    // Takes a record from outside and, unless it is the one that is shown, passes it on.
    void Take(const Crossover& next);
    // 0 when it cannot be loaded; everything is then as it was.
    int LoadConfiguration(const std::string& wanted);
    int LoadFunctions(int slot, const char* text);

    Crossover value;
    std::string configuration;             // name of the file that was loaded last
    BINDINGLIST slotFunctions[SLOT_COUNT]; // of the slots behind the first, which are the base's own
    int section = HIGH_PASS_TITLE;         // id of the title whose filter has or had the focus last

private:
    // Before the record is changed in part: what is bound may hold another one. False when the control is
    // gone.
    bool Learn();
    void SendSlot(int slot);
    void SendAll();
    void ShowFilterMenu(bool isHighPass, POINT place);
    void ShowChannelMenu(POINT place);
    void Paste(const Crossover& pasted) const;

    REQUESTLIST slotRequests[SLOT_COUNT];
    REQUESTLIST connectedControls;
    // Whether these parts were set as a whole or are what the bound devices hold. What a new control starts
    // with must reach no device.
    bool areFiltersKnown = false;
    bool isDelayKnown = false;
    bool isLoading = false; // a configuration; what it changes is sent at its end
    UINT filterFormat = 0;
    UINT channelFormat = 0;
};

// Keyword handlers

namespace {

XOVERPROPERTIES& XOver(HOSTINFO* object) {
    return *static_cast<XOVERPROPERTIES*>(object);
}

int ValueKeyword(VALUERECORD* record, HOSTINFO* object) {
    XOVERPROPERTIES& xover = XOver(object);
    const bool isText = record->datatype == DATATYPE_TEXT;
    if (record->command == COMMAND_GET) {
        return isText ? a_AnswerText(record, logic::CrossoverText(xover.value).c_str())
                      : a_AnswerBytes(record, DATATYPE_CROSSOVER, &xover.value, sizeof xover.value);
    }
    Crossover next;
    if (isText) {
        const auto text = TextToSet(record);
        const auto read = text ? logic::ReadCrossover(*text, xover.value) : std::nullopt;
        if (!read) {
            return 0;
        }
        next = *read;
    } else if (record->command != COMMAND_SET ||
               a_ReadBytes(record, DATATYPE_CROSSOVER, &next, sizeof next) == 0 || !logic::IsKnown(next)) {
        return 0;
    }
    xover.Take(next);
    return 1;
}

int ConfigurationKeyword(VALUERECORD* record, HOSTINFO* object) {
    XOVERPROPERTIES& xover = XOver(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, xover.configuration.c_str());
    }
    const auto name = TextToSet(record);
    return name ? xover.LoadConfiguration(*name) : 0;
}

template <int slot>
int SlotKeyword(VALUERECORD* record, HOSTINFO* object) {
    XOVERPROPERTIES& xover = XOver(object);
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, a_BuildString(xover.slotFunctions[slot]).c_str());
    }
    const auto text = TextToSet(record);
    return text ? xover.LoadFunctions(slot, text->c_str()) : 0;
}

constexpr KEYWORDROW KEYWORDS[] = {
    {" ", ValueKeyword, 0},
    {"connection", ConnectionKeyword, 0},
    {"config", ConfigurationKeyword, KEYWORD_SAVED},
    {"focus", FocusKeyword, 0},
    {"focuscolor", FocusColourKeyword, 0},
    {"function", FunctionKeyword, KEYWORD_SAVED},
    {"function1", SlotKeyword<GAIN>, KEYWORD_SAVED},
    {"function2", SlotKeyword<POLARITY_SLOT>, KEYWORD_SAVED},
    {"function3", SlotKeyword<DELAY>, KEYWORD_SAVED},
    {"interval", IntervalKeyword, KEYWORD_SAVED},
    {"layer", LayerKeyword, 0},
    {"level", LayerKeyword, 0},
    {"value", ValueKeyword, 0},
    {},
};
static_assert(KeywordsAreUnique(KEYWORDS));

} // namespace

const KEYWORDROW* XOVERPROPERTIES::GetHostinfoTable() {
    return KEYWORDS;
}

// In a configuration an unknown keyword is a damaged line, not a value.
LRESULT XOVERPROPERTIES::OnLoad(WPARAM loadMode, LPARAM line) {
    if (isLoading && line != 0) {
        char keyword[TEXT_SIZE];
        a_GetKeyword(reinterpret_cast<const char*>(line), keyword);
        if (a_FindKeyword(KEYWORDS, keyword) < 0) {
            TRACE("%s Keyword not found: %s\n", controlClass->displayName, keyword);
            return 0;
        }
    }
    return EDITORPROPERTIES::OnLoad(loadMode, line);
}

int XOVERPROPERTIES::LoadFunctions(int slot, const char* text) {
    BINDINGLIST none;
    isDelayKnown = isDelayKnown && slot != DELAY;
    return a_FunctionChanged(text, this, slotFunctions[slot], none, slotRequests[slot]);
}

int XOVERPROPERTIES::LoadConfiguration(const std::string& wanted) {
    if (wanted.empty()) {
        configuration.clear();
        return 1;
    }
    const std::string file = "Controls\\" + wanted + ".cfg";
    char path[MAX_PATH];
    if (wanted.find_first_of("\\/:*?\"<>|") != std::string::npos || // it lies in that folder and nowhere else
        a_MakeFullPathName2(ModuleInstance(), file.c_str(), path) == 0) {
        TRACE("XOver configuration %s: not a file name\n", wanted.c_str());
        return 0;
    }
    if (!Learn()) {
        return 1;
    }
    const HWND self = window;
    const Crossover before = value;
    const bool outer = std::exchange(isLoading, true);
    const int taken = a_LoadFile(this, path, LOAD_FROM_FILE);
    if (!StillHas(self, this)) {
        return 1;
    }
    isLoading = outer;
    if (taken <= 0) {
        TRACE("XOver configuration %s: %s\n", wanted.c_str(),
              taken < 0 ? "cannot be read" : "nothing to load");
        Show(before);
        return 0;
    }
    configuration = wanted;
    if (value != before) {
        SendAll();
    }
    return 1;
}

// Showing

void XOVERPROPERTIES::SetDefaults() {
    EDITORPROPERTIES::SetDefaults();
    filterFormat = a_GetClipboardFormat("XOver filter");
    channelFormat = a_GetClipboardFormat("XOver");
    FillList(HIGH_PASS_TYPE, logic::crossoverNames);
    FillList(LOW_PASS_TYPE, logic::crossoverNames);
    FillList(POLARITY, logic::polarities);
    for (const int list : {HIGH_PASS_TYPE, LOW_PASS_TYPE, POLARITY}) {
        Select(list, 0);
    }
    for (const int slot : {GAIN, POLARITY_SLOT, DELAY}) {
        a_FollowRequests(this, slotFunctions[slot], slotRequests[slot]);
    }
    a_FollowRequests(this, connections, connectedControls);
}

void XOVERPROPERTIES::Draw(HDC dc, const RECT& client) const {
    EDITORPROPERTIES::Draw(dc, client);
    int y = SEPARATOR;
    for (const int pen : {BLACK_PEN, WHITE_PEN}) {
        const Selected selected(dc, GetStockObject(pen));
        MoveToEx(dc, MARGIN, y, nullptr);
        LineTo(dc, WIDTH - MARGIN, y);
        ++y;
    }
}

void XOVERPROPERTIES::Show(const Crossover& next) {
    const Crossover before = std::exchange(value, next);
    const auto& filters = next.filters;
    const auto& old = before.filters;
    if (filters.highPassType != old.highPassType) {
        Select(HIGH_PASS_TYPE, filters.highPassType);
    }
    if (filters.highPassFrequency != old.highPassFrequency) {
        FollowField(HIGH_PASS_FIELD, logic::FrequencyText(filters.highPassFrequency));
    }
    if (filters.lowPassType != old.lowPassType) {
        Select(LOW_PASS_TYPE, filters.lowPassType);
    }
    if (filters.lowPassFrequency != old.lowPassFrequency) {
        FollowField(LOW_PASS_FIELD, logic::FrequencyText(filters.lowPassFrequency));
    }
    if (next.gain != before.gain) {
        FollowField(GAIN_FIELD, logic::TrimText(next.gain));
    }
    if (next.polarity != before.polarity) {
        Select(POLARITY, next.polarity);
    }
    if (next.delay.amount != before.delay.amount || next.delay.unit != before.delay.unit) {
        FollowField(DELAY_FIELD, logic::DelayAmountText(next.delay));
    }
    if (next.delay.bypass != before.delay.bypass) {
        Check(DELAY_BYPASS, next.delay.bypass != 0);
        EnableItem(DELAY_FIELD, next.delay.bypass == 0);
        EnableItem(DELAY_SPIN, next.delay.bypass == 0);
    }
}

void XOVERPROPERTIES::ChildFocused(int id) {
    const int focused = id >= GAIN_FIELD ? section : id >= LOW_PASS_TITLE ? LOW_PASS_TITLE : HIGH_PASS_TITLE;
    if (std::exchange(section, focused) != focused) {
        FocusChanged();
    }
}

// Values

bool XOVERPROPERTIES::Learn() {
    if (parent == nullptr) {
        return true;
    }
    const HWND self = window;
    if (!areFiltersKnown) {
        Crossover held = value;
        const bool isAnswered = requests.empty() || AskForValue(requests, DATATYPE_CROSSOVER, &held);
        if (!StillHas(self, this)) {
            return false;
        }
        areFiltersKnown = isAnswered && logic::IsKnown(held);
        if (areFiltersKnown) {
            Show(held);
        }
    }
    if (!isDelayKnown) {
        Crossover held = value;
        const REQUESTLIST& list = slotRequests[DELAY];
        const bool isAnswered = list.empty() || AskForValue(list, DATATYPE_DELAY, &held.delay);
        if (!StillHas(self, this)) {
            return false;
        }
        isDelayKnown = isAnswered && logic::IsKnown(held.delay);
        if (isDelayKnown) {
            Show(held);
        }
    }
    return true;
}

void XOVERPROPERTIES::SendSlot(int slot) {
    if (parent == nullptr || isLoading) {
        return;
    }
    const HWND self = window;
    Crossover sent = value;
    switch (slot) {
    case FILTERS:
        if (areFiltersKnown) {
            a_SendRequest(requests, COMMAND_SET, DATATYPE_CROSSOVER, &sent, nullptr);
        }
        return; // with it connected controls have the rest as well
    case GAIN:
        a_SendRequest(slotRequests[GAIN], COMMAND_SET, DATATYPE_FLOAT, &sent.gain, nullptr);
        break;
    case POLARITY_SLOT:
        a_SendRequest(slotRequests[POLARITY_SLOT], COMMAND_SET, DATATYPE_INTEGER, &sent.polarity, nullptr);
        break;
    default:
        if (isDelayKnown) {
            a_SendRequest(slotRequests[DELAY], COMMAND_SET, DATATYPE_DELAY, &sent.delay, nullptr);
        }
        break;
    }
    if (StillHas(self, this) && areFiltersKnown && isDelayKnown) {
        a_SendRequest(connectedControls, COMMAND_SET, DATATYPE_CROSSOVER, &sent, nullptr);
    }
}

void XOVERPROPERTIES::SendAll() {
    const HWND self = window;
    for (int slot = FILTERS; slot < SLOT_COUNT && StillHas(self, this); ++slot) {
        SendSlot(slot);
    }
}

void XOVERPROPERTIES::Take(const Crossover& next) {
    if (next == value) {
        return;
    }
    areFiltersKnown = true;
    isDelayKnown = true;
    Show(next);
    if (parent != nullptr) {
        SendAll();
    } else { // a window that is no panel uses the control by itself
        Crossover sent = value;
        SendMessageA(GetParent(window), WM_USER, static_cast<WPARAM>(GetDlgCtrlID(window)),
                     reinterpret_cast<LPARAM>(&sent));
    }
}

void XOVERPROPERTIES::PollRecord() {
    const HWND self = window;
    Crossover next = value;
    int worst = REQUEST_UNCHANGED;
    bool isNew = false;
    // Asks for a part of a copy and keeps it when it is new and known. False when the control is gone.
    const auto poll = [&](REQUESTLIST& list, int datatype, auto part, bool* known) {
        Crossover polled = next;
        int result = REQUEST_UNCHANGED;
        a_SendRequest(list, COMMAND_GET, datatype, part(polled), &result);
        if (!StillHas(self, this)) {
            return false;
        }
        if (result == REQUEST_DELIVERED && !logic::IsKnown(polled)) {
            result = REQUEST_DISAGREE; // of another kind of device: what is shown stays
        }
        if (result == REQUEST_DELIVERED) {
            next = polled;
            isNew = true;
        }
        if (known != nullptr && result <= REQUEST_DELIVERED) {
            *known = *known || !list.empty();
        }
        worst = std::max(worst, result);
        return true;
    };
    // A device delivers the filters of the first, a connected control the whole record.
    const bool isHere =
        poll(
            requests, DATATYPE_CROSSOVER, [](Crossover& all) { return &all; }, &areFiltersKnown) &&
        poll(
            slotRequests[GAIN], DATATYPE_FLOAT, [](Crossover& all) { return &all.gain; }, nullptr) &&
        poll(
            slotRequests[POLARITY_SLOT], DATATYPE_INTEGER, [](Crossover& all) { return &all.polarity; },
            nullptr) &&
        poll(
            slotRequests[DELAY], DATATYPE_DELAY, [](Crossover& all) { return &all.delay; }, &isDelayKnown);
    if (!isHere) {
        return;
    }
    if (isNew) {
        Show(next);
    }
    ShowPollResult(worst);
}

// Input

// What cannot be read is replaced by what is held, and so is a text that is still the one that was shown: it
// has lost digits.
void XOVERPROPERTIES::CommitField(int id, const std::string* typed) {
    const auto number = logic::ParseFloat(typed == nullptr ? "" : *typed);
    const bool isSent = typed == nullptr || number;
    if (isSent && !Learn()) {
        return;
    }
    if (id == GAIN_FIELD) {
        if (isSent) {
            value.gain = logic::Clamp(number ? *number : value.gain, logic::lowestTrim, logic::highestTrim);
        }
        ShowField(id, logic::TrimText(value.gain));
    } else if (id == DELAY_FIELD) {
        if (number) {
            logic::ReadDelayAmount(*typed, value.delay);
            value.delay.amount = std::max(value.delay.amount, 0.0F);
        }
        ShowField(id, logic::DelayAmountText(value.delay));
    } else {
        float& hertz =
            id == HIGH_PASS_FIELD ? value.filters.highPassFrequency : value.filters.lowPassFrequency;
        if (isSent) {
            hertz = logic::Clamp(number ? *number : hertz, logic::lowestFrequency, logic::highestFrequency);
        }
        ShowField(id, logic::TypedCrossoverFrequencyText(hertz));
    }
    if (isSent) {
        SendSlot(id == GAIN_FIELD ? GAIN : id == DELAY_FIELD ? DELAY : FILTERS);
    }
}

void XOVERPROPERTIES::StepField(int spinId, int steps) {
    const auto typedDelay = Typed(DELAY_FIELD);
    if (!Learn()) {
        return;
    }
    const Crossover before = value;
    const int field = spinId - 1;
    std::string text;
    if (spinId == GAIN_SPIN) {
        value.gain = logic::StepGain(value.gain, steps, logic::lowestTrim, logic::highestTrim);
        text = logic::TrimText(value.gain);
    } else if (spinId == DELAY_SPIN) {
        if (typedDelay) {
            logic::ReadDelayAmount(*typedDelay, value.delay);
        }
        value.delay.amount = std::max(value.delay.amount + static_cast<float>(steps), 0.0F);
        text = logic::DelayAmountText(value.delay);
    } else {
        float& hertz =
            spinId == HIGH_PASS_SPIN ? value.filters.highPassFrequency : value.filters.lowPassFrequency;
        hertz = logic::StepFrequency(hertz, steps);
        text = logic::FrequencyText(hertz);
    }
    if (value == before) {
        return;
    }
    ShowField(field, text);
    SendSlot(spinId == GAIN_SPIN ? GAIN : spinId == DELAY_SPIN ? DELAY : FILTERS);
}

void XOVERPROPERTIES::ItemSelected(int listId, int item) {
    if (item < 0 || !Learn()) {
        return;
    }
    Crossover next = value;
    (listId == POLARITY         ? next.polarity
     : listId == HIGH_PASS_TYPE ? next.filters.highPassType
                                : next.filters.lowPassType) = item;
    Show(next);
    Select(listId, item); // what was learned may have moved it
    SendSlot(listId == POLARITY ? POLARITY_SLOT : FILTERS);
}

void XOVERPROPERTIES::Toggled(int, bool isDown) {
    if (!Learn()) {
        return;
    }
    Crossover next = value;
    next.delay.bypass = isDown ? 1 : 0;
    Show(next);
    Check(DELAY_BYPASS, isDown);
    SendSlot(DELAY);
}

// Copy and paste: on a filter's children of that filter, elsewhere of the whole channel.

void XOVERPROPERTIES::ShowMenu(HWND child, POINT place) {
    POINT inside = place;
    MapWindowPoints(nullptr, window, &inside, 1);
    if (child != nullptr) {
        RECT area;
        GetWindowRect(child, &area);
        MapWindowPoints(nullptr, window, reinterpret_cast<POINT*>(&area), 2);
        inside = {area.left, area.top};
    }
    if (inside.y < SEPARATOR) {
        ShowFilterMenu(inside.x < MIDDLE, place);
    } else {
        ShowChannelMenu(place);
    }
}

// As anybody else would set the value.
void XOVERPROPERTIES::Paste(const Crossover& pasted) const {
    REQUESTITEM item;
    Crossover copy = pasted;
    item.record.command = COMMAND_SET;
    item.record.datatype = DATATYPE_CROSSOVER;
    item.record.data = &copy;
    SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&item));
}

void XOVERPROPERTIES::ShowFilterMenu(bool isHighPass, POINT place) {
    const int command = TrackMenu(IDR_XOVER_FILTER_MENU, HasValueToPaste(filterFormat), place);
    if (command == 0 || !Learn()) {
        return;
    }
    Crossover next = value;
    std::int32_t& type = isHighPass ? next.filters.highPassType : next.filters.lowPassType;
    float& frequency = isHighPass ? next.filters.highPassFrequency : next.filters.lowPassFrequency;
    CopiedFilter filter{type, frequency};
    if (command == IDM_COPY_VALUE) {
        CopyValue(window, filterFormat, &filter, sizeof filter, COPIED_FILTER_BLOCK);
    } else if (PasteValue(window, filterFormat, &filter, sizeof filter)) {
        type = filter.type;
        frequency = filter.frequency;
        Paste(next);
    }
}

void XOVERPROPERTIES::ShowChannelMenu(POINT place) {
    const int command = TrackMenu(IDR_XOVER_MENU, HasValueToPaste(channelFormat), place);
    if (command == 0 || !Learn()) {
        return;
    }
    Crossover next = value;
    if (command == IDM_COPY_VALUE) {
        CopyValue(window, channelFormat, &value, sizeof value, sizeof value);
    } else if (PasteValue(window, channelFormat, &next, sizeof next)) {
        Paste(next);
    }
}

// Parameter dialog and registration

namespace {

constexpr DialogEdit EDITS[] = {
    {IDC_CONFIGURATION, "Configuration", FieldKind::Text, "config"},
    {IDC_GAIN_FUNCTION, "Gain function", FieldKind::Text, "function1"},
    {IDC_POLARITY_FUNCTION, "Polarity function", FieldKind::Text, "function2"},
    {IDC_DELAY_FUNCTION, "Delay function", FieldKind::Text, "function3"},
    {IDC_INTERVAL, "Polling interval", FieldKind::Integer, "interval"},
    {IDC_FOCUS_COLOUR, "Focus colour", FieldKind::Colour, "focuscolor", 0, 0, IDC_CHOOSE_FOCUS_COLOUR},
};
constexpr ParameterDialog DIALOG{.resource = IDD_XOVER, .edits = EDITS};

} // namespace

const ControlImplementation xoverControl{CreateProperties<XOVERPROPERTIES>, EditorProc, &DIALOG};
