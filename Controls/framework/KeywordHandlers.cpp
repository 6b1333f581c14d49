#include "Controls/framework/KeywordHandlers.h"

#include "Panelhost/Trace.h"
#include "logic/controls/FaderLogic.h"
#include "logic/text/FloatFormat.h"
#include "logic/text/PropertyLine.h"
#include "logic/text/Text.h"

#include <cstdio>

namespace {

// A list of bindings that is replaced as a whole; the other one stays.
int BindingsKeyword(VALUERECORD* record, HOSTINFO* object, const BINDINGLIST& other,
                    int (*change)(const char*, HOSTINFO*, BINDINGLIST&, BINDINGLIST&, REQUESTLIST&)) {
    auto& control = *static_cast<CONTROLPROPERTIES*>(object);
    const auto text = TextToSet(record);
    if (!text ||
        (control.IsRelative() &&
         !HasRoomForOffsets(control, logic::SplitList(*text).size() + other.size())) ||
        change(text->c_str(), object, object->functions, object->connections, object->requests) == 0) {
        return 0;
    }
    control.ForgetAnswers();
    control.BindingsChanged();
    return 1;
}

} // namespace

std::optional<std::string> TextToSet(const VALUERECORD* record) {
    std::string text;
    return record->command == COMMAND_SET && a_ReadText(record, &text) != 0 ? std::optional(text)
                                                                            : std::nullopt;
}

bool MayBeFormat(const std::string& text) {
    constexpr std::size_t maximumLength = 31;
    return text.size() <= maximumLength && (text.empty() || logic::IsFloatFormat(text));
}

std::string ColourText(COLORREF colour) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(colour));
    return text;
}

std::optional<COLORREF> ParseColour(std::string_view text) {
    const auto colour = logic::ParseWholeHex(text);
    return colour && *colour <= HIGHEST_COLOUR ? std::optional<COLORREF>(*colour) : std::nullopt;
}

int FunctionKeyword(VALUERECORD* record, HOSTINFO* object) {
    return record->command == COMMAND_GET
               ? a_AnswerText(record, a_BuildString(object->functions).c_str())
               : BindingsKeyword(record, object, object->connections, a_FunctionChanged);
}

int ConnectionKeyword(VALUERECORD* record, HOSTINFO* object) {
    return BindingsKeyword(record, object, object->functions, a_ConnectionChanged);
}

int IntervalKeyword(VALUERECORD* record, HOSTINFO* object) {
    return IntegerKeyword<&HOSTINFO::interval, 0>(record, object);
}

int LayerKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, a_GetLayers(object).c_str());
    }
    const auto text = TextToSet(record);
    return text ? a_SetLayers(object, text->c_str()) : 0;
}

bool HasRoomForOffsets(const CONTROLPROPERTIES& control, std::size_t count) {
    if (count <= logic::MAXIMUM_OFFSETS) {
        return true;
    }
    EDITTRACE(control.parent, "In relative mode there are at most %s functions and connections",
              std::to_string(logic::MAXIMUM_OFFSETS).c_str());
    return false;
}

int RelativeModeKeyword(VALUERECORD* record, CONTROLPROPERTIES& control, int& relative) {
    if (record->command == COMMAND_GET) {
        return a_AnswerInteger(record, relative);
    }
    int wanted = 0;
    if (record->command != COMMAND_SET || a_ReadInteger(record, &wanted) == 0 ||
        (wanted != 0 && !HasRoomForOffsets(control, control.functions.size() + control.connections.size()))) {
        return 0;
    }
    relative = wanted;
    control.BindingsChanged();
    return 1;
}

int IgnoredKeyword(VALUERECORD* record, HOSTINFO*) {
    return TextToSet(record) ? 1 : 0;
}

int RefusedKeyword(VALUERECORD*, HOSTINFO*) {
    return 0;
}

std::optional<int> HandleInactive(VALUERECORD& record, bool isInactive) {
    constexpr const char* INACTIVE = "inactive";
    if (record.datatype != DATATYPE_TEXT || record.data == nullptr) {
        return std::nullopt;
    }
    if (record.command == COMMAND_GET && isInactive) {
        return a_AnswerText(&record, INACTIVE);
    }
    const bool isRead =
        record.command == COMMAND_SET && std::string_view(static_cast<char*>(record.data)) == INACTIVE;
    return isRead ? std::optional(1) : std::nullopt;
}

std::string WordAt(std::string_view words, int number) {
    const auto all = logic::SplitFields(words, ',');
    const auto place = static_cast<std::size_t>(number);
    return place < all.size() ? std::string(all[place]) : "";
}

int NumberOfWord(std::string_view words, std::string_view word) {
    const auto all = logic::SplitFields(words, ',');
    const auto found = std::find(all.begin(), all.end(), word);
    return found == all.end() ? -1 : static_cast<int>(found - all.begin());
}
