#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/framework/Control.h"
#include "logic/controls/ShownValue.h"

#include <optional>
#include <string>

// What the controls share that show a text or a number as text: datatype, format, alignment, font, colours,
// polling and the value. A new one shows the title it is created with.
class TEXTPROPERTIES : public CONTROLPROPERTIES {
public:
    TEXTPROPERTIES() { font.Load("ms sans serif,8"); }

    void SetDefaults() override;
    int ControlType() const override;
    void Poll() override;

    virtual std::string Title() const = 0; // that the window was created with
    virtual void TextChanged() = 0;        // what is shown is another text, unless it looks the same
    virtual void LookChanged() { Redraw(); }
    virtual void FontChanged();
    // Changes a value that is set by a record, before it is taken.
    virtual float Limited(float number) const { return number; }

    // Makes a text what is shown.
    void SetCaption(const std::string& text);
    // What is shown has changed by anything but a poll.
    void KeepCaption();
    // Sends the value, unless there is none yet, to everything the control is bound to.
    void Send();

    logic::ShownValue shown;
    std::string caption; // what was shown last while the control was bound to nothing; a panel file holds it
    logic::Alignment alignment = logic::Alignment::Left;
    FontProperty font;
    std::optional<COLORREF> textColor;       // none: what can be read on the ground
    std::optional<COLORREF> backgroundColor; // none: what the control makes of it

private:
    int PollText();
    int PollNumber();
    int PollInteger();
};

// Black or white, what can be read better on a ground of that colour.
COLORREF ReadableOn(COLORREF ground);

// Keywords of these controls.
int TextValueKeyword(VALUERECORD* record, HOSTINFO* object);
int TextCaptionKeyword(VALUERECORD* record, HOSTINFO* object);
int DatatypeKeyword(VALUERECORD* record, HOSTINFO* object);
int TextFormatKeyword(VALUERECORD* record, HOSTINFO* object);
int AlignmentKeyword(VALUERECORD* record, HOSTINFO* object);
int TextColourKeyword(VALUERECORD* record, HOSTINFO* object);
int GroundColourKeyword(VALUERECORD* record, HOSTINFO* object);
