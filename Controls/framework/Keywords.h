#pragma once

#include "Controls/framework/BitmapProperty.h"
#include "Controls/framework/Control.h"

#include <limits>
#include <string_view>

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

// An image file; empty for none. BitmapChanged of the holder gives the control its size.
template <auto Member>
int BitmapKeyword(VALUERECORD* record, HOSTINFO* object) {
    auto& holder = HolderOf<Member>(object);
    BitmapProperty& member = holder.*Member;
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, member.Name().c_str());
    }
    std::string name;
    if (record->command != COMMAND_SET || a_ReadText(record, &name) == 0 || !member.Load(name)) {
        return 0;
    }
    holder.BitmapChanged();
    return 1;
}

// Keywords of every control.
int FunctionKeyword(VALUERECORD* record, HOSTINFO* object);
int ConnectionKeyword(VALUERECORD* record, HOSTINFO* object);
int IntervalKeyword(VALUERECORD* record, HOSTINFO* object); // milliseconds, not negative
int LayerKeyword(VALUERECORD* record, HOSTINFO* object);
// Takes anything, keeps nothing and answers nothing.
int IgnoredKeyword(VALUERECORD* record, HOSTINFO* object);

// For a static_assert behind each table.
template <std::size_t Count>
constexpr bool KeywordsAreUnique(const KEYWORDROW (&table)[Count]) {
    for (std::size_t row = 0; row + 1 < Count; ++row) {
        for (std::size_t other = row + 1; other + 1 < Count; ++other) {
            if (std::string_view(table[row].keyword) == table[other].keyword) {
                return false;
            }
        }
    }
    return table[Count - 1].keyword == nullptr && std::string_view(table[0].keyword) == " ";
}
