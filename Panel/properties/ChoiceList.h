#pragma once

#include "Panel/common/Window.h"

#include <functional>
#include <string>
#include <vector>

// A list that drops down from a field. It never takes the focus: who has it hands keys on.
class ChoiceList : public Window {
public:
    using Chosen = std::function<void(const std::string& choice)>;

    bool Create(HWND owner, HFONT font, Chosen chosen);
    // Below the field, or above it where there is more room; nothing is shown without choices. The marked one
    // is -1 for none.
    void Show(HWND field, const std::vector<std::string>& choices, int marked);
    void Hide();
    bool IsShown() const { return field_ != nullptr; }
    // Hides it when its field has moved or gone.
    void Follow();
    // Moves the mark; from none to the first or the last.
    void MoveMark(int step) const;
    void Scroll(int wheel) const;
    // The marked one; nothing while there is none.
    std::string Marked() const;

private:
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    static LRESULT CALLBACK ListProc(HWND list, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self) noexcept;
    int ItemAt(LPARAM point) const;

    HWND list_ = nullptr;
    HWND field_ = nullptr; // it is shown for; null while it is hidden
    RECT place_{};         // of the field on the screen
    Chosen chosen_;
};
