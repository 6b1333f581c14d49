#pragma once

#include "Controls/dialog/DialogFields.h"
#include "Controls/framework/Control.h"
#include "Controls/resources/resource.h"
#include "Panelhost/Dialog.h"
#include "Panelhost/Editing.h"
#include "base/Guard.h"

#include <string>
#include <vector>

// The dialog of one control at a time. What it does may end the control, and the dialog with it: the control
// is held while a message is handled, and both windows are dead handles from then on.
class ControlDialog : public Dialog {
public:
    explicit ControlDialog(CONTROLPROPERTIES& control) : object(&control), fields(DialogFieldsOf(control)) {}
    bool Open(HWND owner);
    ~ControlDialog() override { ForgetOpen(); }
    using Dialog::Close;
    using Dialog::ShowAtCursor;

    // Makes it the dialog of that control.
    void SetObject(CONTROLPROPERTIES& control);
    // What could not be done; empty for nothing.
    void ShowStatus(const std::string& text) const {
        SetDlgItemTextA(Handle(), IDC_DIALOG_STATUS, text.c_str());
    }
    // False when the control refuses the line.
    bool SendLine(const std::string& line) const { return a_ApplyEdit(object, line.c_str()) != 0; }
    // A keyword of the control as text.
    std::string KeywordText(const char* keyword) const;
    std::string ItemText(int id) const;

    CONTROLPROPERTIES* object;
    std::vector<DialogField> fields; // in the dialog; the same for all controls of a class
    HWND advanced = nullptr;         // the generic property dialog opened from here
    bool filling = false;            // the fields are being set by the program

private:
    // The base is in the host library, into which no exception may go.
    void OnCreate() override {
        Guarded([this] { Initialize(); });
    }
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override {
        return Guarded(true, [&] { return HandleMessage(message, wParam, lParam, result); });
    }
    void Initialize();
    bool HandleMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    bool IsHeader(int id) const override;
    void Ended();
    void ForgetOpen();

    // What GWL_USERDATA of the window points to.
    struct Context {
        HOSTINFO* object;
        HOSTINFO* root;
        HOSTINFO* sameObject;
    };
    Context context_{};
};
