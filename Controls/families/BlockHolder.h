#pragma once

#include "Controls/framework/Keywords.h"
#include "Panelhost/Root.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// A part of a block that travels alone.
template <class Block>
struct BlockPart {
    REQUESTLIST* asked; // for the part
    REQUESTLIST* told;  // when the part has changed
    int datatype;
    void* (*of)(Block&);
    void (*copy)(Block& to, const Block& from);
    // Whether the part was set as a whole or is what the bound devices hold. What a new control starts with
    // must reach no device.
    bool isKnown = false;
    // What the devices hold, where it has members of no known meaning: the type of another kind of device.
    // What the control held stays in their place, and is sent with the next edit of the part.
    std::optional<Block> odd = std::nullopt;

    bool IsOneNumber() const { return datatype == DATATYPE_FLOAT || datatype == DATATYPE_INTEGER; }
    void SetKnown(bool known) {
        isKnown = known;
        odd.reset();
    }
};

// Base of the controls that hold one block of devices: what becomes of it when it is set, polled and changed
// in part. Base is the property class below it. The first part is the one that functions and connections are
// bound to; its datatype is that of the whole block where the block comes from outside.
template <class Block, class Base>
class BLOCKHOLDER : public Base {
public:
    int ControlType() const override { return parts.front().datatype; }
    void BindingsChanged() override { parts.front().SetKnown(false); }

    void AskForBlock() {
        Block next = value;
        int worst = REQUEST_UNCHANGED;
        bool isNew = false;
        for (BlockPart<Block>& part : parts) {
            Block polled = next;
            int result = REQUEST_UNCHANGED;
            a_SendRequest(*part.asked, COMMAND_GET, part.datatype, part.of(polled), &result);
            if (result <= REQUEST_DELIVERED && !part.asked->empty()) {
                const std::optional<Block> before = part.odd;
                next = Learned(part, polled, next);
                isNew = isNew || part.odd != before;
            }
            worst = std::max({worst, result, part.odd ? REQUEST_DISAGREE : REQUEST_UNCHANGED});
        }
        if (isNew || next != value) {
            ShowBlock(next);
        }
        this->ShowPollResult(worst);
    }

    // What a block is to its control.
    virtual std::string Text(const Block& block) const = 0;
    virtual std::optional<Block> Read(std::string_view text, const Block& before) const = 0;
    virtual Block Different() const = 0; // from a new block in every member
    // A block as far as it is known, the rest being what is held.
    virtual Block Known(const Block& answered, const Block& held) const = 0;
    // Shows a known block; touches only what is new.
    virtual void Show(const Block& next) = 0;
    // Selects in all lists what a block says, which may be unknown.
    virtual void ShowLists(const Block& block) = 0;
    virtual bool IsSending() const { return this->parent != nullptr; } // now
    virtual void PartSent() {} // after each part, for those who are told of all of them

    // Before the block is changed in part: what is bound may hold another one. False when the control has
    // ended meanwhile: nobody holds the block that was edited any more.
    bool Learn() {
        if (this->parent == nullptr) {
            return true;
        }
        for (BlockPart<Block>& part : parts) {
            if (part.isKnown) {
                continue;
            }
            Block held = value;
            const bool isAnswered =
                !part.asked->empty() && AskForValue(*part.asked, part.datatype, part.of(held));
            if (this->parent == nullptr) {
                return false;
            }
            if (isAnswered) {
                Block next = Learned(part, held, value);
                for (const BlockPart<Block>& other : parts) { // of which a linked control tells as well
                    if (&other != &part && other.isKnown && !other.asked->empty()) {
                        other.copy(next, value);
                    }
                }
                ShowBlock(next);
            }
            part.isKnown = isAnswered || part.asked->empty();
        }
        return true;
    }

    // What is held once the devices of a part have answered.
    Block Learned(BlockPart<Block>& part, const Block& answered, const Block& held) const {
        const Block known = Known(answered, held);
        part.SetKnown(true);
        if (known != answered) {
            part.odd = answered;
        }
        return known;
    }

    // A list whose item is unknown shows none, so that whichever is chosen is a change.
    void ShowBlock(const Block& next) {
        Show(next);
        Block listed = next;
        for (const BlockPart<Block>& part : parts) {
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
        for (BlockPart<Block>& part : parts) {
            part.SetKnown(true);
        }
    }

    // Knows the parts that a text gives as a whole.
    void KnowGiven(std::string_view text) {
        const std::optional<Block> one = Read(text, Block{});
        const std::optional<Block> other = Read(text, Different());
        for (BlockPart<Block>& part : parts) {
            Block both = *one;
            part.copy(both, *other);
            part.isKnown = part.isKnown || both == *one;
        }
    }

    void Send(BlockPart<Block>& part) {
        if (!IsSending() || !(part.isKnown || part.IsOneNumber())) {
            return;
        }
        if (part.odd) {
            part.odd.reset();
            ShowBlock(value);
        }
        Block sent = value;
        a_SendRequest(*part.told, COMMAND_SET, part.datatype, part.of(sent), nullptr);
        PartSent();
    }

    void SendAll() {
        for (BlockPart<Block>& part : parts) {
            Send(part);
        }
        if (IsSending() && a_IsLoading(this)) { // to no device
            for (BlockPart<Block>& part : parts) {
                part.isKnown = part.isKnown && std::none_of(part.told->begin(), part.told->end(), IsOfDevice);
            }
        }
    }

    static bool IsOfDevice(const REQUESTITEM& item) { return item.target == nullptr; }

    // Takes a whole block from outside and, unless it is the one that is shown, passes it on.
    void Take(const Block& next) {
        if (next == value && !IsAnyOdd()) {
            return;
        }
        KnowAll();
        ShowBlock(next);
        if (this->parent != nullptr) {
            SendAll();
        } else { // a this->window that is no panel uses the control by itself
            Block sent = value;
            SendMessageA(GetParent(this->window), WM_USER, static_cast<WPARAM>(GetDlgCtrlID(this->window)),
                         reinterpret_cast<LPARAM>(&sent));
        }
    }

    // Takes what a text says of a block, the rest being what the bound devices hold. A part of which nobody
    // says what they hold is shown and not sent. 0 when the text says nothing.
    int LoadText(std::string_view text, bool isSentAlways) {
        if (!Read(text, value)) {
            return 0;
        }
        const bool wasKnown = AreAllKnown();
        if (!Learn()) {
            return 1;
        }
        const Block next = Read(text, value).value_or(value);
        if (!wasKnown && next == Block{}) {
            return 1; // saved before anything was known
        }
        if (this->parent == nullptr && !isSentAlways) {
            Take(next);
        } else if (isSentAlways || next != value || IsAnyOdd()) {
            KnowGiven(text);
            ShowBlock(next);
            SendAll();
        }
        return 1;
    }

    // The block as bytes or as text, for the keywords " " and "value". The former takes no text: it gets
    // what is meant for a keyword that the control does not have.
    int BlockKeyword(VALUERECORD& record) {
        const bool isText = record.datatype == DATATYPE_TEXT;
        if (record.command == COMMAND_GET) {
            return isText ? a_AnswerText(&record, Text(value).c_str())
                          : a_AnswerBytes(&record, ControlType(), &value, sizeof(Block));
        }
        if (isText) {
            const auto text = record.index != 0 ? TextToSet(&record) : std::nullopt;
            return text ? LoadText(*text, false) : 0;
        }
        Block next;
        if (record.command != COMMAND_SET || a_ReadBytes(&record, ControlType(), &next, sizeof next) == 0 ||
            Known(next, value) != next) {
            return 0;
        }
        Take(next);
        return 1;
    }

    Block value{};
    std::vector<BlockPart<Block>> parts;
};
