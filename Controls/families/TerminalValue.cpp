#include "Controls/families/TerminalValue.h"

#include "Panelhost/Panelhost.h"
#include "logic/remote/TerminalLine.h"

#include <cstdio>

std::string TerminalValue(HWND window, const std::string& keyword) {
    char name[TEXT_SIZE];
    std::snprintf(name, sizeof name, "%s", keyword.c_str());
    char value[TEXT_SIZE] = "";
    VALUERECORD record{COMMAND_GET, 0, DATATYPE_TEXT, 0, value, name, 0};
    if (SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)) == 0) {
        // Interface controls answer no records, but their properties can be read all the same.
        HOSTINFO* object = a_FromWindow(window);
        if (object != nullptr && object->kind == KIND_CONTROL && object->HasHostinfoTable() != 0) {
            value[0] = '\0';
            record = {COMMAND_GET, 0, DATATYPE_TEXT, 0, value, name, 0};
            a_DispatchRecord(object, object->GetHostinfoTable(), &record);
        }
    }
    value[TEXT_SIZE - 1] = '\0';
    return value;
}

void TraceRefusedLine(const char* terminal) {
    TRACE("The %s terminal refused a line of more than %u bytes\n", terminal,
          static_cast<unsigned>(logic::TerminalText::maximumLength));
}
