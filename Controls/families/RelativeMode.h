#pragma once

#include "Controls/OSMIRControlLib.h"
#include "Controls/framework/Keywords.h"

#include <exception>
#include <string>
#include <vector>

// Relative mode: one control moves several connected controls, each with its own offset from the control's
// value. The offsets stand in the order of the request list, one for each item.
struct RelativeMode {
    int relative = 0; // non-zero: on
    std::vector<float> offsets;

    // Asks every connected control for its value and keeps the distance from the given one; 0 for an item
    // without a control. Offsets that were loaded stay as they are while further lines of a panel file are
    // loaded: the connections that they belong to come last.
    void Rebuild(const CONTROLPROPERTIES& control, float value);
    // The offsets, joined by ",". What is set replaces them; false when it is unreadable or when there would
    // be too many of them.
    std::string Text() const;
    bool Load(const CONTROLPROPERTIES& control, const std::string& text);
    // The same with a "," behind each; nothing, and nothing to load, while it is off.
    std::string Copy() const;
    bool LoadCopy(const CONTROLPROPERTIES& control, const std::string& text) {
        return relative == 0 || Load(control, text);
    }

private:
    bool areLoaded_ = false; // the offsets
};

// Keywords of a member that is the relative mode of its control.

template <auto Mode>
constexpr Keyword Relative(const char* name) {
    return Row(name, KeywordKind::Integer,
               [](VALUERECORD* record, HOSTINFO* object) {
                   auto& control = HolderOf<Mode>(object);
                   return RelativeModeKeyword(record, control, (control.*Mode).relative);
               })
        .Saved()
        .Options(RELATIVE_OPTIONS);
}

// Its offsets, and their copy.
template <auto Mode, auto Get = &RelativeMode::Text, auto Load = &RelativeMode::Load>
constexpr Keyword Offsets(const char* name) {
    return Row(name, KeywordKind::Numbers,
               [](VALUERECORD* record, HOSTINFO* object) {
                   auto& control = HolderOf<Mode>(object);
                   RelativeMode& mode = control.*Mode;
                   if (record->command == COMMAND_GET) {
                       return AnswerWith(record, (mode.*Get)());
                   }
                   const auto text = TextToSet(record);
                   return text && (mode.*Load)(control, *text) ? 1 : 0;
               })
        .Saved();
}
template <auto Mode>
constexpr Keyword OffsetsCopy(const char* name) {
    return Offsets<Mode, &RelativeMode::Copy, &RelativeMode::LoadCopy>(name);
}

// Sends a request as the mode says: absolute to the whole list, relative to each connected control with its
// offset added to the current value, as an integer, a float or a text; of another datatype nothing is sent.
// value is the address of the value. In relative mode the result of a get is REQUEST_DISAGREE when anything
// answers with another value or cannot be reached, and 1 is returned; else what a_SendRequest returns.
int SendByMode(const RelativeMode& mode, CONTROLPROPERTIES& control, float current, int command, int datatype,
               long value, int* result);

// The exported request helper of a class, for any caller. The object stays until it returns, whatever is
// sent.
template <class Properties>
int RequestBy(HOSTINFO* object, int command, int datatype, long value, int* result) noexcept {
    Properties* control = LivingObject<Properties>(object);
    if (control == nullptr || value == 0) {
        return 0;
    }
    try {
        const Held held(*control);
        return l_SendRequest(control, command, datatype, value, result);
    } catch (const std::exception&) {
        return 0;
    }
}
