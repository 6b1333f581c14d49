#pragma once

#include "Controls/framework/Control.h"

#include <optional>
#include <string>

// The life of a field that is typed into: the system's edit control that a control stands on, or has inside.
// A text that somebody types or selects in is left alone until that is over. Enter, and leaving the field,
// take it; Escape puts back the value.
class EditField {
public:
    // What the field wants of its control.
    class Owner {
    public:
        virtual std::string TextOfValue() const = 0;
        // Makes what was typed the value. False, and nothing changed, when it cannot be read.
        virtual bool TakeTyped(const std::string& text) = 0;
        // Whether Enter leaves a text that was not taken in the field, for somebody to correct it.
        virtual bool KeepsRefused() const { return false; }
        // Whether it has several lines: then Enter begins one, and Ctrl+Enter takes what was typed.
        virtual bool HasLines() const { return false; }
        // Escape has put back the value.
        virtual void TypedDropped() {}
        // The field shows the value that it has taken, which can go to others now.
        virtual void TypedTaken() = 0;
        // Somebody outside has given the window a text. Whether the control takes it, in place of the window.
        virtual bool TextGiven(const std::string& text) = 0;
        // What the window does with a message by itself.
        virtual LRESULT FieldDoes(UINT message, WPARAM wParam, LPARAM lParam) = 0;

    protected:
        ~Owner() = default;
    };

    EditField(CONTROLPROPERTIES& control, const HWND& field, Owner& owner)
        : control_(control), field_(field), owner_(owner) {}

    // The window is there, with a title that nobody has typed.
    void Begin();
    std::string Text() const;
    // Somebody has typed into the field and not ended it yet.
    bool IsEdited() const;
    // Shows the text of the value, now or when nobody types or selects any more.
    void Show();

    // Has what was typed taken. Leaving the field puts back the value where it is not.
    void TakeTyped(bool isLeaving);
    // Puts the text of the value back in place of what was typed.
    void Restore();

    // The answer to a message that is the field's. Any other goes on to the window and then to Handled.
    std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Handled(UINT message);

private:
    bool WantsKey(const MSG* key) const;
    bool HandleKey(UINT message, WPARAM key);
    LRESULT Leave(WPARAM wParam, LPARAM lParam);
    void SelectAll() const;
    void SelectForNext() const;

    CONTROLPROPERTIES& control_; // has the focus while the field has it
    const HWND& field_;
    Owner& owner_;
    std::string displayed_;      // what the field was last set to
    bool isSettingText_ = false; // the control itself, not somebody outside
};
