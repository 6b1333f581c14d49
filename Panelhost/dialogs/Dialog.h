#pragma once

#include "Panelhost/Dialog.h"
#include "Panelhost/Hostinfo.h"

#include <optional>
#include <string>

// This library, for its templates; its common controls are registered.
HINSTANCE DialogModule();

// A dialog about one object. It goes with its object, and follows what is loaded into it.
class ObjectDialog : public Dialog {
public:
    ~ObjectDialog() override;

    // The dialog of that class about an object: the open one brought to the front, or a new one. Null when it
    // cannot be had.
    template <class Kind>
    static HWND RaiseOrOpen(HOSTINFO* object, HWND owner) {
        const HWND open = Raise(Kind::TEMPLATE, object);
        return open != nullptr ? open : std::make_shared<Kind>(object)->Open(owner);
    }

protected:
    // The template says what dialog it is: one of each is open for an object.
    ObjectDialog(int templateId, HOSTINFO* object);

    HOSTINFO* Object() const { return object_; }
    // Sends a property line. True when the object took it. The dialog may be gone afterwards.
    bool Load(const std::string& line) const;
    // Shows the object as it is now.
    virtual void Refresh() = 0;

    void OnCreate() override; // an own one ends with this one
    bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) final;
    // The messages that come while the object lives.
    virtual bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    // Lets the dialog have the messages of that window, a part of it, before the window itself.
    void Watch(HWND part);
    // A message of a watched window. Its result when it was handled, and nothing when it goes on to the
    // window.
    virtual std::optional<LRESULT> OnPartMessage(HWND part, UINT message, WPARAM wParam, LPARAM lParam);

private:
    // Brings the open dialog of an object to the front. Null when there is none.
    static HWND Raise(int templateId, const HOSTINFO* object);
    HWND Open(HWND owner);
    static LRESULT CALLBACK PartProc(HWND part, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR dialog) noexcept;
    static LRESULT CALLBACK ObjectProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                       DWORD_PTR dialog) noexcept;
    bool ObjectLives() const;

    int templateId_;
    HOSTINFO* object_;
    HWND objectWindow_;
    bool refreshPosted_ = false;
};
