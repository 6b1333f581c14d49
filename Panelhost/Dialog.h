#pragma once

#include "Panelhost/Api.h"

#include <windows.h>

#include <memory>
#include <vector>

// How a control follows the size of its dialog: the share in percent of the growth by which each edge moves.
struct ResizeRule {
    int id;
    int left, top, right, bottom;
};

// A dialog: sized by its border, coloured like all parameter dialogs. It holds itself alive until its window
// is gone and the last of its messages is done; made with std::make_shared.
class PANELHOST_API Dialog : public std::enable_shared_from_this<Dialog> {
public:
    virtual ~Dialog();
    Dialog(const Dialog&) = delete;
    Dialog& operator=(const Dialog&) = delete;

    // Null once the window is gone: after every call that hands control to others.
    HWND Handle() const { return handle_; }
    HWND Item(int id) const { return GetDlgItem(handle_, id); }

protected:
    Dialog();

    // From a template of that module. Not yet shown. Null on failure.
    HWND CreateModeless(HINSTANCE module, int templateId, HWND owner);
    // The same from a template in memory, in either form of it.
    HWND CreateModeless(HINSTANCE module, const DWORD* dialogTemplate, HWND owner);
    // The result of EndDialog, or nothing above 0 when the dialog went with its owner.
    INT_PTR RunModal(HINSTANCE module, int templateId, HWND owner);
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
    bool KeepFocus(UINT message, WPARAM wParam);

    HWND handle_ = nullptr;
    bool closing_ = false;
    HWND focus_ = nullptr; // of its items, the one that gets the focus back
    std::shared_ptr<Dialog> self_;
    std::vector<Place> places_;
    SIZE smallestClient_{};
    SIZE smallestWindow_{};
};
