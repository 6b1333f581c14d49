#pragma once

#include "Controls/families/EditorPanel.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
#include "base/Clipboard.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
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

// Base of the editor panels that hold one record: what becomes of it when it is set, edited, polled, copied
// and pasted. The first part is the one that functions and connections are bound to; its datatype is that of
// the whole record where the record comes from outside.
template <class Record>
class RECORDEDITOR : public EDITORPROPERTIES {
public:
    int ControlType() const override { return parts.front().datatype; }
    void BindingsChanged() override { parts.front().SetKnown(false); }

    void PollRecord() final {
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
        ShowPollResult(worst);
    }

    // What cannot be read is replaced by what is held, and so is a text that is still the one that was shown:
    // it has lost digits.
    void CommitField(int id, const std::string* typed) final {
        const bool isSent = typed == nullptr || logic::ParseFloat(*typed);
        if (isSent && !Learn()) {
            return;
        }
        if (isSent) {
            Enter(id, typed);
        }
        ShowField(id, ValueText(id, true));
        if (isSent) {
            SendEdited(id);
        }
    }

    void StepField(int id, int steps) final {
        const std::optional<std::string> typed = Typed(id);
        if (Learn() && Step(id, steps, typed ? &*typed : nullptr)) {
            ShowField(id, ValueText(id, false));
            SendEdited(id);
        }
    }

    void ItemSelected(int listId, int item) final {
        if (item < 0 || !Learn()) {
            return;
        }
        Record next = value;
        Choose(next, listId, item);
        ShowRecord(next);
        Select(listId, item); // what was learned may have moved it
        SendEdited(listId);
    }

    void Toggled(int id, bool isDown) final {
        if (!Learn()) {
            return;
        }
        Record next = value;
        Bypass(next) = isDown ? 1 : 0;
        ShowRecord(next);
        Check(id, isDown);
        SendEdited(id);
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
    // The value of a field as it is shown, or as it is shown after it was typed.
    virtual std::string ValueText(int fieldId, bool isTyped) const = 0;
    // Puts into the record what was typed, limited; null: what is held, limited.
    virtual void Enter(int fieldId, const std::string* typed) = 0;
    // Steps up, or down where negative; null: nothing was typed since the field was shown. Whether that is to
    // be shown and sent.
    virtual bool Step(int fieldId, int steps, const std::string* typed) = 0;
    virtual void Choose(Record& record, int listId, int item) const = 0;
    virtual std::int32_t& Bypass(Record& record) const = 0;
    virtual std::size_t PartOf(int /*id*/) const { return 0; }   // that a child edits
    virtual bool IsSending() const { return parent != nullptr; } // now
    virtual void PartSent() {} // after each part, for those who are told of all of them

    // Before the record is changed in part: what is bound may hold another one. False when the control has
    // ended meanwhile: nobody holds the record that was edited any more.
    bool Learn() {
        if (parent == nullptr) {
            return true;
        }
        for (RecordPart<Record>& part : parts) {
            if (part.isKnown) {
                continue;
            }
            Record held = value;
            const bool isAnswered =
                !part.asked->empty() && AskForValue(*part.asked, part.datatype, part.of(held));
            if (parent == nullptr) {
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

    // Of one number nothing is unknown once it was edited.
    void SendEdited(int id) {
        RecordPart<Record>& part = parts[PartOf(id)];
        part.isKnown = part.isKnown || part.IsOneNumber();
        Send(part);
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
        if (parent != nullptr) {
            SendAll();
        } else { // a window that is no panel uses the control by itself
            Record sent = value;
            SendMessageA(GetParent(window), WM_USER, static_cast<WPARAM>(GetDlgCtrlID(window)),
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
        if (parent == nullptr && !isSentAlways) {
            Take(next);
        } else if (isSentAlways || next != value || IsAnyOdd()) {
            KnowGiven(text);
            ShowRecord(next);
            SendAll();
        }
        return 1;
    }

    // The menu for the whole record or a piece of it, in a clipboard format of its own. What is pasted is set
    // as anybody else would set the value.
    template <class PieceOf>
    void CopyOrPaste(int menu, UINT format, std::size_t blockSize, POINT place, PieceOf pieceOf) {
        const int command = TrackMenu(menu, IsClipboardFormatAvailable(format) != 0, place);
        if (command == 0 || !Learn()) {
            return;
        }
        Record next = value;
        auto& piece = pieceOf(next);
        if (command == IDM_COPY_VALUE) {
            const Clipboard clipboard(window);
            if (clipboard.Empty()) {
                clipboard.Put(format, &piece, sizeof piece, blockSize);
            }
        } else if (PasteFromClipboard(piece, format)) {
            REQUESTITEM item;
            item.record.command = COMMAND_SET;
            item.record.datatype = ControlType();
            item.record.data = &next;
            SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&item));
        }
    }

    Record value{};
    std::vector<RecordPart<Record>> parts;

private:
    template <class Piece>
    bool PasteFromClipboard(Piece& piece, UINT format) const {
        const auto bytes = Clipboard(window).Get(format);
        if (!bytes || bytes->size() < sizeof piece) {
            return false;
        }
        std::memcpy(&piece, bytes->data(), sizeof piece);
        return true;
    }
};

// The record as bytes or as text, for the keywords " " and "value". The former takes no text: it gets what is
// meant for a keyword that the control does not have.
template <class Record>
int RecordKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& editor = *static_cast<RECORDEDITOR<Record>*>(object);
    const bool isText = record->datatype == DATATYPE_TEXT;
    if (record->command == COMMAND_GET) {
        return isText ? a_AnswerText(record, editor.Text(editor.value).c_str())
                      : a_AnswerBytes(record, editor.ControlType(), &editor.value, sizeof(Record));
    }
    if (isText) {
        const auto text = record->index != 0 ? TextToSet(record) : std::nullopt;
        return text ? editor.LoadText(*text, false) : 0;
    }
    Record next;
    if (record->command != COMMAND_SET ||
        a_ReadBytes(record, editor.ControlType(), &next, sizeof next) == 0 ||
        editor.Known(next, editor.value) != next) {
        return 0;
    }
    editor.Take(next);
    return 1;
}
