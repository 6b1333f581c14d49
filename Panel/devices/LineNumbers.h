#pragma once

#include "Panel/common/Window.h"

#include <set>

// The numbers of the lines beside a text field that does not wrap them, some of them marked.
class LineNumbers : public Window {
public:
    static constexpr int WIDTH = 44; // pixels

    bool Create(HWND parent, HWND field, HFONT font);
    void Mark(std::set<int> lines); // from 1 on
    const std::set<int>& Marked() const { return marked_; }

private:
    static LRESULT CALLBACK FieldProcedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR,
                                           DWORD_PTR object) noexcept;
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Follow();
    void Paint() const;

    HWND field_ = nullptr;
    HFONT font_ = nullptr;
    int lineHeight_ = 0;
    int first_ = 0; // that is shown, from 0 on
    int count_ = 0;
    std::set<int> marked_;
};
