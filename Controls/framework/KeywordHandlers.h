#pragma once

#include "Controls/drawing/BitmapProperty.h"
#include "Controls/drawing/FontProperty.h"
#include "Controls/framework/Control.h"
#include "logic/text/Numbers.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

// The text of a set record; nothing when it is none or cannot be read.
std::optional<std::string> TextToSet(const VALUERECORD* record);

// Typed handlers for keyword tables: a plain member needs no handler of its own.

template <class Member>
struct MemberClass;
template <class Class, class Type>
struct MemberClass<Type Class::*> {
    using type = Class;
};

// The object that holds the member.
template <auto Member>
auto& HolderOf(HOSTINFO* object) {
    return *static_cast<typename MemberClass<decltype(Member)>::type*>(object);
}

// A 32-bit integer. A value outside the bounds is refused.
template <auto Member, int Minimum = std::numeric_limits<int>::min(),
          int Maximum = std::numeric_limits<int>::max()>
int IntegerKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& member = HolderOf<Member>(object).*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, member);
    }
    int value = 0;
    if (record->command != COMMAND_SET || a_ReadInteger(record, &value) == 0 || value < Minimum ||
        value > Maximum) {
        return 0;
    }
    member = value;
    return 1;
}

// A finite 32-bit float.
template <auto Member>
int FloatKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& member = HolderOf<Member>(object).*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerFloat(record, member);
    }
    return record->command == COMMAND_SET ? a_ReadFloat(record, &member) : 0;
}

// Whether it is a printf format with one float conversion, no longer than files may hold, or empty for none.
bool MayBeFormat(const std::string& text);

// An image file; empty for none. BitmapChanged of the holder gives the control its size.
template <auto Member>
int BitmapKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    BitmapProperty& member = holder.*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, member.Name().c_str());
    }
    std::string name;
    if (record->command != COMMAND_SET || a_ReadText(record, &name) == 0) {
        return 0;
    }
    Art wanted;
    if constexpr (requires { holder.WantedArt(); }) {
        wanted = holder.WantedArt();
    }
    if (!member.Load(name, wanted)) {
        return 0;
    }
    holder.BitmapChanged();
    return 1;
}

// A font "face,points" or "face,points,bold". FontChanged of the holder follows.
template <auto Member>
int FontKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    FontProperty& member = holder.*Member;
    if (record->command == COMMAND_GET) {
        return member.Get() != nullptr ? a_AnswerText(record, member.Text().c_str()) : 0;
    }
    const auto text = TextToSet(record);
    if (!text || !member.Load(*text)) {
        return 0;
    }
    holder.FontChanged();
    return 1;
}

constexpr COLORREF HIGHEST_COLOUR = 0xFFFFFF;

// A colour as "0x00bbggrr"; read with or without 0x. What is no colour of three bytes is nothing.
std::string ColourText(COLORREF colour);
std::optional<COLORREF> ParseColour(std::string_view text);

// A COLORREF.
template <auto Member>
int ColourKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    COLORREF& member = holder.*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, ColourText(member).c_str());
    }
    const auto text = TextToSet(record);
    const auto colour = text ? ParseColour(*text) : std::nullopt;
    if (!colour) {
        return 0;
    }
    member = *colour;
    holder.Redraw();
    return 1;
}

// A colour in a std::optional; empty for none. LookChanged of the holder follows.
template <auto Member>
int OptionalColourKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    std::optional<COLORREF>& member = holder.*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, member ? ColourText(*member).c_str() : "");
    }
    const auto text = TextToSet(record);
    const auto colour = text ? ParseColour(*text) : std::nullopt;
    if (!text || (!text->empty() && !colour)) {
        return 0;
    }
    member = colour;
    holder.LookChanged();
    return 1;
}

// A text in a std::string. One that is longer than the bound is refused.
template <auto Member, std::size_t MaximumLength = TEXT_SIZE - 1>
int TextKeyword(VALUERECORD* record, HOSTINFO* object) {
    std::string& member = HolderOf<Member>(object).*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, member.c_str());
    }
    auto text = TextToSet(record);
    if (!text || text->size() > MaximumLength) {
        return 0;
    }
    member = std::move(*text);
    return 1;
}

// A handler for records of text alone; any other datatype is refused.
template <KEYWORDHANDLER Handler>
int TextOnly(VALUERECORD* record, HOSTINFO* object) {
    return record->datatype == DATATYPE_TEXT ? Handler(record, object) : 0;
}

// A handler that calls a member function of the holder after each value that was set.
template <KEYWORDHANDLER Handler, auto Changed>
int Notifying(VALUERECORD* record, HOSTINFO* object) {
    const int result = Handler(record, object);
    if (record->command == COMMAND_SET && result != 0) {
        (HolderOf<Changed>(object).*Changed)();
    }
    return result;
}

// The same, or the handler alone where there is no such function.
template <KEYWORDHANDLER Handler, auto Changed>
constexpr KEYWORDHANDLER NotifyingIf() {
    if constexpr (std::is_null_pointer_v<decltype(Changed)>) {
        return Handler;
    } else {
        return Notifying<Handler, Changed>;
    }
}

inline int AnswerWith(VALUERECORD* record, int value) {
    return a_AnswerInteger(record, value);
}
inline int AnswerWith(VALUERECORD* record, float value) {
    return a_AnswerFloat(record, value);
}
inline int AnswerWith(VALUERECORD* record, const std::string& value) {
    return a_AnswerText(record, value.c_str());
}
inline int ReadValue(const VALUERECORD* record, int* value) {
    return a_ReadInteger(record, value);
}
inline int ReadValue(const VALUERECORD* record, float* value) {
    return a_ReadFloat(record, value);
}
inline int ReadValue(const VALUERECORD* record, std::string* value) {
    return a_ReadText(record, value);
}

// A value that two member functions read and set; the latter says whether it took it. Without it the value
// can only be read.
template <auto Get, auto Set, class Value>
int PropertyKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return AnswerWith(record, (HolderOf<Get>(object).*Get)());
    }
    if constexpr (!std::is_null_pointer_v<decltype(Set)>) {
        Value value{};
        return record->command == COMMAND_SET && ReadValue(record, &value) != 0 &&
                       (HolderOf<Set>(object).*Set)(value)
                   ? 1
                   : 0;
    }
    return 0;
}

// An int or a float that becomes the nearest of the two bounds when it is set to a number beyond them.
template <auto Member, int Minimum, int Maximum>
int LimitedKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& member = HolderOf<Member>(object).*Member;
    if (record->command == COMMAND_GET) {
        return AnswerWith(record, member);
    }
    using Value = std::remove_cvref_t<decltype(member)>;
    Value value{};
    if (record->command != COMMAND_SET || ReadValue(record, &value) == 0) {
        return 0;
    }
    member = std::clamp(value, static_cast<Value>(Minimum), static_cast<Value>(Maximum));
    return 1;
}

// A text as a template argument.
template <std::size_t Size>
struct FixedText {
    consteval FixedText(const char (&from)[Size]) { std::copy(from, from + Size, text); }
    char text[Size];
};

// Of words separated by commas: the one with that number, and the number of one, -1 for none of them.
std::string WordAt(std::string_view words, int number);
int NumberOfWord(std::string_view words, std::string_view word);

// One of the words; their number is read and set by two member functions.
template <FixedText Allowed, auto Get, auto Set>
int WordPropertyKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return AnswerWith(record, WordAt(Allowed.text, (HolderOf<Get>(object).*Get)()));
    }
    const auto text = TextToSet(record);
    const int number = text ? NumberOfWord(Allowed.text, *text) : -1;
    return number >= 0 && (HolderOf<Set>(object).*Set)(number) ? 1 : 0;
}

// One of the words; the member holds its number.
template <FixedText Allowed, auto Member>
int WordKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& member = HolderOf<Member>(object).*Member;
    if (record->command == COMMAND_GET) {
        return AnswerWith(record, WordAt(Allowed.text, static_cast<int>(member)));
    }
    const auto text = TextToSet(record);
    const int number = text ? NumberOfWord(Allowed.text, *text) : -1;
    if (number < 0) {
        return 0;
    }
    member = static_cast<std::remove_cvref_t<decltype(member)>>(number);
    return 1;
}

// A number without effect at present is written as "inactive", and "inactive" read leaves it as it is: the
// result for such a record, nothing for all others.
std::optional<int> HandleInactive(VALUERECORD& record, bool isInactive);

// Keywords of every control.
int FunctionKeyword(VALUERECORD* record, HOSTINFO* object);
int ConnectionKeyword(VALUERECORD* record, HOSTINFO* object);
int IntervalKeyword(VALUERECORD* record, HOSTINFO* object); // milliseconds, not negative
int LayerKeyword(VALUERECORD* record, HOSTINFO* object);
// Not 0: relative mode. Refused while there are more bindings than offsets can be saved.
int RelativeModeKeyword(VALUERECORD* record, CONTROLPROPERTIES& control, int& relative);
// Whether so many offsets can be saved; the edit trace says when not.
bool HasRoomForOffsets(const CONTROLPROPERTIES& control, std::size_t count);
// Takes any number or text, keeps nothing and answers nothing.
int IgnoredKeyword(VALUERECORD* record, HOSTINFO* object);
// Takes nothing and answers nothing.
int RefusedKeyword(VALUERECORD* record, HOSTINFO* object);
