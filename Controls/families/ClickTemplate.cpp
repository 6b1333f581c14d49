#include "Controls/families/ClickTemplate.h"

#include "Controls/families/AddressedValue.h"
#include "Panelhost/Trace.h"
#include "logic/text/PropertyLine.h"

#include <cstdio>

namespace {

// Writes the expanded line into a buffer of TEXT_SIZE bytes. 0 when it does not fit.
int Expand(const CONTROLPROPERTIES& control, const std::string& clickTemplate, const INSERTION* clicked,
           char* line) {
    std::snprintf(line, TEXT_SIZE, "%s", clickTemplate.c_str());
    const std::string connections = a_BuildString(control.connections);
    const INSERTION connected{'c', connections.c_str()};
    const INSERTION named{'n', control.name.c_str()};
    return clicked == nullptr ? a_InsertString(line, {connected, named})
                              : a_InsertString(line, {connected, named, *clicked});
}

bool SetIfKnown(HWND window, const std::string& keyword, std::string_view value) {
    const AddressedValue addressed(window, keyword);
    if (addressed.IsKnown()) {
        addressed.Set(std::string(value));
    }
    return addressed.IsKnown();
}

void SendExpanded(CONTROLPROPERTIES& control, const std::string& clickTemplate, const INSERTION* clicked) {
    if (clickTemplate.empty()) {
        return;
    }
    char line[TEXT_SIZE];
    if (Expand(control, clickTemplate, clicked, line) == 0) {
        TRACE("The expanded click of %s is too long\n", control.name.c_str());
        return;
    }
    const logic::PropertyLine parts = logic::SplitPropertyLine(line);
    const std::string object(parts.object);
    const std::string keyword(parts.keyword);
    if (!object.empty()) {
        if (const HWND target = a_FindHwnd(control.parent, object.c_str()); target != nullptr) {
            SetIfKnown(target, keyword, parts.value);
        }
        return;
    }
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    if (root != nullptr && SetIfKnown(root->window, keyword, parts.value)) {
        return;
    }
    REQUESTLIST requests;
    a_BuildRequestList({}, control.connections, &control, requests, keyword.c_str());
    char value[TEXT_SIZE];
    value[parts.value.copy(value, TEXT_SIZE - 1)] = '\0';
    a_SendRequest(requests, COMMAND_SET, DATATYPE_TEXT, value, nullptr);
}

} // namespace

void SendClickTemplate(CONTROLPROPERTIES& control, const std::string& clickTemplate, const char* caption) {
    const INSERTION captioned{'l', caption};
    SendExpanded(control, clickTemplate, caption == nullptr ? nullptr : &captioned);
}

void SendClickTemplate(CONTROLPROPERTIES& control, const std::string& clickTemplate, INSERTION clicked) {
    SendExpanded(control, clickTemplate, &clicked);
}
