// The property text, value records and polling of every control, over its own keyword table.

#include "Controls/framework/Control.h"

#include "Panelhost/Devices.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/PropertyValues.h"
#include "Panelhost/Remote.h"
#include "Panelhost/Trace.h"
#include "base/Guard.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace {

// Says where a line comes from while it is applied.
class Loading {
public:
    Loading(bool& flag, bool fromFile) : flag_(flag), outer_(std::exchange(flag, fromFile)) {}
    ~Loading() { flag_ = outer_; }
    Loading(const Loading&) = delete;
    Loading& operator=(const Loading&) = delete;

private:
    bool& flag_;
    bool outer_;
};

} // namespace

LRESULT CONTROLPROPERTIES::OnLoad(WPARAM loadMode, LPARAM lParam) {
    const auto* line = reinterpret_cast<const char*>(lParam);
    return line == nullptr ? 0 : LoadLine(loadMode, line, logic::SplitPropertyLine(line));
}

LRESULT CONTROLPROPERTIES::LoadLine(WPARAM loadMode, const char* line, const logic::PropertyLine& parts) {
    const bool edited = loadMode != LOAD_FROM_FILE;
    const bool mayRefuse =
        !edited && logic::IsEmptyBinding(parts.keyword, parts.value); // each control is saved with some
    const KEYWORDROW* table = GetHostinfoTable();
    int row = a_FindKeyword(table, parts.keyword);
    if (row < 0) {
        if (mayRefuse) {
            return 0;
        }
        TRACE("%s Keyword not found: %s\n", controlClass->displayName,
              std::string(parts.keyword.substr(0, TEXT_SIZE - 1)).c_str());
        if (!edited) {
            return 0; // a newer version may know it
        }
        row = 0; // the text then sets the default value
    }
    if (!edited && Keywords().infos[row].isOnlyWritten) {
        return 0; // the control has written it itself
    }
    if (table[row].handler == nullptr) {
        return EDITTRACE(parent, "Not implemented %s", line);
    }
    if (!a_IsPropertyValue(this, table, row, parts.value)) {
        return EDITTRACE(parent, "Error reading line %s", line);
    }
    char value[TEXT_SIZE];
    value[parts.value.copy(value, TEXT_SIZE - 1)] = '\0';
    VALUERECORD record = VALUERECORD::SetText(value, row);
    const int taken = [&] {
        const Loading loading(isLoadingFile, !edited);
        const RemoteSetting fromHere(false);
        return table[row].handler(&record, this);
    }();
    if (taken != 0 && edited) {
        a_KeywordSet(this, table[row].keyword);
    }
    if (taken == 0 && mayRefuse) {
        return 0;
    }
    if (taken == 0) {
        return EDITTRACE(parent, "Error reading line %s", line);
    }
    if (dialog != nullptr) {
        PostMessageA(dialog, CWM_ATTACHDIALOG, 0, reinterpret_cast<LPARAM>(static_cast<HOSTINFO*>(this)));
    }
    if (edited) {
        flags |= FLAG_CHANGED;
    }
    return 1;
}

// What the panel shows and hides is saved the same whatever it shows just now.
DWORD CONTROLPROPERTIES::SavedStyle() const {
    const DWORD style = StyleToSave(static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE)));
    if ((flags & FLAG_EDIT_ONLY) != 0) {
        return style & ~static_cast<DWORD>(WS_VISIBLE);
    }
    return layers != 0 || (flags & FLAG_HIDDEN) != 0 ? style | WS_VISIBLE : style;
}

std::string CONTROLPROPERTIES::Header() const {
    char className[65];
    GetClassNameA(window, className, sizeof className);
    const auto ownNameStart = name.rfind('*') + 1; // 0 without a path
    const auto hex = [](DWORD number) {
        char text[16];
        std::snprintf(text, sizeof text, "0x%08x", static_cast<unsigned>(number));
        return std::string(text);
    };
    return name.substr(0, ownNameStart) +
           "control=" + hex(static_cast<DWORD>(GetWindowLongA(window, GWL_EXSTYLE))) + " " + className +
           " \"" + name.substr(ownNameStart) + "\" " + hex(SavedStyle()) + " " + a_GetRectString(rectangle) +
           "\r\n";
}

LRESULT CONTROLPROPERTIES::OnSave(WPARAM saveCode, LPARAM file) {
    std::string lines;
    switch (saveCode) {
    case SAVE_PROPERTIES: {
        lines = Header();
        char value[TEXT_SIZE];
        for (const KEYWORDROW* row = GetHostinfoTable(); row->keyword != nullptr; ++row) {
            if (row->handler == nullptr || (row->flags & KEYWORD_SAVED) == 0 || !IsSavedNow(row->keyword)) {
                continue;
            }
            value[0] = '\0';
            VALUERECORD record = VALUERECORD::GetText(value);
            row->handler(&record, this);
            lines += name + "*" + row->keyword + "=" + value + "\r\n";
        }
        break;
    }
    case SAVE_CONNECTIONS:
        lines = name + "*connection=" + a_BuildString(connections) + "\r\n";
        break;
    default:
        TRACE("Unknown wSaveCode %x\n", static_cast<unsigned>(saveCode));
        return 0;
    }
    return a_WriteText(reinterpret_cast<HANDLE>(file), lines.data(), lines.size()) != 0
               ? 0
               : static_cast<LRESULT>(GetLastError());
}

LRESULT CONTROLPROPERTIES::OnSaveToListCtrl(WPARAM, LPARAM listView) {
    return a_ListProperties(this, GetHostinfoTable(), reinterpret_cast<HWND>(listView));
}

LRESULT CONTROLPROPERTIES::OnMessage(WPARAM, LPARAM record) {
    return a_DispatchRecord(this, GetHostinfoTable(), reinterpret_cast<VALUERECORD*>(record));
}

LRESULT CONTROLPROPERTIES::OnTimer(WPARAM, LPARAM) {
    const DWORD now = GetTickCount();
    if (dragging || UntilPoll(now) > 0) {
        return 0;
    }
    lastPoll = now;
    Poll();
    return 0;
}

DWORD CONTROLPROPERTIES::UntilPoll(DWORD now) const noexcept {
    const DWORD passed = now - lastPoll;
    const auto period = static_cast<DWORD>(interval);
    if (passed > period) {
        return 0;
    }
    return std::min(period - passed, NO_TICK - 1) + 1;
}

std::string CONTROLPROPERTIES::StatusText() {
    char value[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(value);
    OnMessage(0, reinterpret_cast<LPARAM>(&record));
    return value;
}

std::string CONTROLPROPERTIES::SpokenName() const {
    const std::string ownName = name.substr(name.rfind('*') + 1);
    const int row = a_FindKeyword(Keywords().rows, "caption");
    if (row < 0) {
        return ownName;
    }
    char caption[TEXT_SIZE] = "";
    VALUERECORD record = VALUERECORD::GetText(caption);
    Keywords().rows[row].handler(&record, const_cast<CONTROLPROPERTIES*>(this)); // only asked
    return *caption != '\0' ? caption : ownName;
}

LRESULT CONTROLPROPERTIES::OnGetTooltip(WPARAM, LPARAM lParam) {
    return Guarded(LRESULT{0}, [&] { // called by the program itself, into which no exception may go
        std::string text = name;
        const std::string value = hasNoValue ? NO_VALUE : StatusText();
        if (!value.empty()) {
            text += " = " + value;
        }
        const std::string bound = a_BuildString(functions, this);
        const std::string connected = a_BuildString(connections, this);
        if (!bound.empty() || !connected.empty()) {
            text += "   " + bound + (bound.empty() || connected.empty() ? "" : ";") + connected;
        }
        const bool missing = std::any_of(requests.begin(), requests.end(), [](const REQUESTITEM& item) {
            return item.target == nullptr && item.handler == nullptr;
        });
        if (missing || lastPollResult == REQUEST_UNREACHABLE) {
            const std::string why = a_WhyNotLive(this); // it may be a control that is not there
            text += "   (" + (why.empty() ? "not reachable" : why) + ")";
        } else if (lastPollResult == REQUEST_DISAGREE) {
            text += "   (values differ)";
        }
        std::snprintf(reinterpret_cast<char*>(lParam), TEXT_SIZE, "%s", text.c_str());
        return LRESULT{1};
    });
}

LRESULT CONTROLPROPERTIES::OnGetDatatype(WPARAM, LPARAM keyword) {
    const KEYWORDROW* table = GetHostinfoTable();
    const auto* wanted = reinterpret_cast<const char*>(keyword);
    const int row = std::max(a_FindKeyword(table, wanted), 0); // what it does not know is the default value
    if (table[row].handler == nullptr) {
        return DATATYPE_NONE;
    }
    return table[row].handler == table[0].handler ? ValueDatatype() : DATATYPE_TEXT;
}

int CONTROLPROPERTIES::Ask(REQUESTLIST& list, int datatype, void* data) {
    int result = REQUEST_UNCHANGED;
    a_SendRequest(list, COMMAND_GET, datatype, data, &result);
    return result;
}

bool AskForValue(const REQUESTLIST& requests, int datatype, void* value) {
    REQUESTLIST items = requests; // they may change meanwhile
    int result = REQUEST_UNREACHABLE;
    while (result > REQUEST_DELIVERED && !items.empty()) {
        REQUESTLIST first;
        first.splice(first.begin(), items, items.begin());
        a_SendRequest(first, COMMAND_GET, datatype, value, &result);
    }
    return result <= REQUEST_DELIVERED;
}

int CONTROLPROPERTIES::WhetherLive() const {
    return a_WhyNotLive(this).empty() ? REQUEST_UNCHANGED : REQUEST_UNREACHABLE;
}

LRESULT CONTROLPROPERTIES::OnSystem(WPARAM event, LPARAM) {
    if (event == SYSTEM_STYLE || event == SYSTEM_ART) {
        const Held held(*this);
        Guarded([&] { event == SYSTEM_STYLE ? StyleChanged() : ArtChanged(); });
    }
    return 0;
}

LRESULT CONTROLPROPERTIES::OnInterfaceworking(WPARAM, LPARAM) {
    return Guarded(LRESULT{0}, [&] {
        if (dragging) { // it does not poll
            ShowPollResult(WhetherLive());
        }
        PollSoon();
        return LRESULT{1};
    });
}

void CONTROLPROPERTIES::ShowPollResult(int result) {
    lastPollResult = result;
    ShowNotEqual(result > REQUEST_DELIVERED);
}

void CONTROLPROPERTIES::Answered(REQUESTLIST& list, int datatype, int result) {
    if (list.empty() || wasAnswered_) {
        return;
    }
    char nobodys[TEXT_SIZE] = "";
    wasAnswered_ = result != REQUEST_UNREACHABLE ||
                   (list.size() > 1 && AskForValue(list, datatype, nobodys)); // some may be there
    ShowNoValue(!wasAnswered_);
}

void CONTROLPROPERTIES::ForgetAnswers() {
    wasAnswered_ = false;
    ShowNoValue(false);
}

void CONTROLPROPERTIES::ShowNoValue(bool shown) {
    if (shown != hasNoValue) {
        hasNoValue = shown;
        ShowValueAnew();
    }
}

void CONTROLPROPERTIES::ShowNotEqual(bool shown) {
    if (shown != notEqual) {
        notEqual = shown;
        Redraw();
    }
}

void CONTROLPROPERTIES::Resize(int width, int height) {
    if (width == rectangle.right - rectangle.left && height == rectangle.bottom - rectangle.top) {
        return;
    }
    rectangle.right = rectangle.left + width;
    rectangle.bottom = rectangle.top + height;
    SetWindowPos(window, nullptr, 0, 0, width, height, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}
