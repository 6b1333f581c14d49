#pragma once

#include "Controls/framework/KeywordHandlers.h"
#include "Controls/resources/resource.h"
#include "Panelhost/KeywordInfo.h"

#include <cstddef>
#include <type_traits>

// Keyword tables. One row says all there is to a keyword: name and handler, whether it is saved, who may set
// it, and what dialogs, choosers and the reference have to know.
//
//     constexpr KeywordTable KEYWORDS({
//         Handled<&KNOBPROPERTIES::ValueKeyword>(" ", KeywordKind::Number).Says("The same as `value`."),
//         Number<&KNOBPROPERTIES::resolution>("resolution").Saved().Label("Resolution").Says("..."),
//         INTERVAL_KEYWORD,
//     });
//
// Row 0 is the default value. The order of the rows is that of saving. A table with two rows of one name, or
// with a row that says nothing, does not compile.

struct Keyword {
    KEYWORDROW row;
    KEYWORDINFO info;

    // Each answers the row with one thing more said of it.

    constexpr Keyword Named(const char* name) const {
        Keyword other = *this;
        other.row.keyword = name;
        return other;
    }
    // The row of the default value, for that of the keyword `value`.
    constexpr Keyword AsDefault() const { return Named(" ").Says("The same as `value`."); }
    constexpr Keyword Says(const char* sentence) const { return With(&KEYWORDINFO::sentence, sentence); }
    constexpr Keyword Flagged(int flags) const {
        Keyword more = *this;
        more.row.flags |= flags;
        return more;
    }
    constexpr Keyword Saved() const { return Flagged(KEYWORD_SAVED); }
    // What people read beside its field. The parameter dialog shows the keywords that have a label.
    constexpr Keyword Label(const char* label) const { return With(&KEYWORDINFO::label, label); }
    // The items of the dialog that others know: the field, and the button beside it.
    constexpr Keyword Items(int field, int chooser = 0) const {
        return With(&KEYWORDINFO::item, field).With(&KEYWORDINFO::chooser, chooser);
    }
    // A text in the dialog that shows what becomes of the value.
    constexpr Keyword Preview(std::string (*preview)(std::string_view), int item = 0) const {
        return With(&KEYWORDINFO::preview, preview).With(&KEYWORDINFO::previewItem, item);
    }
    // What a dialog says of a text that is refused, where there is more to be said than that.
    constexpr Keyword Objection(std::string (*objection)(std::string_view)) const {
        return With(&KEYWORDINFO::objection, objection);
    }
    constexpr Keyword Unit(const char* unit) const { return With(&KEYWORDINFO::unit, unit); }
    // For what refuses numbers beyond these; the row of a handler that checks them by itself says so.
    constexpr Keyword Limits(double minimum, double maximum) const {
        return With(&KEYWORDINFO::hasLimits, true)
            .With(&KEYWORDINFO::minimum, minimum)
            .With(&KEYWORDINFO::maximum, maximum);
    }
    // Words that stand for its values, separated by commas, where the handler takes other texts too or they
    // are numbers: "0,1".
    constexpr Keyword OneOf(const char* words) const {
        return With(&KEYWORDINFO::kind, KeywordKind::Words).With(&KEYWORDINFO::words, words);
    }
    // What the control writes into panel files by itself and never takes from them.
    constexpr Keyword OnlyWritten() const { return With(&KEYWORDINFO::isOnlyWritten, true); }
    constexpr Keyword AsTyped() const { return With(&KEYWORDINFO::isAsTyped, true); }
    // The most characters it takes.
    constexpr Keyword Longest(int characters) const { return With(&KEYWORDINFO::longest, characters); }
    constexpr Keyword MayBeEmpty() const { return With(&KEYWORDINFO::mayBeEmpty, true); }
    // How its text holds addresses, where the kind does not tell.
    constexpr Keyword Holds(logic::AddressForm form) const { return With(&KEYWORDINFO::addresses, form); }
    // It holds a pattern of addresses, for as many inputs and outputs as those keywords say.
    constexpr Keyword HoldsPattern(const char* inputs, const char* outputs = "") const {
        return Holds(logic::AddressForm::Pattern)
            .With(&KEYWORDINFO::inputs, inputs)
            .With(&KEYWORDINFO::outputs, outputs);
    }
    // How the names of the images begin that a dialog offers.
    constexpr Keyword Pictures(const char* prefix) const { return With(&KEYWORDINFO::pictures, prefix); }
    template <std::size_t Count>
    constexpr Keyword Options(const KEYWORDOPTION (&options)[Count]) const {
        return With(&KEYWORDINFO::options, +options).With(&KEYWORDINFO::optionCount, int{Count});
    }
    template <std::size_t Count>
    constexpr Keyword Parts(const KEYWORDPART (&parts)[Count]) const {
        return With(&KEYWORDINFO::parts, +parts).With(&KEYWORDINFO::partCount, int{Count});
    }

    template <class Value>
    constexpr Keyword With(Value KEYWORDINFO::*member, std::type_identity_t<Value> value) const {
        Keyword more = *this;
        more.info.*member = value;
        return more;
    }
};

template <std::size_t Count>
class KeywordTable {
public:
    consteval explicit KeywordTable(const Keyword (&keywords)[Count]) {
        for (std::size_t row = 0; row < Count; ++row) {
            rows_[row] = keywords[row].row;
            infos_[row] = keywords[row].info;
            if (*keywords[row].info.sentence == '\0') {
                throw "a keyword says nothing";
            }
            for (std::size_t other = 0; other < row; ++other) {
                if (std::string_view(rows_[row].keyword) == rows_[other].keyword) {
                    throw "two keywords of one name";
                }
            }
        }
        if (std::string_view(rows_[0].keyword) != " ") {
            throw "row 0 is not the default value";
        }
    }

    constexpr KeywordList List() const { return {rows_, infos_, static_cast<int>(Count)}; }

private:
    KEYWORDROW rows_[Count + 1]{}; // the last one ends the table
    KEYWORDINFO infos_[Count]{};
};

// Makers of rows. Each names what the keyword sets and reads: a handler, a member function that is one, a
// pair of member functions, or a member of the property class.

constexpr Keyword Row(const char* name, KeywordKind kind, KEYWORDHANDLER handler) {
    Keyword keyword{{name, handler, 0}, {}};
    keyword.info.kind = kind;
    if (kind == KeywordKind::Addresses) {
        keyword.row.flags = KEYWORD_BINDINGS;
        keyword.info.addresses = std::string_view(name) == "connection" ? logic::AddressForm::Connections
                                                                        : logic::AddressForm::Functions;
    } else if (kind == KeywordKind::Picture || kind == KeywordKind::File) {
        keyword.row.flags = KEYWORD_FILE;
    } else if (kind == KeywordKind::Line) {
        keyword.row.flags = KEYWORD_CLICK;
        keyword.info.addresses = logic::AddressForm::Line;
    }
    return keyword;
}

// int Class::Method(VALUERECORD& record)
template <auto Method>
constexpr Keyword Handled(const char* name, KeywordKind kind) {
    return Row(name, kind, [](VALUERECORD* record, HOSTINFO* object) -> int {
        return (HolderOf<Method>(object).*Method)(*record);
    });
}

template <class Value>
constexpr KeywordKind KindOf() {
    if constexpr (std::is_same_v<Value, int>) {
        return KeywordKind::Integer;
    } else if constexpr (std::is_same_v<Value, float>) {
        return KeywordKind::Number;
    } else {
        return KeywordKind::Text;
    }
}

// Value Class::Get() const and bool Class::Set(Value); Value is int, float or std::string. Set says whether
// it took the value; it is nullptr for what can only be read.
template <auto Get, auto Set>
constexpr Keyword Property(const char* name) {
    using Value =
        std::remove_cvref_t<decltype((std::declval<typename MemberClass<decltype(Get)>::type&>().*Get)())>;
    return Row(name, KindOf<Value>(), PropertyKeyword<Get, Set, Value>);
}
// The same of a text that is of another kind.
template <auto Get, auto Set>
constexpr Keyword Property(const char* name, KeywordKind kind) {
    Keyword keyword = Property<Get, Set>(name);
    const Keyword ofKind = Row(name, kind, nullptr);
    keyword.info.kind = kind;
    keyword.info.addresses = ofKind.info.addresses;
    keyword.row.flags |= ofKind.row.flags;
    return keyword;
}
// The same for records of text alone.
template <auto Get, auto Set>
constexpr Keyword TextProperty(const char* name, KeywordKind kind = KeywordKind::Text) {
    return Row(name, kind, TextOnly<PropertyKeyword<Get, Set, std::string>>);
}
// What stands in the table and takes and answers nothing.
constexpr Keyword Refused(const char* name) {
    return Row(name, KeywordKind::Text, RefusedKeyword);
}
// One of several words, "max,avg": a member that is the number of the word, an integer or an enumeration.
template <FixedText Allowed, auto Member, auto Changed = nullptr>
constexpr Keyword Words(const char* name) {
    Keyword keyword = Row(name, KeywordKind::Words, NotifyingIf<WordKeyword<Allowed, Member>, Changed>());
    keyword.info.words = Allowed.text;
    return keyword;
}
// The same with int Class::Get() const and bool Class::Set(int) for the number of the word.
template <FixedText Allowed, auto Get, auto Set>
constexpr Keyword WordsProperty(const char* name) {
    Keyword keyword = Row(name, KeywordKind::Words, WordPropertyKeyword<Allowed, Get, Set>);
    keyword.info.words = Allowed.text;
    return keyword;
}

// Members. Changed, where there is one, is a member function that is called after each value that was set.
template <auto Member, int Minimum = std::numeric_limits<int>::min(),
          int Maximum = std::numeric_limits<int>::max(), auto Changed = nullptr>
constexpr Keyword Integer(const char* name) {
    constexpr KEYWORDHANDLER handler = IntegerKeyword<Member, Minimum, Maximum>;
    const Keyword keyword = Row(name, KeywordKind::Integer, NotifyingIf<handler, Changed>());
    const bool isBounded =
        Minimum != std::numeric_limits<int>::min() || Maximum != std::numeric_limits<int>::max();
    return isBounded ? keyword.Limits(Minimum, Maximum) : keyword;
}
// A number, an integer or not, that is limited to the bounds instead of being refused beyond them.
template <auto Member, int Minimum, int Maximum, auto Changed = nullptr>
constexpr Keyword Limited(const char* name) {
    using Value =
        std::remove_cvref_t<decltype(std::declval<typename MemberClass<decltype(Member)>::type&>().*Member)>;
    return Row(name, KindOf<Value>(), NotifyingIf<LimitedKeyword<Member, Minimum, Maximum>, Changed>());
}
template <auto Member, auto Changed = nullptr>
constexpr Keyword Number(const char* name) {
    return Row(name, KeywordKind::Number, NotifyingIf<FloatKeyword<Member>, Changed>());
}
template <auto Member, std::size_t MaximumLength = TEXT_SIZE - 1, auto Changed = nullptr>
constexpr Keyword Text(const char* name) {
    return Row(name, KeywordKind::Text, NotifyingIf<TextKeyword<Member, MaximumLength>, Changed>())
        .Longest(int{MaximumLength});
}
// A property line for later.
template <auto Member, std::size_t MaximumLength = TEXT_SIZE - 1>
constexpr Keyword Line(const char* name) {
    return Row(name, KeywordKind::Line, TextKeyword<Member, MaximumLength>).Longest(int{MaximumLength});
}
template <auto Member>
constexpr Keyword Colour(const char* name) {
    return Row(name, KeywordKind::Colour, ColourKeyword<Member>);
}
template <auto Member>
constexpr Keyword OptionalColour(const char* name) {
    return Row(name, KeywordKind::Colour, OptionalColourKeyword<Member>).MayBeEmpty();
}
template <auto Member>
constexpr Keyword FontOf(const char* name) {
    return Row(name, KeywordKind::Typeface, FontKeyword<Member>);
}
template <auto Member>
constexpr Keyword Picture(const char* name) {
    return Row(name, KeywordKind::Picture, BitmapKeyword<Member>);
}

// Keywords of nearly every control.
inline constexpr Keyword CONNECTION_KEYWORD =
    Row("connection", KeywordKind::Addresses, ConnectionKeyword)
        .Says(
            "Controls it is connected to, `OBJECT*keyword` or `OBJECT`, joined by `;`. Saved after all other "
            "keywords.");
inline constexpr Keyword FUNCTION_KEYWORD =
    Row("function", KeywordKind::Addresses, FunctionKeyword)
        .Saved()
        .Says("Device parameters it is bound to, `DEVICE*parameter`, joined by `;`.");
inline constexpr Keyword INTERVAL_KEYWORD =
    Row("interval", KeywordKind::Integer, IntervalKeyword)
        .Saved()
        .Unit("ms")
        .Label("Polling interval in ms")
        .Items(IDC_INTERVAL)
        .Limits(0, std::numeric_limits<int>::max())
        .Says("Milliseconds from one poll of what it is bound to to the next.");
inline constexpr Keyword LAYER_KEYWORD =
    Row("layer", KeywordKind::Text, LayerKeyword)
        .Says("Layers it is shown on, `u1` to `u64`, joined by `,`; empty for all. Saved unless empty.");
inline constexpr Keyword LEVEL_KEYWORD =
    Row("level", KeywordKind::Text, LayerKeyword).Says("Another name of `layer`.");
// The default value of a control that has none.
inline constexpr Keyword NO_VALUE_KEYWORD =
    Row(" ", KeywordKind::Text, nullptr).Says("Nothing; it can be neither set nor read.");

// The two buttons of a dialog for the keyword `relative`.
inline constexpr KEYWORDOPTION RELATIVE_OPTIONS[] = {{"0", IDC_ABSOLUTE}, {"1", IDC_RELATIVE}};
