#pragma once

#include "Controls/families/FacedControl.h"
#include "Controls/resources/resource.h"

#include <string>

// The two buttons of a dialog for the keyword `relative`.
inline constexpr KEYWORDOPTION RELATIVE_OPTIONS[] = {{"0", IDC_ABSOLUTE}, {"1", IDC_RELATIVE}};

// Base of the controls that hold one number over a range, which is sent to everything they are bound to.
class RANGEDPROPERTIES : public FACEDPROPERTIES {
public:
    RANGEDPROPERTIES(int lowest, int highest) : minimum(lowest), maximum(highest) {}
    bool OffersApply() const override { return true; }
    void Apply() override { Send(); }

    virtual void Send() = 0;
    virtual void Moved() { Redraw(); } // the value or the range is another one
    // What becomes of a value that is loaded with its range.
    virtual float Loaded(float number) const { return number; }

    // Takes a value that is within the range already and, if it is a new one, shows and sends it. False when
    // nothing changed.
    bool TakeValue(float newValue);
    // "minimum,maximum,value"; what is set may end sooner, and sends the value. False when it is unreadable.
    std::string RangeText() const;
    bool SetRangeText(const std::string& text);
    // As anybody else would set the value: limited, shown and sent.
    template <class Value>
    void SetThroughMessage(int datatype, Value newValue) const {
        VALUERECORD record = VALUERECORD::Set(datatype, &newValue);
        SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    }

    // Answers a get of the value, unless the caller holds it already: an integer deliberately not when the
    // value has a fraction, a float when it is as good as the same.
    int AnswerValue(VALUERECORD& record) const;

    int minimum;
    int maximum;
    float value = 0;
    float resolution = 0; // step of the keys; 0: continuous, and the step keys do nothing
};
