#pragma once

#include "Controls/families/FacedControl.h"
#include "Controls/framework/Keywords.h"
#include "Controls/resources/resource.h"

#include <string>

// Base of the controls that hold one number over a range, which is sent to everything they are bound to.
class RANGEDPROPERTIES : public FACEDPROPERTIES {
public:
    RANGEDPROPERTIES(int lowest, int highest) : minimum(lowest), maximum(highest) {}
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    virtual void Send() = 0;
    virtual void Moved() { Redraw(); } // the value or the range is another one
    // A number as far as it is within the range.
    virtual float Limited(float number) const;
    // What becomes of a value that is loaded with its range.
    virtual float Loaded(float number) const { return Limited(number); }

    // Takes a value that is within the range already and, if it is a new one, shows and sends it. False when
    // nothing changed.
    bool TakeValue(float newValue);
    // "minimum,maximum,value"; what is set may end sooner, and sends the value. False when it is unreadable.
    std::string RangeText() const;
    bool SetRangeText(const std::string& text);
    // The same without sending.
    bool LoadRange(const std::string& text);
    // As anybody else would set the value: limited, shown and sent.
    template <class Value>
    void SetThroughMessage(int datatype, Value newValue) const {
        VALUERECORD record = VALUERECORD::Set(datatype, &newValue);
        SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    }

    // The value itself: what is set is limited, and whoever sets it as a float learns the limit.
    int ValueKeyword(VALUERECORD& record);
    // Answers a get of the value, unless the caller holds it already: an integer deliberately not when the
    // value has a fraction, a float when it is as good as the same.
    int AnswerValue(VALUERECORD& record) const;

    int minimum;
    int maximum;
    float value = 0;
    float resolution = 0; // step of the keys; 0: continuous, and the step keys do nothing
};

// "minimum,maximum,value" of such a control.
inline constexpr Keyword RANGE_KEYWORD =
    Property<&RANGEDPROPERTIES::RangeText, &RANGEDPROPERTIES::SetRangeText>("properties",
                                                                            KeywordKind::Numbers)
        .Saved();

// The fields of such a keyword in a dialog. The line that each sends ends with the number (from 0 on) that is
// given here.
template <int SentByMaximum, int SentByMinimum>
inline constexpr KEYWORDPART RANGE_PARTS[] = {{"Maximum Value", IDC_MAXIMUM, 1, SentByMaximum},
                                              {"Minimum Value", IDC_MINIMUM, 0, SentByMinimum}};

// A range of whole numbers by itself.
struct WholeRange {
    int minimum = 0;
    int maximum = 0;

    // "minimum,maximum", of which the maximum may be missing where it is set. False when it is unreadable.
    std::string Text() const;
    bool Load(const std::string& text);
};

// The keyword of a range that is a member. The control is drawn anew when it is set.
template <auto Member>
constexpr Keyword Range(const char* name) {
    return Row(name, KeywordKind::Numbers,
               [](VALUERECORD* record, HOSTINFO* object) {
                   auto& holder = HolderOf<Member>(object);
                   if (record->command == COMMAND_GET) {
                       return AnswerWith(record, (holder.*Member).Text());
                   }
                   const auto text = TextToSet(record);
                   if (!text || !(holder.*Member).Load(*text)) {
                       return 0;
                   }
                   holder.Redraw();
                   return 1;
               })
        .Saved();
}
