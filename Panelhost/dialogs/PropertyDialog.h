#pragma once

#include "Panelhost/dialogs/Dialog.h"
#include "Panelhost/dialogs/resource.h"
#include "base/Gdi.h"

#include <commctrl.h>
#include <optional>
#include <string>
#include <vector>

struct Property {
    std::string keyword;
    std::string value;                  // as the object gave it last
    std::optional<std::string> refused; // what was typed and not taken

    const std::string& Shown() const { return refused ? *refused : value; }
    std::string Note() const;
};

// The generic property dialog: the keywords of an object with their values, each edited in place and applied
// as a property line. A value that the object refuses stays as it was typed, with a note beside it, until it
// is mended or put back.
class PropertyDialog : public ObjectDialog {
public:
    static constexpr int TEMPLATE = IDD_PROPERTIES;
    explicit PropertyDialog(HOSTINFO* object) : ObjectDialog(TEMPLATE, object) {}

private:
    enum Column { COLUMN_KEYWORD, COLUMN_VALUE, COLUMN_NOTE };

    void OnCreate() override;
    bool OnObjectMessage(UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) override;
    void OnResized() override;
    void Refresh() override;

    void MakeRowsHigher();
    std::vector<Property> Read() const;
    void Replace(std::vector<Property> properties);
    void Show(int row) const;
    int Find(const std::string& keyword) const;
    RECT Cell(int row, int column) const;
    void DrawNote(HDC dc, int row) const;
    LRESULT DrawCell(const NMLVCUSTOMDRAW& draw) const;

    // The edit field over a value.
    void BeginEdit(int row);
    void PlaceEdit() const;
    // Sends what was typed. False when it was refused, or the dialog went meanwhile.
    bool Apply();
    std::string ValueFor(const std::string& keyword, const std::string& typed) const;
    void EndEdit();
    void ApplyAndMove(int step, bool edit);
    void PutBack(int row);
    bool IsRefused(int row) const;

    std::optional<LRESULT> OnPartMessage(HWND part, UINT message, WPARAM wParam, LPARAM lParam) override;
    std::optional<LRESULT> OnListMessage(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> OnEditMessage(HWND edit, UINT message, WPARAM wParam, LPARAM lParam);
    bool OnListKey(UINT message, WPARAM key);
    bool WantsListKey(const MSG* key) const;
    bool OnEditKey(WPARAM key);
    void OnEditLeft(HWND to);
    void TryClose();

    HWND list_ = nullptr;
    HWND scratch_ = nullptr; // the object writes its values here; what differs is taken over
    HWND edit_ = nullptr;
    std::string edited_;    // keyword
    bool applying_ = false; // what the object does meanwhile may move the focus
    std::vector<Property> properties_;
    ImageList rowHeight_;
};
