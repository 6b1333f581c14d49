#pragma once

#include "Controls/families/EditField.h"
#include "Controls/families/FieldMargin.h"
#include "Controls/families/SystemChild.h"
#include "Controls/families/TextLook.h"
#include "logic/text/Items.h"

#include <string>
#include <vector>

// The life of a drop-down list that a value is chosen from: the system's combo box that a control stands on,
// or has inside. A choice is made by a click or by Enter, or by leaving the closed list when the keys or the
// wheel have walked through it; Escape, and leaving the list while it is dropped down, put back the value.
// Where it may be typed into, that is a field as any other. A value that the list does not have is shown as
// it is, with the not-equal sign where nobody may type one.
class ListField : private EditField::Owner {
public:
    // What the list wants of its control.
    class Owner {
    public:
        virtual std::string HeldValue() const = 0;
        virtual void TakeChosen(const std::string& value) = 0; // makes it the value
        virtual void SendChosen() = 0;                         // the list shows it now
        // What the window of the list does with a message by itself.
        virtual LRESULT ListDoes(UINT message, WPARAM wParam, LPARAM lParam) = 0;
        // The same of the field inside.
        virtual LRESULT TypingDoes(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    protected:
        ~Owner() = default;
    };

    ListField(TEXTLOOKPROPERTIES& control, const HWND& list, Owner& owner)
        : control_(control), list_(list), owner_(owner) {}

    // The window is there. The field to be typed into inside it, or null; the control subclasses it.
    HWND Begin();
    bool IsEditable() const { return edit_ != nullptr; }
    // Of how many lines at most the list drops down.
    void SetLines(int lines) {
        lines_ = lines;
        isSized_ = false;
    }
    // Fills the list, sorted by caption where it is to be.
    void Fill(const logic::Items& items, bool isSorted);
    // Shows the value, now or when nobody is about to choose or to type any more.
    void Show();
    std::string ShownText() const;
    // Somebody is choosing, or typing.
    bool IsBusy() const;
    bool IsDropped() const { return System(CB_GETDROPPEDSTATE) != 0; }
    // The mark or the colours are other ones.
    void LookChanged();

    // On a panel of the style "dark" the answer to a message of painting.
    std::optional<LRESULT> PaintDark(UINT message, WPARAM wParam) const;
    // The answer to a message that is the list's. Any other goes on to the window and then to Handled.
    std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Handled(UINT message, WPARAM wParam, LPARAM lParam);
    // All that there is to a message of the field inside.
    LRESULT HandleTyping(const ChildMessage& of);
    // WM_COMMAND of the control. Whether it was the list's.
    bool Commanded(WPARAM wParam, LPARAM isChoice);
    // The answer to the question for its colours, asked of the parent of the list.
    HBRUSH Colours(HDC dc);

private:
    std::string TextOfValue() const override { return ShownText(); }
    bool TakeTyped(const std::string& text) override;
    void TypedTaken() override { owner_.SendChosen(); }
    bool TextGiven(const std::string&) override { return false; }
    LRESULT FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) override {
        return owner_.TypingDoes(message, wParam, lParam);
    }

    LRESULT System(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    int PlaceOf(const std::string& value) const;
    std::string ValueOfCaption(const std::string& text) const;
    std::string FaceText() const;
    bool IsMarked() const;
    bool IsWalked() const;
    void Watch(bool isChoice);
    void Choose();
    void PutBack();
    void Unselect();
    void SizeList();
    bool HandleKey(WPARAM key);
    COLORREF Ground() const { return control_.FieldGround(); }
    COLORREF TextColour() const { return control_.FieldInk(); }
    std::string ClosedText() const;
    void PaintFace(HDC dc) const;

    TEXTLOOKPROPERTIES& control_;
    const HWND& list_;
    Owner& owner_;
    HWND edit_ = nullptr;
    EditField field_{control_, edit_, *this};
    FieldMargin margin_{edit_};
    FieldColours colours_;
    logic::Items items_;
    std::vector<std::size_t> order_; // the item of each line
    int place_ = CB_ERR;             // the line of the value
    int lines_ = 12;
    bool wasDropped_ = false;
    bool isDeciding_ = false; // a choice waits to be taken
    bool isSized_ = false;    // the list is that long
};
