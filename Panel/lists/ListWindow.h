#pragma once

#include "Panel/common/Window.h"
#include "Panel/resource.h"

#include <span>
#include <string>

struct ListColumn {
    const char* title;
    int width; // pixels
};

// A window of its own beside the frame with a list of many lines that can be copied. Closing only hides it.
class ListWindow : public Window {
public:
    bool IsShown() const { return IsWindowVisible(Handle()); }
    void Show(bool shown);
    // Serves the window's keys: true when the message was one of them.
    virtual bool TranslateKey(MSG& message);

protected:
    // With the keys of the trace unless others (IDA_...) are given.
    bool Create(const char* className, const char* title, HWND frame, HFONT font, int menu,
                std::span<const ListColumn> columns, int keys = IDA_TRACE, DWORD listStyle = 0);
    HWND List() const { return list_; }
    // A field above the list, for which Top makes room.
    HWND AddField(const char* className, const char* text, DWORD style, DWORD exStyle, int id,
                  HFONT font) const;
    static std::string TextOf(HWND field);
    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    virtual void OnCommand(int command);
    virtual LRESULT OnListNotify(const NMHDR& header);
    // Pixels above the list.
    virtual int Top() const { return 0; }
    // Brings the list up to date.
    virtual void Update() = 0;
    virtual int Count() const = 0;
    virtual std::string Cell(int row, int column) const = 0;

private:
    void Place();
    void Copy() const;

    HWND list_ = nullptr;
    HACCEL keys_ = nullptr;
    int columns_ = 0;
    bool placed_ = false; // where its user moves it to, it stays
};
