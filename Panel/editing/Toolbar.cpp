#include "Panel/editing/Toolbar.h"

#include "Panel/common/CommandText.h"
#include "Panel/editing/Editor.h"
#include "Panel/editing/Icons.h"
#include "Panel/resource.h"
#include "Panel/theme/Theme.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace {

constexpr int FIRST_SEPARATOR = 100; // no command has so low a number

struct Button {
    int command = 0; // 0: a separator
    Icon icon = Icon::Count;
    BYTE style = BTNS_BUTTON;
};
constexpr Button BUTTONS[] = {
    {CMD_EDIT_MODE, Icon::Edit, BTNS_CHECK},
    {},
    {CMD_OPEN, Icon::Open},
    {CMD_SAVE, Icon::Save},
    {},
    {CMD_SNAPSHOTS, Icon::Snapshots},
    {CMD_VIEW_BINDINGS, Icon::Bindings},
    {CMD_CHECK, Icon::Check},
    {CMD_VIEW_TRACE, Icon::Trace},
    {},
    {CMD_UNDO, Icon::Undo},
    {CMD_REDO, Icon::Redo},
    {},
    {CMD_CUT, Icon::Cut},
    {CMD_COPY, Icon::Copy},
    {CMD_PASTE, Icon::Paste},
    {CMD_DUPLICATE, Icon::Duplicate},
    {},
    {CMD_ALIGN_LEFT, Icon::AlignLeft},
    {CMD_ALIGN_CENTRE_ACROSS, Icon::CentreAcross},
    {CMD_ALIGN_RIGHT, Icon::AlignRight},
    {CMD_ALIGN_TOP, Icon::AlignTop},
    {CMD_ALIGN_CENTRE_DOWN, Icon::CentreDown},
    {CMD_ALIGN_BOTTOM, Icon::AlignBottom},
    {CMD_DISTRIBUTE_ACROSS, Icon::DistributeAcross},
    {CMD_DISTRIBUTE_DOWN, Icon::DistributeDown},
    {},
    {CMD_TO_FOREGROUND, Icon::Foreground},
    {CMD_TO_BACKGROUND, Icon::Background},
    {},
    {CMD_GRID, Icon::Grid, BTNS_CHECK},
};

const Button* const FIRST_OF_EDITING = std::find_if(
    std::begin(BUTTONS), std::end(BUTTONS), [](const Button& button) { return button.command == CMD_UNDO; });

int IdOf(const Button& button) {
    return button.command != 0 ? button.command : FIRST_SEPARATOR + static_cast<int>(&button - BUTTONS);
}

} // namespace

Toolbar::~Toolbar() {
    if (IsWindow(bar_)) { // it may have gone with the frame
        DestroyWindow(bar_);
    }
}

bool Toolbar::Create(HWND frame) {
    bar_ =
        CreateWindowExA(0, TOOLBARCLASSNAMEA, "",
                        WS_CHILD | WS_VISIBLE | WS_CLIPSIBLINGS | TBSTYLE_FLAT | TBSTYLE_TOOLTIPS | CCS_TOP,
                        0, 0, 0, 0, frame, reinterpret_cast<HMENU>(static_cast<INT_PTR>(IDC_TOOLBAR)),
                        GetModuleHandleA(nullptr), nullptr);
    if (!bar_) {
        return false;
    }
    SendMessageA(bar_, TB_BUTTONSTRUCTSIZE, sizeof(TBBUTTON), 0);
    FollowTheme();
    SendMessageA(bar_, TB_SETMAXTEXTROWS, 0, 0); // the texts are shown as tooltips
    std::vector<TBBUTTON> buttons;
    texts_.reserve(std::size(BUTTONS)); // short ones stay where they are
    for (const Button& button : BUTTONS) {
        TBBUTTON added{};
        added.idCommand = IdOf(button);
        added.fsState = TBSTATE_ENABLED;
        added.fsStyle = button.command == 0 ? static_cast<BYTE>(BTNS_SEP) : button.style;
        added.iBitmap = button.command == 0 ? 0 : static_cast<int>(button.icon);
        texts_.push_back(CommandTooltip(button.command, GetMenu(frame)));
        added.iString = reinterpret_cast<INT_PTR>(texts_.back().c_str());
        buttons.push_back(added);
    }
    SendMessageA(bar_, TB_ADDBUTTONSA, buttons.size(), reinterpret_cast<LPARAM>(buttons.data()));
    Resize();
    return true;
}

void Toolbar::FollowTheme() {
    ImageList icons(MakeIcons(false));
    ImageList greyed(MakeIcons(true));
    SendMessageA(bar_, TB_SETIMAGELIST, 0, reinterpret_cast<LPARAM>(icons.get()));
    SendMessageA(bar_, TB_SETDISABLEDIMAGELIST, 0, reinterpret_cast<LPARAM>(greyed.get()));
    icons_ = std::move(icons);
    greyed_ = std::move(greyed);
}

void Toolbar::Show(bool shown) const {
    ShowWindow(bar_, shown ? SW_SHOWNA : SW_HIDE);
}

int Toolbar::Height() const {
    RECT bar{};
    if ((GetWindowLongA(bar_, GWL_STYLE) & WS_VISIBLE) != 0) {
        GetWindowRect(bar_, &bar);
    }
    return bar.bottom - bar.top;
}

void Toolbar::Resize() const {
    SendMessageA(bar_, TB_AUTOSIZE, 0, 0);
}

// In the dark theme: the system's edges and grounds are pale.
LRESULT Toolbar::Draw(const NMTBCUSTOMDRAW& draw) {
    if (!IsDarkTheme()) {
        return CDRF_DODEFAULT;
    }
    if (draw.nmcd.dwDrawStage != CDDS_ITEMPREPAINT) {
        return draw.nmcd.dwDrawStage == CDDS_PREPAINT ? CDRF_NOTIFYITEMDRAW : CDRF_DODEFAULT;
    }
    const UINT state = draw.nmcd.uItemState;
    if ((state & (CDIS_CHECKED | CDIS_HOT | CDIS_SELECTED)) != 0) {
        FillThemed(draw.nmcd.hdc, draw.nmcd.rc,
                   (state & CDIS_CHECKED) != 0 ? Colours().selection : Colours().raised);
    }
    return TBCDRF_NOEDGES | TBCDRF_NOBACKGROUND | TBCDRF_NOOFFSET;
}

LRESULT Toolbar::Answer(NMHDR& header) {
    if (header.code == static_cast<UINT>(NM_CUSTOMDRAW) && header.idFrom == IDC_TOOLBAR) {
        return Draw(reinterpret_cast<const NMTBCUSTOMDRAW&>(header));
    }
    if (header.code != static_cast<UINT>(TTN_GETDISPINFOA)) {
        return 0;
    }
    for (const Button& button : BUTTONS) {
        if (static_cast<UINT_PTR>(IdOf(button)) == header.idFrom) {
            reinterpret_cast<NMTTDISPINFOA&>(header).lpszText = texts_[&button - BUTTONS].data();
        }
    }
    return 0;
}

std::optional<int> Toolbar::PointedAt(const NMHDR& header) const {
    if (header.hwndFrom != bar_ || header.code != static_cast<UINT>(TBN_HOTITEMCHANGE)) {
        return std::nullopt;
    }
    const auto& change = reinterpret_cast<const NMTBHOTITEM&>(header);
    return (change.dwFlags & HICF_LEAVING) != 0 ? 0 : change.idNew;
}

void Toolbar::Update(const Editor& editor) const {
    for (const Button& button : BUTTONS) {
        const bool isAlways = &button < FIRST_OF_EDITING;
        const bool hidden = !editor.IsActive() && !isAlways;
        const bool enabled = isAlways || button.command == 0 || editor.IsEnabled(button.command);
        const int state = (enabled ? TBSTATE_ENABLED : 0) |
                          (editor.IsChecked(button.command) ? TBSTATE_CHECKED : 0) |
                          (hidden ? TBSTATE_HIDDEN : 0);
        const auto id = static_cast<WPARAM>(IdOf(button));
        const LRESULT now = SendMessageA(bar_, TB_GETSTATE, id, 0);
        if ((now & ~TBSTATE_PRESSED) != state) {
            SendMessageA(bar_, TB_SETSTATE, id, MAKELPARAM(state | (now & TBSTATE_PRESSED), 0));
        }
    }
}
