#pragma once

#include "Controls/framework/Accessible.h"
#include "Controls/framework/ControlClass.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Root.h"
#include "logic/controls/Travel.h"
#include "logic/text/PropertyLine.h"

#include <optional>
#include <string>
#include <vector>

// The keyword table of a class and what more is known of its rows.
struct KeywordList {
    const KEYWORDROW* rows = nullptr;
    const KEYWORDINFO* infos = nullptr;
    int count = 0;
};

// Base of every control's property object: the common protocol over the control's keyword table.
class CONTROLPROPERTIES : public HOSTINFO {
public:
    // The keywords of the class.
    virtual KeywordList Keywords() const = 0;
    int HasHostinfoTable() override { return 1; }
    const KEYWORDROW* GetHostinfoTable() override { return Keywords().rows; }
    const KEYWORDINFO* GetKeywordInfo() const noexcept override { return Keywords().infos; }
    LRESULT OnLoad(WPARAM loadMode, LPARAM line) override;
    LRESULT OnSave(WPARAM saveCode, LPARAM file) override;
    LRESULT OnSaveToListCtrl(WPARAM wParam, LPARAM listView) override;
    LRESULT OnTimer(WPARAM timer, LPARAM lParam) override;
    LRESULT OnMessage(WPARAM wParam, LPARAM record) override;
    // Writes name, value and bindings with their state as one line for a status bar into the buffer of
    // TEXT_SIZE bytes at lParam. 1 when written.
    LRESULT OnGetTooltip(WPARAM wParam, LPARAM text) override;
    // Of all keywords but the main value it is text, in which each of them can be had.
    LRESULT OnGetDatatype(WPARAM wParam, LPARAM keyword) override;
    // What it is bound to is asked at once, not only when the interval has passed.
    LRESULT OnInterfaceworking(WPARAM isLive, LPARAM device) override;
    // Called by the panel itself: no exception leaves it.
    LRESULT OnSystem(WPARAM event, LPARAM lParam) override;
    // The next poll. A control that has more to do at a tick answers the least of all its times.
    DWORD DueIn(DWORD now) const noexcept override { return UntilPoll(now); }

    // What a control adds. Drawing changes nothing; the panel's background is there already.
    virtual const char* DefaultProperties() const { return nullptr; } // a property line loaded at creation
    virtual void SetDefaults() {}
    // Of the keywords that are saved, whether this one is at present.
    virtual bool IsSavedNow(const char* /*keyword*/) const { return true; }
    // The style that the header of a panel file has in place of that of the window.
    virtual DWORD StyleToSave(DWORD style) const { return style; }
    virtual void Created() {}    // all is set up and the object can be found: the last step of creation
    virtual void Destroying() {} // the window goes; the object can still be found
    virtual int ControlType() const { return controlClass->controlType; } // datatype of the main value
    virtual int ValueDatatype() const { return ControlType(); }           // in which it is kept
    virtual void Draw(HDC, const RECT& /*client*/) const {}
    virtual bool CoversGround() const { return false; } // whether Draw paints every pixel
    // Whether Draw shows by itself that a poll found a disagreement, in place of the not-equal sign.
    virtual bool DrawsNotEqual(const RECT& /*client*/) const { return false; }
    // What a status bar says of its value: the text of that.
    virtual std::string StatusText();
    // What it is called by whoever reads a panel out: its caption, or else its name.
    virtual std::string SpokenName() const;
    // STATE_SYSTEM_CHECKED, STATE_SYSTEM_PRESSED and the like.
    virtual LONG SpokenState() const { return 0; }
    // What Enter does, in a word, to what can be pressed; empty for all else.
    virtual std::string DefaultAction() const { return {}; }
    // How its value moves through a client area of that size, for a scale beside it; nothing without a value
    // that moves.
    virtual std::optional<logic::Travel> TravelIn(SIZE /*client*/) const { return std::nullopt; }
    virtual POINT NotEqualPlace() const { return {3, 3}; } // of the not-equal sign's top left corner
    virtual int PreferredWidth() const { return rectangle.right - rectangle.left; }
    // The interval has passed and no drag is going on. A control that asks nobody looks whether what it sends
    // would arrive.
    virtual void Poll() { ShowPollResult(WhetherLive()); }
    bool IsDark() const { return a_IsDark(this); } // the style of its panel
    virtual void StyleChanged() {}                 // it is another one; all is painted anew after that
    virtual void ArtChanged() {}                   // a_ArtScale answers otherwise
    virtual void BindingsChanged() {}              // functions or connections were replaced
    // Whether each binding has an offset of its own, all of which are saved as one value.
    virtual bool IsRelative() const { return false; }
    // A drag: begun by a press that is not the panel's (false: it starts nothing), moved, and ended by the
    // release or cancelled by the loss of the capture.
    virtual bool BeginDrag(POINT) { return false; }
    virtual void MoveDrag(POINT) {}
    virtual void EndDrag() {}
    virtual void CancelDrag() {}
    // A press on a child that takes no input itself and is not the panel's.
    virtual void ChildPressed(HWND /*child*/) {}
    // Whether the context menu has "Apply", and what it does: the value goes to all bindings once more.
    virtual bool OffersApply() const { return false; }
    virtual void Apply() {}

    // A hidden control is painted as a whole when it is shown, and so is a panel that is being loaded. Not to
    // invalidate it, nor to ask whether it is hidden, makes loading a panel faster.
    virtual void Redraw() const { RedrawArea(nullptr); }
    // The same for a part of the client area; null for all of it.
    void RedrawArea(const RECT* area) const {
        if (!a_IsLoading(this) && IsWindowVisible(window)) {
            InvalidateRect(window, area, FALSE);
        }
    }
    void PollSoon() { lastPoll = GetTickCount() - static_cast<DWORD>(interval) - 1; }
    // Milliseconds from the tick count "now" until the interval has passed since the last poll.
    DWORD UntilPoll(DWORD now) const noexcept;
    bool HasFocus() const { return (flags & FLAG_FOCUS) != 0; }
    // Asks everything in a list of this control for a value. data points to the one that is held and receives
    // a new one. The result of the poll.
    static int Ask(REQUESTLIST& list, int datatype, void* data);
    // REQUEST_UNCHANGED while every device parameter that it is bound to is live, else REQUEST_UNREACHABLE.
    int WhetherLive() const;
    // Shows by the not-equal sign what a poll found; redraws only when it changes.
    void ShowPollResult(int result);
    // What asking a list of this control for the value itself, in that datatype, has found. A value that
    // nobody has told since the control was bound, and that nobody can tell, is shown as NO_VALUE.
    void Answered(REQUESTLIST& list, int datatype, int result);
    // It is bound to something else.
    void ForgetAnswers();
    virtual void ShowValueAnew() {} // it is not known any more, or is again
    void ShowNotEqual(bool shown);
    // Resizes the window and the rectangle.
    void Resize(int width, int height);

    const ControlClass* controlClass = nullptr;
    bool dragging = false;
    bool isLoadingFile = false; // a line of a panel file is being loaded
    bool notEqual = false;      // a poll found that this control and what it is bound to disagree
    static constexpr const char* NO_VALUE = "–"; // in place of a value
    bool hasNoValue = false;
    int lastPollResult = REQUEST_UNCHANGED;
    DWORD lastPoll = 0; // tick count in milliseconds
    AccessibleLink accessible;

private:
    friend class Held;
    // A property line, split into its parts, which lie within it.
    LRESULT LoadLine(WPARAM loadMode, const char* line, const logic::PropertyLine& parts);
    std::string Header() const;
    void ShowNoValue(bool shown);
    DWORD SavedStyle() const;

    bool wasAnswered_ = false;
    int holds_ = 1; // one of its window, one of each Held
};

// Keeps an object in memory after its window is gone. The class procedure holds the object of its window, so
// whatever a message does - a request, a change of the focus, a question to the user - may end the control:
// the code behind it still has an object, unbound, without a panel and with a window handle that is dead.
class Held {
public:
    explicit Held(CONTROLPROPERTIES& control) : control_(control) { ++control.holds_; }
    ~Held() { Release(control_); }
    Held(const Held&) = delete;
    Held& operator=(const Held&) = delete;

    // Gives a hold up; the last one deletes.
    static void Release(CONTROLPROPERTIES& control) {
        if (--control.holds_ == 0) {
            delete &control;
        }
    }

private:
    CONTROLPROPERTIES& control_;
};

// The object of a control's window, or null before it is made and after it is gone.
template <class Properties>
Properties* PropertiesOf(HWND window) {
    return static_cast<Properties*>(reinterpret_cast<HOSTINFO*>(GetWindowLongA(window, GWL_USERDATA)));
}

// What a host gives as the object of a control of that class, or null: hosts know objects by their window and
// may be wrong about class and life.
template <class Properties>
Properties* LivingObject(HOSTINFO* object) {
    return a_IsAlive(object) ? dynamic_cast<Properties*>(object) : nullptr;
}

// Asks for a value that is to be changed and sent: that of the first target that answers. False when none
// does.
bool AskForValue(const REQUESTLIST& requests, int datatype, void* value);

template <class Properties>
CONTROLPROPERTIES* CreateProperties() {
    return new Properties;
}

// The implementation by that property class and window procedure; see ControlImplementation.
template <class Properties>
constexpr ControlImplementation Implement(WNDPROC procedure, int dialog = NO_DIALOG, const char* purpose = "",
                                          ControlImplementation::Share share = nullptr) {
    return {CreateProperties<Properties>, procedure, purpose, dialog, share};
}

// The items of a list, to be asked one by one: the list may be built anew meanwhile.
inline std::vector<REQUESTITEM> ItemsOf(const REQUESTLIST& requests) {
    return {requests.begin(), requests.end()};
}

// What all controls do with a message. A control's own procedure ends with it.
LRESULT CALLBACK CommonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// The same for a control that takes no input and no focus: a press is the panel's or nobody's.
LRESULT CALLBACK IndicatorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
// Background, control, not-equal sign and frame, drawn off screen and shown at once.
void DrawInto(CONTROLPROPERTIES& control, HDC target);
// The sequence of WM_PAINT.
void PaintControl(CONTROLPROPERTIES& control);
// Whether a press with these keys belongs to the panel, which is being edited or else gets it with Ctrl held.
bool IsPanelClick(const CONTROLPROPERTIES& control, WPARAM keys);
// Posts the message to the panel window with the cursor in that window's client coordinates.
void ForwardToPanel(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam);

// While the panel is edited, keys and the wheel are the panel's: posts the message to its window as it is.
// Whether it did.
bool PassInput(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam);

// The library itself, for resources and dialogs.
HINSTANCE ModuleInstance();
