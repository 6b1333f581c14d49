#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/drawing/TextColours.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"
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

    // Makes a text what is shown. True.
    bool SetCaption(const std::string& text);
    // What is shown has changed by anything but a poll.
    void KeepCaption();
    // Sends the value, unless there is none yet, to everything the control is bound to.
    void Send();

    int ValueKeyword(VALUERECORD& record);
    std::string Caption() const { return caption; }
    int ValueType() const { return static_cast<int>(shown.Type()); }
    bool SetValueType(int type);
    std::string Format() const { return shown.Format(); }
    bool SetFormat(const std::string& format);

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
    std::optional<bool> TakeRecord(const VALUERECORD& record);
};

// Keywords of these controls. Those without a sentence have one of each control.
inline constexpr Keyword TEXT_VALUE_KEYWORD =
    Handled<&TEXTPROPERTIES::ValueKeyword>("value", KeywordKind::Text);
inline constexpr Keyword ALIGNMENT_KEYWORD =
    Words<"left,center,right", &TEXTPROPERTIES::alignment, &TEXTPROPERTIES::LookChanged>("alignment")
        .Saved()
        .Label("Alignment")
        .Items(IDC_ALIGNMENT)
        .Says("`left`, `center` or `right`.");
inline constexpr Keyword GROUND_COLOUR_KEYWORD =
    OptionalColour<&TEXTPROPERTIES::backgroundColor>("backgroundcolor")
        .Saved()
        .Label("Background")
        .Items(IDC_BACKGROUND, IDC_CHOOSE_BACKGROUND);
inline constexpr Keyword CAPTION_KEYWORD =
    Property<&TEXTPROPERTIES::Caption, &TEXTPROPERTIES::SetCaption>("caption").Saved().Label("Caption").Items(
        IDC_CAPTION);
inline constexpr Keyword DATATYPE_KEYWORD =
    WordsProperty<"string,f,d", &TEXTPROPERTIES::ValueType, &TEXTPROPERTIES::SetValueType>("datatype")
        .Saved()
        .Label("Datatype")
        .Items(IDC_DATATYPE)
        .Says("Type of the value: `string` a text, `f` a number, `d` a whole number, to which others are "
              "rounded.");
inline constexpr Keyword TEXT_FORMAT_KEYWORD =
    Property<&TEXTPROPERTIES::Format, &TEXTPROPERTIES::SetFormat>("fmt")
        .Saved()
        .Label("Number format")
        .Items(IDC_FORMAT);
inline constexpr Keyword TEXT_FONT_KEYWORD = FontOf<&TEXTPROPERTIES::font>("font")
                                                 .Saved()
                                                 .Label("Font")
                                                 .Items(IDC_FONT, IDC_CHOOSE_FONT)
                                                 .Says("Font: face, size in points, `bold` where it is.");
inline constexpr Keyword TEXT_INTERVAL_KEYWORD =
    INTERVAL_KEYWORD.Label("Polling interval in ms").Items(IDC_INTERVAL);
inline constexpr Keyword TEXT_COLOUR_KEYWORD =
    OptionalColour<&TEXTPROPERTIES::textColor>("textcolor")
        .Saved()
        .Label("Text colour")
        .Items(IDC_TEXT_COLOUR, IDC_CHOOSE_TEXT_COLOUR)
        .Says("Colour of the text, `0x00bbggrr`; empty for black or white, whichever can be read.");
