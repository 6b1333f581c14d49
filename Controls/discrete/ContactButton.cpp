// CONTACTBUTTON: a contact that is closed while it is held, and sends one value when it closes and another
// one when it opens. It does not stay closed by accident: whatever takes it from under the finger opens it,
// and a release that reaches nobody is sent again until it does. Values are whole numbers, times in
// milliseconds.

#include "Controls/families/TwoStateButton.h"
#include "Panelhost/Root.h"
#include "logic/controls/ContactTimes.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace {

constexpr int LONGEST = 3600000;
constexpr DWORD LOOK_PERIOD = 100; // how often a closed contact looks whether it can still be seen

} // namespace

class CONTACTBUTTONPROPERTIES : public TWOSTATEPROPERTIES {
public:
    CONTACTBUTTONPROPERTIES() { onValue = 1; }
    KeywordList Keywords() const override;
    void SetDefaults() override;
    void Destroying() override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    DWORD DueIn(DWORD now) const noexcept override;
    void Poll() override;
    bool IsOn() const override { return times.IsClosed() || isClosedElsewhere; }
    ButtonFace Face() const override { return IsOn() ? ButtonFace::On : TWOSTATEPROPERTIES::Face(); }
    KeyUse UseOf(WPARAM key) const override {
        return key == VK_SPACE || key == VK_RETURN ? KeyUse::Hold : KeyUse::None;
    }
    void Pressed() override;
    void Released() override;
    void MoveDrag(POINT) override {} // it is held wherever the cursor is
    void CancelDrag() override;
    void LetGo(bool isClosing) override;

    int ValueKeyword(VALUERECORD& record);
    void TimesChanged() {
        times.minimum = minimum;
        times.maximum = maximum;
    }
    void ToggleChanged();

    logic::ContactTimes times;
    int minimum = 0;                // that it stays closed
    int maximum = 0;                // after which it opens by itself; 0: never
    int toggle = 0;                 // 1: a second press opens it
    bool isClosedElsewhere = false; // as a poll has found
    std::optional<int> sent;        // the value that was sent last

private:
    // An address that has to get a value, and the value.
    struct Release {
        std::string address;
        int value;
    };

    void Close(int value);
    // As soon as the minimum allows it, or at once.
    void OpenSoon(bool atOnce);
    void Open();
    // They have to get the value.
    void Owe(const BINDINGLIST& addresses, int value);
    // Sends what is owed to those that take it, unless the contact is closed.
    void PayReleases();
    BINDINGLIST Addresses() const;

    std::optional<int> releaseValue_; // that it was set to; nothing: the off value
    BINDINGLIST closed_;              // addresses that the closing value went to
    std::vector<Release> owed_;       // what was not taken yet
    unsigned closings_ = 0;
    bool wasSeen_ = false; // when it was closed
    DWORD lastLook_ = 0;
};

// Keywords

namespace {

constexpr Keyword VALUE =
    Handled<&CONTACTBUTTONPROPERTIES::ValueKeyword>("value", KeywordKind::Integer)
        .Says(
            "What was sent last. Set to 0 or the off value it opens the contact, set to the on value or any "
            "other number it closes it, and is sent. While a panel file is loaded it cannot be closed.");

constexpr KeywordTable KEYWORDS({
    VALUE.AsDefault(),
    STATE_BITMAP,
    BUTTON_CAPTION.Says("Text on the button."),
    CONNECTION_KEYWORD,
    BUTTON_FONT,
    FUNCTION_KEYWORD,
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL),
    LAYER_KEYWORD,
    LEVEL_KEYWORD,
    Limited<&CONTACTBUTTONPROPERTIES::maximum, 0, LONGEST, &CONTACTBUTTONPROPERTIES::TimesChanged>("maximum")
        .Saved()
        .Unit("ms")
        .Label("Opens by itself after ms (0: never)")
        .Says(
            "Milliseconds after which it opens by itself, up to an hour, but not before `minimum` is over; 0 "
            "for never."),
    Limited<&CONTACTBUTTONPROPERTIES::minimum, 0, LONGEST, &CONTACTBUTTONPROPERTIES::TimesChanged>("minimum")
        .Saved()
        .Unit("ms")
        .Label("Stays closed at least ms")
        .Says("Milliseconds that it stays closed at least, up to an hour, however short it was pressed; when "
              "it "
              "goes with its panel it opens at once."),
    Integer<&CONTACTBUTTONPROPERTIES::offValue>("offvalue")
        .Saved()
        .Label("Off value")
        .Items(IDC_OFF_VALUE)
        .Says("Whole number sent when it opens."),
    Integer<&CONTACTBUTTONPROPERTIES::onValue>("onvalue")
        .Saved()
        .Label("On value")
        .Items(IDC_ON_VALUE)
        .Says("Whole number sent when it closes."),
    STATE_COLOURS,
    STATE_COLOUR_ON,
    STATE_COLOUR_OFF,
    Integer<&CONTACTBUTTONPROPERTIES::toggle, 0, 1, &CONTACTBUTTONPROPERTIES::ToggleChanged>("toggle")
        .Saved()
        .OneOf("0,1")
        .Label("A second press opens it")
        .Says(
            "0: it is closed while it is held. 1: it stays closed until a second press; it still opens when "
            "it is hidden, when the panel is edited or closed, and after `maximum`."),
    VALUE,
});

} // namespace

KeywordList CONTACTBUTTONPROPERTIES::Keywords() const {
    return KEYWORDS.List();
}

int CONTACTBUTTONPROPERTIES::ValueKeyword(VALUERECORD& record) {
    if (record.command == COMMAND_GET) {
        return a_AnswerInteger(&record, sent.value_or(offValue));
    }
    int value = 0;
    if (record.command != COMMAND_SET || a_ReadInteger(&record, &value) == 0) {
        return 0;
    }
    const bool closes = value != offValue && (value != 0 || value == onValue);
    if (closes && a_IsLoading(this)) {
        return 0; // devices would not be told
    }
    if (!closes) {
        releaseValue_ = value;
        OpenSoon(false);
    } else if (!times.IsClosed() || value != sent) {
        Close(value);
    }
    return 1;
}

void CONTACTBUTTONPROPERTIES::SetDefaults() {
    TWOSTATEPROPERTIES::SetDefaults();
    interval = 250;
}

void CONTACTBUTTONPROPERTIES::ToggleChanged() {
    if (!dragging) {
        OpenSoon(false); // nobody would open it
    }
}

// Closing and opening

BINDINGLIST CONTACTBUTTONPROPERTIES::Addresses() const {
    BINDINGLIST all = functions;
    all.insert(all.end(), connections.begin(), connections.end());
    return all;
}

// Whoever gets the value may open the contact again, or end it: what is left of the sending is then too late.
void CONTACTBUTTONPROPERTIES::Close(int value) {
    const Held held(*this);
    BINDINGLIST addresses = Addresses();
    REQUESTLIST list;
    a_BuildRequestList(addresses, {}, this, list);
    const unsigned closing = ++closings_;
    const DWORD now = GetTickCount();
    releaseValue_.reset();
    closed_.splice(closed_.end(), addresses);
    times.Close(now);
    lastLook_ = now;
    wasSeen_ = IsWindowVisible(window) != FALSE;
    sent = value;
    Redraw();
    for (const REQUESTITEM& item : list) {
        if (!times.IsClosed() || closings_ != closing) {
            return;
        }
        int copy = value;
        a_SendToItem(item, COMMAND_SET, DATATYPE_INTEGER, &copy);
    }
}

void CONTACTBUTTONPROPERTIES::OpenSoon(bool atOnce) {
    if (!times.IsClosed()) {
        if (isClosedElsewhere) {
            Open();
        }
        releaseValue_.reset();
        return;
    }
    times.AskToOpen();
    if (atOnce || times.IsDue(GetTickCount())) {
        Open();
    }
}

void CONTACTBUTTONPROPERTIES::Open() {
    const Held held(*this);
    const int value = releaseValue_.value_or(offValue);
    Owe(times.IsClosed() ? closed_ : Addresses(), value);
    releaseValue_.reset();
    closed_.clear();
    times.Open();
    isClosedElsewhere = false;
    sent = value;
    Redraw();
    PayReleases();
}

void CONTACTBUTTONPROPERTIES::Owe(const BINDINGLIST& addresses, int value) {
    for (const std::string& address : addresses) {
        const auto same = std::find_if(owed_.begin(), owed_.end(),
                                       [&](const Release& owed) { return owed.address == address; });
        if (same == owed_.end()) {
            owed_.push_back({address, value});
        } else {
            same->value = value;
        }
    }
}

void CONTACTBUTTONPROPERTIES::PayReleases() {
    if (owed_.empty() || a_IsLoading(this)) { // devices would not be told
        return;
    }
    const Held held(*this);
    const std::vector<Release> owed = owed_;
    BINDINGLIST addresses;
    for (const Release& one : owed) {
        addresses.push_back(one.address);
    }
    REQUESTLIST list;
    a_BuildRequestList(addresses, {}, this, list);
    auto item = list.begin();
    for (const Release& one : owed) {
        int value = one.value;
        if (times.IsClosed()) {
            return;
        }
        item->record.reserved = VALUE_OWED;
        if (a_SendToItem(*item++, COMMAND_SET, DATATYPE_INTEGER, &value) >= 0) {
            std::erase_if(owed_, [&](const Release& other) { return other.address == one.address; });
        }
    }
}

// Ways in and out

void CONTACTBUTTONPROPERTIES::Pressed() {
    if (toggle != 0 && IsOn()) {
        OpenSoon(false);
    } else {
        Close(onValue);
    }
}

void CONTACTBUTTONPROPERTIES::Released() {
    ShowHeldDown(false);
    if (toggle == 0) {
        OpenSoon(false);
    }
}

void CONTACTBUTTONPROPERTIES::CancelDrag() {
    TWOSTATEPROPERTIES::CancelDrag();
    if (toggle == 0 && times.IsClosed()) {
        OpenSoon(false);
    }
}

void CONTACTBUTTONPROPERTIES::LetGo(bool isClosing) {
    EndHold();
    if (times.IsClosed()) {
        OpenSoon(isClosing);
    }
}

void CONTACTBUTTONPROPERTIES::Destroying() {
    if (times.IsClosed()) {
        Open();
    } else {
        PayReleases();
    }
}

LRESULT CONTACTBUTTONPROPERTIES::OnTimer(WPARAM timer, LPARAM lParam) {
    const DWORD now = GetTickCount();
    if (times.IsDue(now)) {
        Open();
    }
    if (now - lastLook_ >= LOOK_PERIOD) {
        lastLook_ = now;
        if (times.IsClosed() && wasSeen_ && IsWindowVisible(window) == FALSE) {
            LetGo(false);
        }
        PayReleases();
    }
    return TWOSTATEPROPERTIES::OnTimer(timer, lParam);
}

DWORD CONTACTBUTTONPROPERTIES::DueIn(DWORD now) const noexcept {
    DWORD due = TWOSTATEPROPERTIES::DueIn(now);
    if (times.IsClosed() || !owed_.empty()) {
        const DWORD passed = now - lastLook_;
        due = std::min(due, passed >= LOOK_PERIOD ? 0 : LOOK_PERIOD - passed);
    }
    return std::min<DWORD>(due, times.DueIn(now).value_or(NO_TICK));
}

// What it has closed itself it holds for closed, whatever a poll says: that may be older.
void CONTACTBUTTONPROPERTIES::Poll() {
    int value = times.IsClosed() ? sent.value_or(onValue) : (IsOn() ? onValue : offValue);
    int result = Ask(requests, DATATYPE_INTEGER, &value);
    if (result <= REQUEST_DELIVERED) {
        const bool isOurs = times.IsClosed() && value == sent;
        const bool isClosed = !requests.empty() && (isOurs || (value == onValue && onValue != offValue));
        if (isClosed != isClosedElsewhere) {
            isClosedElsewhere = isClosed;
            Redraw();
        }
        if (!requests.empty() && !isClosed && (value != offValue || times.IsClosed())) {
            result = REQUEST_DISAGREE;
        }
    }
    ShowPollResult(result);
}

extern const ControlImplementation contactButtonControl =
    Implement<CONTACTBUTTONPROPERTIES>(ButtonProc, LAID_OUT,
                                       "A contact that is closed while it is held with the mouse, the space "
                                       "bar or Enter, and does not stay closed "
                                       "by accident.");
