#pragma once

#include "Panel/common/Window.h"
#include "Panel/properties/ChoiceList.h"
#include "Panel/properties/FieldButton.h"
#include "Panel/properties/PropertyRows.h"
#include "base/Gdi.h"

#include <map>
#include <string>
#include <vector>

class Editor;

// The properties of all that is selected, at the right of an edited panel; those of the panel while nothing
// is. Each is edited in place. What cannot be its value is marked, and stays as it was typed until it is
// mended or put back, or something else is selected.
class PropertyPane : public Window {
public:
    PropertyPane() = default;
    ~PropertyPane() override;
    bool Create(HWND frame, HFONT font);
    // Whose panel it is about; null for none, and what is being typed is dropped.
    void SetEditor(Editor* editor);
    void Show(bool shown);
    bool IsShown() const { return isShown_; }
    int Width() const { return width_; }

    // Follows the selection and what others change; to be called often.
    void Update();
    // Sets what is being typed.
    void Finish();
    // Where keys go; it shows what was there when it comes back.
    void TakeFocus();
    bool HasFocus() const;
    // A key for one of its windows: whether it must not be a command of the program.
    bool KeepsKey(const MSG& message) const;

private:
    struct Line {
        bool isHeading;
        PropertyGroup group;
        std::size_t row; // not of a heading
    };
    struct Refusal {
        std::string typed;
        std::string why;
    };
    static constexpr int NO_LINE = -1;
    static constexpr int NOTE = 2; // the column behind name and value

    LRESULT OnMessage(UINT message, WPARAM wParam, LPARAM lParam) override;
    LRESULT OnNotify(NMHDR& header);
    static LRESULT CALLBACK PartProc(HWND part, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                     DWORD_PTR self) noexcept;
    bool OnListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    bool OnListKey(WPARAM key);
    bool OnEditMessage(UINT message, WPARAM wParam);
    bool OnEditKey(WPARAM key);

    // Layout.
    void MakeRowsHigher();
    void Arrange();
    void FitColumns();
    void ResizeTo(int width);
    RECT ValueCell(int line) const;
    int HelpTop() const;

    // What is shown.
    std::vector<HOSTINFO*> Objects() const; // as the editor has them now
    void Refill();
    void Replace(std::vector<PropertyRow> rows);
    std::string TitleText() const;
    void ShowTitle();
    const PropertyRow* RowAt(int line) const;
    static std::string IdOf(const PropertyRow& row);
    int FindLine(const std::string& id) const;
    const Refusal* RefusalOf(const PropertyRow& row) const;
    std::string ShownText(const PropertyRow& row) const;
    std::string NoteOf(int line) const;
    std::string CellText(int line, int column) const;
    int SelectedLine() const;
    void Select(int line);
    int NextLine(int line, int step) const; // of a property; NO_LINE at the end

    // Painting.
    void Paint() const;
    LRESULT DrawPart(const NMLVCUSTOMDRAW& draw) const;
    void DrawLine(HDC dc, int line) const;
    void DrawValue(HDC dc, const PropertyRow& row, RECT cell) const;

    // Editing.
    bool Set(const std::string& id, const std::string& text, int key = 0);
    void Activate(int line);
    void Toggle(const PropertyRow& row);
    void BeginEdit(int line);
    void PlaceEdit();
    bool Apply();
    void EndEdit();
    void PutBack(const std::string& id);
    void MoveOn(int step);
    void Step(int step);
    void OpenChooser();
    void Choose(const std::string& choice);
    void Suggest(bool all);
    const PropertyRow* EditedRow() const { return RowAt(FindLine(edited_)); }

    Editor* editor_ = nullptr;
    Font bold_;
    HFONT font_ = nullptr;
    HWND list_ = nullptr;
    ImageList rowHeight_;
    ChoiceList choices_;
    FieldButton button_;
    int width_ = 264;
    bool isShown_ = true;
    bool resizing_ = false;
    int grip_ = 0; // where its edge is held while it is resized

    std::vector<HOSTINFO*> objects_; // that the rows were read from; some may have gone
    std::vector<PropertyRow> rows_;
    std::vector<Line> lines_;
    std::map<std::string, Refusal> refused_;
    std::string title_;
    unsigned serial_ = 0;
    ULONGLONG nextRead_ = 0;

    HWND edit_ = nullptr;
    std::string edited_; // its row
    bool applying_ = false;
    std::vector<std::string> addresses_; // to choose from; read when they are first asked for
};
