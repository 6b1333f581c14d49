#pragma once

#include "Controls/drawing/FontProperty.h"
#include "Controls/framework/Keywords.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

// Base of the forms: controls of a fixed size, full of the system's lists, fields and buttons, that
// show and edit one block of a device.

enum class FormPart {
    Label,
    Title,    // centred, can be clicked
    List,     // drop-down list that is drawn here
    TextList, // drop-down list that draws itself
    Field,    // takes one line; reports Enter, Escape and the loss of the focus
    Spin,     // arrows of the field in the row before
    Toggle,   // button that stays down
};

// A row of the layout of a panel. Rows are made in their order; the tab order goes by the ids.
struct FormChild {
    FormPart part;
    const char* text;
    int x, y, width, height; // pixels; a list's height includes what drops down; a spin needs none
    int id = 0;
    DWORD style = 0; // beyond what the part has: WS_TABSTOP above all
    bool isHidden = false;
};

// Codes of the notifications that fields send to their panel.
constexpr UINT FIELD_ESCAPE = 0;
constexpr UINT FIELD_ENTER = 1;
constexpr UINT FIELD_LEFT = static_cast<UINT>(-8);
constexpr UINT FIELD_AGAIN = static_cast<UINT>(-18); // the panel asks for it itself

class FORMPROPERTIES : public CONTROLPROPERTIES {
public:
    void SetDefaults() override;
    void Destroying() override;
    void Draw(HDC dc, const RECT& client) const override;
    POINT NotEqualPlace() const override { return {5, 22}; }
    void Redraw() const override;
    void Poll() final;

    // What a panel is made of.
    virtual std::span<const FormChild> Layout() const = 0;
    virtual SIZE FixedSize() const = 0;
    // Asks for the record. Not called while a list is dropped down, which is the user's until it closes.
    virtual void PollBlock() = 0;
    // A field is done with: what was typed, or null where its text is still the one that was shown.
    virtual void CommitField(int id, const std::string* typed) = 0;
    virtual void StepField(int id, int steps) = 0; // by its arrows: up, or down where negative
    virtual void ItemSelected(int listId, int item) = 0;
    virtual void Toggled(int id, bool isDown) = 0;
    virtual int FirstId(bool backwards) const = 0; // of the child that Tab enters by
    // Whether a title is drawn in the focus colour.
    virtual bool IsMarked(int titleRow) const = 0;
    // Whether a row belongs to what is bypassed, and the ground with all of it. Panels of the style "dark"
    // show it.
    virtual bool IsDimmed(int /*row*/) const { return false; }
    virtual bool IsGroundDimmed() const { return false; }
    virtual void ChildFocused(int /*id*/) {}
    virtual void TitleClicked(int /*id*/) {}
    // Copy and paste: the menu for a child, or for the panel itself (null), at a point of the screen.
    virtual void ShowMenu(HWND child, POINT place) = 0;
    // What a list shows that holds none of its items, and a picture at the right end of an item of the list
    // that is dropped down: the closed one is too narrow for it.
    virtual const char* UnlistedText(int /*listId*/) const { return ""; }
    virtual void DrawPicture(int /*listId*/, int /*item*/, HDC, const RECT& /*place*/) const {}

    void FocusChanged() const;
    void DimmedChanged() const; // IsDimmed answers otherwise
    int FocusKeyword(VALUERECORD& record);

    bool isFocused = false;            // keyword "focus"
    COLORREF focusColour = 0x0000C800; // of the titles, while it is set

    HWND Child(int row) const { return children_[static_cast<std::size_t>(row)]; }
    HWND Item(int id) const { return GetDlgItem(window, id); }
    int RowOfChild(HWND child) const; // -1 for none
    bool HasArrows(int row) const;    // a field, in the row behind it
    // A child that goes while it has the focus gives it to the panel, and what was typed in it is dropped.
    void ShowChild(int row, bool isShown);
    void EnableItem(int id, bool isEnabled);
    void SetLabel(int row, const std::string& text) const;
    void FillList(int id, std::span<const std::string_view> texts) const;
    void Select(int listId, int item) const; // none where the list has no such item
    void Check(int id, bool isDown) const;
    // Puts a text into a field. The second leaves a field alone that is being typed in.
    void ShowField(int id, const std::string& value);
    void FollowField(int id, const std::string& text);
    // What was typed into a field and is not committed yet.
    std::optional<std::string> Typed(int id) const;
    // Has the field committed once more.
    void CommitAgain(int fieldId);

    // The menu of the resource at a point of the screen, with "paste" greyed where there is nothing to paste.
    // The command, 0 when none was chosen or the control is gone.
    int TrackMenu(int resource, bool canPaste, POINT place);

    // For the window procedures.
    const FormChild* RowOf(int id) const;
    void FieldNotified(int id, UINT code);
    bool MoveFocus(HWND from, bool backwards, bool isAsked); // false: to leave the panel
    void EnterByTab(bool backwards);
    void LeaveByTab(bool backwards) const;
    HBRUSH LabelColours(HDC dc, HWND label) const;

private:
    void RedrawParts() const; // with their frames
    COLORREF GroundColour() const;
    bool IsTyped(int id) const;
    std::string FieldText(int id) const;
    std::string& ShownText(int id);
    void GiveFocusAway(int id);

    FontProperty font_;
    std::vector<HWND> children_;     // by row
    std::vector<std::string> shown_; // text that was last put into each row's field
    bool isTrackingMenu_ = false;
};

// Window procedure of the forms.
LRESULT CALLBACK FormProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

// Keywords of the forms.
inline constexpr Keyword FOCUS_KEYWORD =
    Handled<&FORMPROPERTIES::FocusKeyword>("focus", KeywordKind::Integer)
        .Says("1 while the title is drawn in the focus colour, else 0; any text that does not begin with 0 "
              "is 1.");
inline constexpr Keyword FOCUS_COLOUR_KEYWORD =
    Colour<&FORMPROPERTIES::focusColour>("focuscolor")
        .Label("Focus colour")
        .Items(IDC_FOCUS_COLOUR, IDC_CHOOSE_FOCUS_COLOUR)
        .Says("Colour of the title while `focus` is set, `0x00bbggrr`.");
