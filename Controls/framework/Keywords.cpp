#include "Controls/framework/Keywords.h"

namespace {

// A list of bindings that is replaced as a whole.
int BindingsKeyword(VALUERECORD* record, HOSTINFO* object,
                    int (*change)(const char*, HOSTINFO*, BINDINGLIST&, BINDINGLIST&, REQUESTLIST&)) {
    std::string text;
    if (record->command != COMMAND_SET || a_ReadText(record, &text) == 0 ||
        change(text.c_str(), object, object->functions, object->connections, object->requests) == 0) {
        return 0;
    }
    static_cast<CONTROLPROPERTIES*>(object)->BindingsChanged();
    return 1;
}

} // namespace

std::optional<std::string> TextToSet(const VALUERECORD* record) {
    std::string text;
    return record->command == COMMAND_SET && a_ReadText(record, &text) != 0 ? std::optional(text)
                                                                            : std::nullopt;
}

int FunctionKeyword(VALUERECORD* record, HOSTINFO* object) {
    return record->command == COMMAND_GET ? a_AnswerText(record, a_BuildString(object->functions).c_str())
                                          : BindingsKeyword(record, object, a_FunctionChanged);
}

int ConnectionKeyword(VALUERECORD* record, HOSTINFO* object) {
    return BindingsKeyword(record, object, a_ConnectionChanged);
}

int IntervalKeyword(VALUERECORD* record, HOSTINFO* object) {
    return IntegerKeyword<&HOSTINFO::interval, 0>(record, object);
}

int LayerKeyword(VALUERECORD* record, HOSTINFO* object) {
    if (record->command == COMMAND_GET) {
        return a_AnswerText(record, a_GetLayers(object).c_str());
    }
    std::string text;
    return record->command == COMMAND_SET && a_ReadText(record, &text) != 0
               ? a_SetLayers(object, text.c_str())
               : 0;
}

int IgnoredKeyword(VALUERECORD* record, HOSTINFO*) {
    return TextToSet(record) ? 1 : 0;
}
