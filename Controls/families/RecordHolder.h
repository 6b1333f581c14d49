#pragma once

#include "Controls/framework/Keywords.h"
#include "Panelhost/Root.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A part of a record that travels alone.
template <class Record>
struct RecordPart {
    REQUESTLIST* asked; // for the part
    REQUESTLIST* told;  // when the part has changed
    int datatype;
    void* (*of)(Record&);
    void (*copy)(Record& to, const Record& from);
    // Whether the part was set as a whole or is what the bound devices hold. What a new control starts with
    // must reach no device.
    bool isKnown = false;
    // What the devices hold, where it has members of no known meaning: the type of another kind of device.
    // What the control held stays in their place, and is sent with the next edit of the part.
    std::optional<Record> odd = std::nullopt;

    bool IsOneNumber() const { return datatype == DATATYPE_FLOAT || datatype == DATATYPE_INTEGER; }
    void SetKnown(bool known) {
        isKnown = known;
        odd.reset();
    }
};

// Base of the controls that hold one record of devices: what becomes of it when it is set, polled and changed
// in part. Base is the property class below it. The first part is the one that functions and connections are
// bound to; its datatype is that of the whole record where the record comes from outside.
template <class Record, class Base>
class RECORDHOLDER : public Base {
public:
    int ControlType() const override { return parts.front().datatype; }
    void BindingsChanged() override { parts.front().SetKnown(false); }

    void AskForRecord() {
        Record next = value;
        int worst = REQUEST_UNCHANGED;
        bool isNew = false;
        for (RecordPart<Record>& part : parts) {
            Record polled = next;
            int result = REQUEST_UNCHANGED;
            a_SendRequest(*part.asked, COMMAND_GET, part.datatype, part.of(polled), &result);
            if (result <= REQUEST_DELIVERED && !part.asked->empty()) {
                const std::optional<Record> before = part.odd;
                next = Learned(part, polled, next);
                isNew = isNew || part.odd != before;
            }
            worst = std::max({worst, result, part.odd ? REQUEST_DISAGREE : REQUEST_UNCHANGED});
        }
        if (isNew || next != value) {
            ShowRecord(next);
        }
        this->ShowPollResult(worst);
    }

    // What a record is to its control.
    virtual std::string Text(const Record& record) const = 0;
    virtual std::optional<Record> Read(std::string_view text, const Record& before) const = 0;
    virtual Record Different() const = 0; // from a new record in every member
    // A record as far as it is known, the rest being what is held.
    virtual Record Known(const Record& answered, const Record& held) const = 0;
    // Shows a known record; touches only what is new.
    virtual void Show(const Record& next) = 0;
    // Selects in all lists what a record says, which may be unknown.
    virtual void ShowLists(const Record& record) = 0;
    virtual bool IsSending() const { return this->parent != nullptr; } // now
    virtual void PartSent() {} // after each part, for those who are told of all of them

    // Before the record is changed in part: what is bound may hold another one. False when the control has
    // ended meanwhile: nobody holds the record that was edited any more.
    bool Learn() {
        if (this->parent == nullptr) {
            return true;
        }
        for (RecordPart<Record>& part : parts) {
            if (part.isKnown) {
                continue;
            }
            Record held = value;
            const bool isAnswered =
                !part.asked->empty() && AskForValue(*part.asked, part.datatype, part.of(held));
            if (this->parent == nullptr) {
                return false;
            }
            if (isAnswered) {
                Record next = Learned(part, held, value);
                for (const RecordPart<Record>& other : parts) { // of which a linked control tells as well
                    if (&other != &part && other.isKnown && !other.asked->empty()) {
                        other.copy(next, value);
                    }
                }
                ShowRecord(next);
            }
            part.isKnown = isAnswered || part.asked->empty();
        }
        return true;
    }

    // What is held once the devices of a part have answered.
    Record Learned(RecordPart<Record>& part, const Record& answered, const Record& held) const {
        const Record known = Known(answered, held);
        part.SetKnown(true);
        if (known != answered) {
            part.odd = answered;
        }
        return known;
    }

    // A list whose item is unknown shows none, so that whichever is chosen is a change.
    void ShowRecord(const Record& next) {
        Show(next);
        Record listed = next;
        for (const RecordPart<Record>& part : parts) {
            if (part.odd) {
                part.copy(listed, *part.odd);
            }
        }
        ShowLists(listed);
    }

    bool AreAllKnown() const {
        return std::all_of(parts.begin(), parts.end(), [](const auto& part) { return part.isKnown; });
    }

    bool IsAnyOdd() const {
        return std::any_of(parts.begin(), parts.end(), [](const auto& part) { return part.odd.has_value(); });
    }

    void KnowAll() {
        for (RecordPart<Record>& part : parts) {
            part.SetKnown(true);
        }
    }

    // Knows the parts that a text gives as a whole.
    void KnowGiven(std::string_view text) {
        const std::optional<Record> one = Read(text, Record{});
        const std::optional<Record> other = Read(text, Different());
        for (RecordPart<Record>& part : parts) {
            Record both = *one;
            part.copy(both, *other);
            part.isKnown = part.isKnown || both == *one;
        }
    }

    void Send(RecordPart<Record>& part) {
        if (!IsSending() || !(part.isKnown || part.IsOneNumber())) {
            return;
        }
        if (part.odd) {
            part.odd.reset();
            ShowRecord(value);
        }
        Record sent = value;
        a_SendRequest(*part.told, COMMAND_SET, part.datatype, part.of(sent), nullptr);
        PartSent();
    }

    void SendAll() {
        for (RecordPart<Record>& part : parts) {
            Send(part);
        }
        if (IsSending() && a_IsLoading(this)) { // to no device
            for (RecordPart<Record>& part : parts) {
                part.isKnown = part.isKnown && std::none_of(part.told->begin(), part.told->end(), IsOfDevice);
            }
        }
    }

    static bool IsOfDevice(const REQUESTITEM& item) { return item.target == nullptr; }

    // Takes a whole record from outside and, unless it is the one that is shown, passes it on.
    void Take(const Record& next) {
        if (next == value && !IsAnyOdd()) {
            return;
        }
        KnowAll();
        ShowRecord(next);
        if (this->parent != nullptr) {
            SendAll();
        } else { // a this->window that is no panel uses the control by itself
            Record sent = value;
            SendMessageA(GetParent(this->window), WM_USER, static_cast<WPARAM>(GetDlgCtrlID(this->window)),
                         reinterpret_cast<LPARAM>(&sent));
        }
    }

    // Takes what a text says of a record, the rest being what the bound devices hold. A part of which nobody
    // says what they hold is shown and not sent. 0 when the text says nothing.
    int LoadText(std::string_view text, bool isSentAlways) {
        if (!Read(text, value)) {
            return 0;
        }
        const bool wasKnown = AreAllKnown();
        if (!Learn()) {
            return 1;
        }
        const Record next = Read(text, value).value_or(value);
        if (!wasKnown && next == Record{}) {
            return 1; // saved before anything was known
        }
        if (this->parent == nullptr && !isSentAlways) {
            Take(next);
        } else if (isSentAlways || next != value || IsAnyOdd()) {
            KnowGiven(text);
            ShowRecord(next);
            SendAll();
        }
        return 1;
    }

    // The record as bytes or as text, for the keywords " " and "value". The former takes no text: it gets
    // what is meant for a keyword that the control does not have.
    int RecordKeyword(VALUERECORD& record) {
        const bool isText = record.datatype == DATATYPE_TEXT;
        if (record.command == COMMAND_GET) {
            return isText ? a_AnswerText(&record, Text(value).c_str())
                          : a_AnswerBytes(&record, ControlType(), &value, sizeof(Record));
        }
        if (isText) {
            const auto text = record.index != 0 ? TextToSet(&record) : std::nullopt;
            return text ? LoadText(*text, false) : 0;
        }
        Record next;
        if (record.command != COMMAND_SET || a_ReadBytes(&record, ControlType(), &next, sizeof next) == 0 ||
            Known(next, value) != next) {
            return 0;
        }
        Take(next);
        return 1;
    }

    Record value{};
    std::vector<RecordPart<Record>> parts;
};
