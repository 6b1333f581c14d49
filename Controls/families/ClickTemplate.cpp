#include "Controls/families/ClickTemplate.h"

#include <cstdio>

namespace {

// Writes the expanded line into a buffer of TEXT_SIZE bytes. 0 when it does not fit.
int Expand(const CONTROLPROPERTIES& control, const std::string& clickTemplate, const char* caption,
           char* line) {
    std::snprintf(line, TEXT_SIZE, "%s", clickTemplate.c_str());
    const std::string connections = a_BuildString(control.connections);
    const INSERTION connected{'c', connections.c_str()};
    const INSERTION named{'n', control.name.c_str()};
    return caption == nullptr ? a_InsertString(line, {connected, named})
                              : a_InsertString(line, {connected, named, {'l', caption}});
}

} // namespace

bool SetIfKnown(HWND window, char* keyword, char* value) {
    VALUERECORD record{COMMAND_RESOLVE, 0, DATATYPE_TEXT, 0, keyword, keyword, 0};
    SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    if (record.index == 0) {
        return false;
    }
    record.command = COMMAND_SET;
    record.data = value;
    SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return true;
}

void SendClickTemplate(CONTROLPROPERTIES& control, const std::string& clickTemplate, const char* caption) {
    if (clickTemplate.empty()) {
        return;
    }
    char line[TEXT_SIZE];
    if (Expand(control, clickTemplate, caption, line) == 0) {
        TRACE("The expanded click of %s is too long\n", control.name.c_str());
        return;
    }
    char object[TEXT_SIZE];
    char keyword[TEXT_SIZE];
    char value[TEXT_SIZE];
    a_GetObjectName(line, object);
    a_GetKeyword(line, keyword);
    a_GetParameter(line, value);
    if (object[0] != '\0') {
        if (const HWND target = a_FindHwnd(control.parent, object); target != nullptr) {
            SetIfKnown(target, keyword, value);
        }
        return;
    }
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    if (root != nullptr && SetIfKnown(root->window, keyword, value)) {
        return;
    }
    REQUESTLIST requests;
    a_BuildRequestList({}, control.connections, &control, requests, keyword);
    a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, value, nullptr);
}
