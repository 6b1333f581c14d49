#pragma once

#include "Controls/families/TextLook.h"
#include "logic/controls/ShownValue.h"

#include <optional>
#include <string>

// What the controls share that show a text or a number as text: datatype, format, look, polling and the
// value. A new one shows the title it is created with.
class TEXTPROPERTIES : public TEXTLOOKPROPERTIES {
public:
    void SetDefaults() override;
    int ControlType() const override;
    void Poll() override;
    void ShowValueAnew() override { TextChanged(); }

    virtual std::string Title() const = 0; // that the window was created with
    virtual void TextChanged() = 0;        // what is shown is another text, unless it looks the same
    // Changes a value that is set by a record, before it is taken.
    virtual float Limited(float number) const { return number; }

    // What stands in the control.
    std::string ShownText() const { return hasNoValue ? NO_VALUE : shown.Text(); }
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

private:
    int PollText();
    int PollNumber();
    int PollInteger();
    std::optional<bool> TakeRecord(const VALUERECORD& record);
};

// Keywords of these controls. Those without a sentence have one of each control.
inline constexpr Keyword TEXT_VALUE_KEYWORD =
    Handled<&TEXTPROPERTIES::ValueKeyword>("value", KeywordKind::Text);
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
