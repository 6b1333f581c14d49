#pragma once

#include "Panel/common/Window.h"
#include "base/Gdi.h"
#include "Panel/editing/ObjectRows.h"

#include <windows.h>
#include <commctrl.h>

#include <functional>
#include <set>
#include <string>
#include <unordered_set>
#include <vector>

class Editor;

// The list of all objects of an edited panel, below the palette. What is selected in it is selected on the
// panel, and the other way round. Its order is that of saving, of the tab key and on the screen.
class ObjectPane : public Window {
public:
    static constexpr int LEAST_HEIGHT = 140;

    ObjectPane() = default;
    ~ObjectPane() override;
    // What its upper edge is dragged by is told in pixels.
    bool Create(HWND frame, HFONT font, std::function<void(int by)> resize);
    // Whose panel it shows; null for none.
    void SetEditor(Editor* editor);
    void Show(bool shown) { ShowWindow(Handle(), shown ? SW_SHOWNA : SW_HIDE); }
    // Follows the panel.
    void Update();
    // Keys of the list and of the field above it: true when the message was one.
    bool TranslateKey(const MSG& message);

private:
    enum Column { NAME, SEEN, LOCK };

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(NMHDR& header);
    LRESULT OnCustomDraw(const NMLVCUSTOMDRAW& draw) const;
    void FollowTheme();
    void Arrange() const;
    void ShowSelection();
    void TakeSelection();
    void ToggleOpen(int row);
    void OnClick(POINT point);
    void OpenChosen();
    void EditName(int row);
    void Rename();
    void Drag(POINT screen);
    void EndDrag(bool drop);
    // Rows (ObjectPaneRows.cpp).
    void ShowRows();
    void FillItem(LVITEMA& item) const;
    void DrawGroups(HDC dc) const;
    HOSTINFO* ObjectOf(int row) const; // a control that is there, or null
    int RowOf(const HOSTINFO* object) const;

    HWND search_ = nullptr;
    HWND list_ = nullptr;
    HWND hint_ = nullptr;
    std::set<std::string> notLive_; // devices, by name
    int lamps_[2] = {};             // among the tiles, by whether the device is live
    ImageList tiles_;
    HIMAGELIST signs_ = nullptr;
    std::function<void(int)> resize_;
    Editor* editor_ = nullptr;
    std::vector<ObjectRow> rows_;
    std::vector<std::string> names_; // of the rows when they were shown
    std::unordered_set<const HOSTINFO*> open_;
    std::vector<HOSTINFO*> shown_; // as selected
    bool following_ = false;       // the list is changed by the pane, not by the user
    bool taking_ = false;          // a message is posted to take the user's selection
    bool naming_ = false;          // a name is being typed
    HOSTINFO* named_ = nullptr;    // what is to get a name, and which
    std::string newName_;
    std::vector<HOSTINFO*> dragged_;
    RowGap gap_;
    int grip_ = -1; // y of the upper edge's drag, from the pane's top
};
