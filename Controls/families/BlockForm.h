#pragma once

#include "Controls/families/BlockHolder.h"
#include "Controls/families/FormPanel.h"
#include "Controls/resources/resource.h"
#include "base/Clipboard.h"
#include "logic/text/Numbers.h"

#include <cstdint>
#include <cstring>

// Base of the forms that hold one block: what their lists, fields and buttons do to it, and how it
// is copied and pasted.
template <class Block>
class BLOCKFORM : public BLOCKHOLDER<Block, FORMPROPERTIES> {
public:
    using Holder = BLOCKHOLDER<Block, FORMPROPERTIES>;
    using FORMPROPERTIES::Check;
    using FORMPROPERTIES::Select;
    using FORMPROPERTIES::ShowField;
    using FORMPROPERTIES::TrackMenu;
    using FORMPROPERTIES::Typed;
    using FORMPROPERTIES::window;
    using Holder::Learn;
    using Holder::parts;
    using Holder::Send;
    using Holder::value;

    void PollBlock() final { this->AskForBlock(); }
    void ShowValueAnew() override {
        for (const FormChild& row : this->Layout()) {
            if (row.part == FormPart::Field) {
                this->FollowField(row.id, ValueText(row.id, false));
            }
        }
    }

    // A list whose item is unknown shows none, so that whichever is chosen is a change.
    void ShowBlock(const Block& next) final {
        Show(next);
        Block listed = next;
        for (const BlockPart<Block>& part : parts) {
            if (part.odd) {
                part.copy(listed, *part.odd);
            }
        }
        ShowLists(listed);
    }

    // Takes a known block and shows it; touches only what is new.
    virtual void Show(const Block& next) = 0;
    // Selects in all lists what a block says, which may be unknown.
    virtual void ShowLists(const Block& block) = 0;

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
        Block next = value;
        Choose(next, listId, item);
        ShowBlock(next);
        Select(listId, item); // what was learned may have moved it
        SendEdited(listId);
    }

    void Toggled(int id, bool isDown) final {
        if (!Learn()) {
            return;
        }
        Block next = value;
        Bypass(next) = isDown ? 1 : 0;
        ShowBlock(next);
        Check(id, isDown);
        SendEdited(id);
    }

    // The value of a field as it is shown, or as it is shown after it was typed.
    virtual std::string ValueText(int fieldId, bool isTyped) const = 0;
    // Puts into the block what was typed, limited; null: what is held, limited.
    virtual void Enter(int fieldId, const std::string* typed) = 0;
    // Steps up, or down where negative; null: nothing was typed since the field was shown. Whether that is to
    // be shown and sent.
    virtual bool Step(int fieldId, int steps, const std::string* typed) = 0;
    virtual void Choose(Block& block, int listId, int item) const = 0;
    virtual std::int32_t& Bypass(Block& block) const = 0;
    virtual std::size_t PartOf(int /*id*/) const { return 0; } // that a child edits

    // Of one number nothing is unknown once it was edited.
    void SendEdited(int id) {
        BlockPart<Block>& part = parts[PartOf(id)];
        part.isKnown = part.isKnown || part.IsOneNumber();
        Send(part);
    }

    // The menu for the whole block or a piece of it, in a clipboard format of its own. What is pasted is set
    // as anybody else would set the value.
    template <class PieceOf>
    void CopyOrPaste(int menu, UINT format, std::size_t blockSize, POINT place, PieceOf pieceOf) {
        const int command = TrackMenu(menu, IsClipboardFormatAvailable(format) != 0, place);
        if (command == 0 || !Learn()) {
            return;
        }
        Block next = value;
        auto& piece = pieceOf(next);
        if (command == IDM_COPY_VALUE) {
            const Clipboard clipboard(window);
            if (clipboard.Empty()) {
                clipboard.Put(format, &piece, sizeof piece, blockSize);
            }
        } else if (PasteFromClipboard(piece, format)) {
            REQUESTITEM item;
            item.record.command = COMMAND_SET;
            item.record.datatype = this->ControlType();
            item.record.data = &next;
            SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&item));
        }
    }

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
