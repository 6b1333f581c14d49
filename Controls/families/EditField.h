#pragma once

#include "Controls/framework/Control.h"

#include <optional>
#include <string>

// The life of a field that is typed into: the window of a control that stands on the system's edit control.
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
        // The field shows the value that it has taken, which can go to others now.
        virtual void TypedTaken() = 0;
        // Somebody outside has given the window a text.
        virtual void TextGiven(const std::string& text) = 0;

    protected:
        ~Owner() = default;
    };

    EditField(CONTROLPROPERTIES& control, Owner& owner) : control_(control), owner_(owner) {}

    // The window is there, with a title that nobody has typed.
    void Begin();
    std::string Text() const;
    // Somebody has typed into the field and not ended it yet.
    bool IsEdited() const;
    // Shows the text of the value, now or when nobody types or selects any more.
    void Show();

    // The answer to a message that is the field's. Any other goes on to CommonProc and then to Handled.
    std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam);
    void Handled(UINT message);

private:
    bool WantsKey(const MSG* key) const;
    bool HandleKey(UINT message, WPARAM key);
    LRESULT Leave(WPARAM wParam, LPARAM lParam);
    void TakeTyped();
    void Restore();
    void SelectAll() const;

    CONTROLPROPERTIES& control_;
    Owner& owner_;
    std::string displayed_;      // what the field was last set to
    bool isSettingText_ = false; // the control itself, not somebody outside
};
