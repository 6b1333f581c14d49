#pragma once

#include "Panelhost/Hostinfo.h"

#include <windows.h>

#include <memory>
#include <vector>

// How a control follows the size of its dialog: the share in percent of the growth by which each edge moves.
struct ResizeRule {
    int id;
    int left, top, right, bottom;
};

// A dialog of this library: sized by its border, coloured like all parameter dialogs. It holds itself alive
// until its window is gone and the last of its messages is done.
class Dialog : public std::enable_shared_from_this<Dialog> {
public:
    virtual ~Dialog() = default;
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Null once the window is gone: after every call that hands control to others.
    HWND Handle() const { return handle_; }
    HWND Item(int id) const { return GetDlgItem(handle_, id); }

protected:
    Dialog() = default;

    // Not yet shown. Null on failure.
    HWND CreateModeless(int templateId, HWND owner);
    // The result of EndDialog, or nothing above 0 when the dialog went with its owner.
    INT_PTR RunModal(int templateId, HWND owner);
    // Moves it to the cursor, as far as it stays on the monitor there, and shows it.
    void ShowAtCursor();
    void Close();
    // Takes the present size as the smallest one.
    void SetLayout(std::vector<ResizeRule> rules);

    virtual void OnCreate() = 0;
    // True when it was handled; the result is then the message's.
    virtual bool OnMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result);
    virtual void OnResized() {}
    virtual bool IsHeader(int) const { return false; } // a section header

private:
    struct Place {
        ResizeRule rule;
        RECT rectangle; // at the smallest size
    };

    static INT_PTR CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept;
    HBRUSH ColourStatic(HDC dc, HWND item) const;
    void Arrange();

    HWND handle_ = nullptr;
    bool closing_ = false;
    std::shared_ptr<Dialog> self_;
    std::vector<Place> places_;
    SIZE smallestClient_{};
    SIZE smallestWindow_{};
};

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
