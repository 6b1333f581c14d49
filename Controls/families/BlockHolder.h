#pragma once

#include "Controls/families/HeldBlock.h"
#include "Controls/framework/Keywords.h"
#include "Panelhost/Root.h"

#include <optional>
#include <string>
#include <string_view>

// Base of the controls that hold one block of devices: what becomes of it when it is set as a whole, as bytes
// or as text. Base is the property class below it. The first part is the one that functions and connections
// are bound to; its datatype is that of the whole block where the block comes from outside.
template <class Block, class Base>
class BLOCKHOLDER : public Base, public HeldBlock<Block> {
public:
    using Holding = HeldBlock<Block>;
    using Holding::AreAllKnown;
    using Holding::IsAnyOdd;
    using Holding::KnowAll;
    using Holding::Learn;
    using Holding::parts;
    using Holding::SendAll;
    using Holding::ShowBlock;
    using Holding::value;

    int ControlType() const override { return parts.front().datatype; }
    int ValueDatatype() const override { return parts.front().datatype; }
    void BindingsChanged() override {
        Base::BindingsChanged();
        parts.front().SetKnown(false);
    }
    CONTROLPROPERTIES& Owner() final { return *this; }

    void AskForBlock() { this->ShowPollResult(Holding::Ask()); }

    // What a block is to its control.
    virtual std::string Text(const Block& block) const = 0;
    virtual std::optional<Block> Read(std::string_view text, const Block& before) const = 0;
    virtual Block Different() const = 0; // from a new block in every member

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

    // Takes a whole block from outside and, unless it is the one that is shown, passes it on.
    void Take(const Block& next) {
        if (next == value && !IsAnyOdd()) {
            return;
        }
        KnowAll();
        ShowBlock(next);
        if (this->parent != nullptr) {
            SendAll();
        } else { // a window that is no panel uses the control by itself
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
                          : a_AnswerBytes(&record, parts.front().datatype, &value, sizeof(Block));
        }
        if (isText) {
            const auto text = record.index != 0 ? TextToSet(&record) : std::nullopt;
            return text ? LoadText(*text, false) : 0;
        }
        Block next;
        if (record.command != COMMAND_SET ||
            a_ReadBytes(&record, parts.front().datatype, &next, sizeof next) == 0 ||
            KnownOf(next, value) != next) {
            return 0;
        }
        Take(next);
        return 1;
    }
};
