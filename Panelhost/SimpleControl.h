#pragma once

#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/PropertyList.h"
#include "Panelhost/PropertyValues.h"

#include <cstdio>
#include <string>

// For control libraries of others: a control that shows one number, polls what it is bound to, is saved and
// edited. All of it is compiled into the library of the control, so that no exception crosses to another one.
// The control says what it paints, and its keywords: their table begins with " ", and names the handlers
// below where it has the usual ones.
class SimpleControl : public HOSTINFO {
public:
    virtual void Paint(HDC dc, const RECT& client) const = 0;

    float Value() const { return value_; }
    void Show(float value) {
        value_ = value;
        InvalidateRect(window, nullptr, FALSE);
    }

    // Handlers of keyword rows.
    static int ValueRow(VALUERECORD* record, HOSTINFO* object) {
        auto& control = static_cast<SimpleControl&>(*object);
        if (record->command != COMMAND_SET) {
            return a_AnswerFloat(record, control.value_);
        }
        float number = 0;
        if (a_ReadFloat(record, &number) == 0) {
            return 0;
        }
        control.Show(number);
        return 1;
    }
    static int IntervalRow(VALUERECORD* record, HOSTINFO* object) {
        if (record->command != COMMAND_SET) {
            return a_AnswerInteger(record, object->interval);
        }
        int period = 0;
        if (a_ReadInteger(record, &period) == 0 || period < 0) {
            return 0;
        }
        object->interval = period;
        return 1;
    }
    static int FunctionRow(VALUERECORD* record, HOSTINFO* object) {
        return BindingRow(record, object, object->functions, a_FunctionChanged);
    }
    static int ConnectionRow(VALUERECORD* record, HOSTINFO* object) {
        return BindingRow(record, object, object->connections, a_ConnectionChanged);
    }

    int HasHostinfoTable() override { return 1; }
    LRESULT OnMessage(WPARAM, LPARAM record) override {
        return a_DispatchRecord(this, GetHostinfoTable(), reinterpret_cast<VALUERECORD*>(record));
    }
    LRESULT OnLoad(WPARAM loadMode, LPARAM line) override {
        char keyword[TEXT_SIZE];
        char text[TEXT_SIZE];
        a_GetKeyword(reinterpret_cast<const char*>(line), keyword);
        a_GetParameter(reinterpret_cast<const char*>(line), text);
        int row = a_FindKeyword(GetHostinfoTable(), keyword);
        if (row < 0 && loadMode != LOAD_FROM_FILE) {
            row = 0; // the default value
        }
        if (row < 0 || !a_IsPropertyValue(this, GetHostinfoTable(), row, text)) {
            return 0;
        }
        VALUERECORD record = VALUERECORD::SetText(text, row);
        const int taken = GetHostinfoTable()[row].handler(&record, this);
        if (taken != 0 && loadMode != LOAD_FROM_FILE) {
            flags |= FLAG_CHANGED;
            a_KeywordSet(this, GetHostinfoTable()[row].keyword);
        }
        return taken;
    }
    LRESULT OnSave(WPARAM saveCode, LPARAM file) override {
        const std::string lines = saveCode == SAVE_PROPERTIES
                                      ? Properties()
                                      : name + "*connection=" + a_BuildString(connections) + "\r\n";
        return a_WriteText(reinterpret_cast<HANDLE>(file), lines.data(), lines.size()) != 0
                   ? 0
                   : static_cast<LRESULT>(GetLastError());
    }
    LRESULT OnSaveToListCtrl(WPARAM, LPARAM listView) override {
        return a_ListProperties(this, GetHostinfoTable(), reinterpret_cast<HWND>(listView));
    }
    LRESULT OnGetDatatype(WPARAM, LPARAM keyword) override {
        const int row = a_FindKeyword(GetHostinfoTable(), reinterpret_cast<const char*>(keyword));
        const bool isValue =
            row <= 0 || GetHostinfoTable()[row].handler == ValueRow; // or what it does not know
        return isValue ? DATATYPE_FLOAT : DATATYPE_TEXT;
    }
    // Asks what it is bound to for the value, once in each interval.
    LRESULT OnTimer(WPARAM, LPARAM) override {
        const DWORD now = GetTickCount();
        if (requests.empty() || now - asked_ < static_cast<DWORD>(interval)) {
            return 0;
        }
        asked_ = now;
        float found = value_;
        int result = REQUEST_UNREACHABLE;
        if (a_SendRequest(requests, COMMAND_GET, DATATYPE_FLOAT, &found, &result) != 0 &&
            result == REQUEST_DELIVERED) {
            Show(found);
        }
        return 0;
    }

    // A window class of such controls: registered with the system and the host, and taken back. For DllMain.
    template <class Control>
    static bool Register(HINSTANCE library, const PH_CONTROLCLASS& described) {
        WNDCLASSA windowClass{};
        windowClass.style = CS_GLOBALCLASS;
        windowClass.lpfnWndProc = Procedure<Control>;
        windowClass.hInstance = library;
        windowClass.lpszClassName = described.windowClass;
        return RegisterClassA(&windowClass) != 0 && ph_RegisterControlClass(described.windowClass) != 0 &&
               ph_DescribeControlClass(&described) != 0;
    }
    static void Unregister(HINSTANCE library, const char* windowClass) {
        ph_UnregisterControlClass(windowClass);
        UnregisterClassA(windowClass, library);
    }

private:
    using Change = int (*)(const char*, HOSTINFO*, BINDINGLIST&, BINDINGLIST&, REQUESTLIST&);
    static int BindingRow(VALUERECORD* record, HOSTINFO* object, const BINDINGLIST& list, Change change) {
        if (record->command != COMMAND_SET) {
            return a_AnswerText(record, a_BuildString(list).c_str());
        }
        std::string text;
        return a_ReadText(record, &text) != 0
                   ? change(text.c_str(), object, object->functions, object->connections, object->requests)
                   : 0;
    }

    // The header, which creates the control when the panel is opened, and what the table says is saved.
    std::string Properties() {
        char className[65] = "";
        GetClassNameA(window, className, sizeof className);
        char style[32];
        std::snprintf(style, sizeof style, "0x%08lx",
                      GetWindowLongA(window, GWL_STYLE) | (layers != 0 ? WS_VISIBLE : 0));
        const std::string own = a_OwnName(this);
        std::string lines = name.substr(0, name.size() - own.size()) + "control=0x00000000 " + className +
                            " \"" + own + "\" " + style + " " + a_GetRectString(rectangle) + "\r\n";
        for (const KEYWORDROW* row = GetHostinfoTable(); row->keyword != nullptr; ++row) {
            if ((row->flags & KEYWORD_SAVED) != 0) {
                char text[TEXT_SIZE] = "";
                VALUERECORD record = VALUERECORD::GetText(text);
                row->handler(&record, this);
                lines += name + "*" + row->keyword + "=" + text + "\r\n";
            }
        }
        return lines;
    }

    void OnPaint() const {
        PAINTSTRUCT paint;
        PaintInto(BeginPaint(window, &paint));
        EndPaint(window, &paint);
    }

    void PaintInto(HDC dc) const {
        const int saved = SaveDC(dc); // what is painted may select what it likes
        RECT client;
        GetClientRect(window, &client);
        Paint(dc, client);
        RestoreDC(dc, saved);
        a_DrawSelection(this, dc);
    }

    template <class Control>
    static void Create(HWND window, const CREATESTRUCTA& made) {
        SimpleControl* control = new Control;
        a_InitializeHostinfo(window, control, made.lpCreateParams);
        control->rectangle = {made.x, made.y, made.x + made.cx, made.y + made.cy};
        a_AddHostinfo(control->parent, control);
        a_HostinfoCreated(a_FindRootHostinfo(control), control);
    }

    void Destroy() {
        HOSTINFO* root = a_FindRootHostinfo(this);
        a_HostinfoDestroyed(root, this);
        a_CleanHostinfo(this);
        a_RemoveHostinfo(parent, this);
        delete this;
    }

    LRESULT Handle(UINT message, WPARAM wParam, LPARAM lParam) {
        switch (message) {
        case WM_DESTROY:
            Destroy();
            return 0;
        case WM_NCHITTEST:
            return HTTRANSPARENT; // the panel sees to the mouse
        case WM_PAINT:
            OnPaint();
            return 0;
        case WM_PRINTCLIENT:
            PaintInto(reinterpret_cast<HDC>(wParam));
            return 0;
        case WM_TIMER:
            return OnTimer(wParam, lParam);
        case WM_WINDOWPOSCHANGED: {
            const auto& place = *reinterpret_cast<const WINDOWPOS*>(lParam);
            if ((place.flags & (SWP_NOMOVE | SWP_NOSIZE)) != (SWP_NOMOVE | SWP_NOSIZE)) {
                GetWindowRect(window, &rectangle);
                MapWindowPoints(nullptr, GetParent(window), reinterpret_cast<POINT*>(&rectangle), 2);
            }
            return 0;
        }
        case CWM_MESSAGE:
            return OnMessage(wParam, lParam);
        case CWM_LOAD:
            return OnLoad(wParam, lParam);
        case CWM_SAVE:
            return OnSave(wParam, lParam);
        case CWM_SAVETOLISTCTRL:
            return OnSaveToListCtrl(wParam, lParam);
        case CWM_GETPROPERTIES:
            return reinterpret_cast<LRESULT>(static_cast<HOSTINFO*>(this));
        case CWM_GETCONTROLTYPE:
            return DATATYPE_FLOAT;
        case CWM_GETPREFERREDWIDTH:
            return rectangle.right - rectangle.left;
        default:
            return DefWindowProcA(window, message, wParam, lParam);
        }
    }

    template <class Control>
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
        try {
            if (message == WM_CREATE) {
                Create<Control>(window, *reinterpret_cast<const CREATESTRUCTA*>(lParam));
                return 0;
            }
            auto* control = static_cast<SimpleControl*>(a_FromWindow(window));
            return control != nullptr ? control->Handle(message, wParam, lParam)
                                      : DefWindowProcA(window, message, wParam, lParam);
        } catch (...) { // no memory
            return message == WM_CREATE || message == CWM_SAVE ? -1 : 0;
        }
    }

    float value_ = 0;
    DWORD asked_ = 0; // tick count of the last poll
};
