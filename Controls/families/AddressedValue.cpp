#include "Controls/families/AddressedValue.h"

#include "Panelhost/Hostinfo.h"
#include "Panelhost/Trace.h"
#include "logic/remote/TerminalLine.h"

#include <algorithm>
#include <utility>

namespace {

LRESULT Send(HWND window, VALUERECORD& record) {
    return SendMessageA(window, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
}

} // namespace

AddressedValue::AddressedValue(HWND window, std::string keyword)
    : window_(window), keyword_(std::move(keyword)) {
    keyword_.resize(std::min<std::size_t>(keyword_.size(), TEXT_SIZE - 1));
    VALUERECORD record = VALUERECORD::Resolve(keyword_.c_str());
    isAnswered_ = Send(window_, record) != 0;
    row_ = record.index;
}

std::string AddressedValue::Text() const {
    char value[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(value).Named(keyword_.c_str());
    if (Send(window_, record) == 0) {
        HOSTINFO* object = a_FromWindow(window_);
        if (object != nullptr && object->kind == KIND_CONTROL && object->HasHostinfoTable() != 0) {
            value[0] = '\0';
            record = VALUERECORD::GetText(value).Named(keyword_.c_str());
            a_DispatchRecord(object, object->GetHostinfoTable(), &record);
        }
    }
    value[TEXT_SIZE - 1] = '\0';
    return value;
}

void AddressedValue::Set(const std::string& value) const {
    char text[TEXT_SIZE];
    text[value.copy(text, TEXT_SIZE - 1)] = '\0';
    VALUERECORD record = VALUERECORD::SetText(text, row_).Named(keyword_.c_str());
    Send(window_, record);
}

void TraceRefusedLine(const char* terminal) {
    TRACE("The %s terminal refused a line of more than %u bytes\n", terminal,
          static_cast<unsigned>(logic::TerminalText::maximumLength));
}
