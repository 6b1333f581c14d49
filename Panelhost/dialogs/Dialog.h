#pragma once

#include "Panelhost/Dialog.h"
#include "Panelhost/Hostinfo.h"

// This library, for its templates; its common controls are registered.
HINSTANCE DialogModule();

// A dialog about one object. It goes with its object, and follows what is loaded into it.
class ObjectDialog : public Dialog {
public:
    ~ObjectDialog() override;

protected:
    // The template says what dialog it is: one of each is open for an object.
    ObjectDialog(int templateId, HOSTINFO* object);

    // Brings the open dialog of an object to the front. Null when there is none.
    static HWND Raise(int templateId, const HOSTINFO* object);
    HWND Open(HWND owner);

    HOSTINFO* Object() const { return object_; }
    // Sends a property line. True when the object took it. The dialog may be gone afterwards.
    bool Load(const std::string& line) const;
    // Shows the object as it is now.
    virtual void Refresh() = 0;

    void OnCreate() override; // an own one ends with this one
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) final;
    // The messages that come while the object lives.
    virtual bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);

private:
    static LRESULT CALLBACK ObjectProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR dialog) noexcept;
    bool ObjectLives() const;

    int templateId_;
    HOSTINFO* object_;
    HWND objectWindow_;
    bool refreshPosted_ = false;
};
