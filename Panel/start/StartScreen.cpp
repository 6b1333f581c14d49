#include "Panel/start/StartScreen.h"

#include "Panel/common/Paths.h"
#include "Panel/resource.h"
#include "Panel/start/DemoPanels.h"
#include "Panelhost/Bitmap.h"
#include "base/FileNames.h"
#include "base/Threads.h"

#include <windowsx.h>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int MARGIN = 32;
constexpr int COLUMN = 216; // new panel and the like
constexpr int COMMANDS_TOP = 108;
constexpr int COMMAND_HEIGHT = 44;
constexpr int CARD_WIDTH = 220;
constexpr int CARD_HEIGHT = 184;
constexpr int GAP = 16;
constexpr int HEADING = 32;
constexpr int EMPTY = 32; // a line of text in place of cards
constexpr int LINE = 20;
constexpr int LINES_A_NOTCH = 3;
constexpr UINT CHOSEN = WM_APP; // posted to itself: a button may go with what is done

POINT CentreOf(const RECT& place) {
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
}

// How far it is to another place into the direction of an arrow key; negative when it does not lie there.
LONG WayTo(const RECT& from, const RECT& to, int key) {
    const POINT a = CentreOf(from);
    const POINT b = CentreOf(to);
    const bool isAcross = key == VK_LEFT || key == VK_RIGHT;
    const LONG along = (isAcross ? b.x - a.x : b.y - a.y) * (key == VK_LEFT || key == VK_UP ? -1 : 1);
    const LONG beside = isAcross ? b.y - a.y : b.x - a.x;
    const LONG least = isAcross ? 1 : std::min(from.bottom - from.top, to.bottom - to.top) / 2;
    return along < least ? -1 : along + 2 * std::abs(beside);
}

Font Derived(HFONT font, int percent, LONG weight) {
    LOGFONTA description{};
    GetObjectA(font, sizeof description, &description);
    description.lfHeight = description.lfHeight * percent / 100;
    description.lfWeight = weight;
    return Font(CreateFontIndirectA(&description));
}

std::wstring FolderOf(const std::wstring& file) {
    return file.substr(0, file.find_last_of(L"\\/"));
}

std::wstring TitleOf(const std::wstring& file) {
    const std::wstring name = file.substr(file.find_last_of(L"\\/") + 1);
    return name.ends_with(L".panel") ? name.substr(0, name.size() - 6) : name;
}

} // namespace

StartScreen::~StartScreen() {
    isShown_ = false;
    Clear();
}

bool StartScreen::Create(HWND frame, HFONT font, const RecentFiles& recent, Actions actions) {
    recent_ = &recent;
    actions_ = std::move(actions);
    font_ = font;
    titleFont_ = Derived(font, 220, FW_BOLD);
    headingFont_ = Derived(font, 125, FW_BOLD);
    nameFont_ = Derived(font, 100, FW_BOLD);
    return Window::Create("PanelStart", "Start page", WS_CHILD | WS_CLIPCHILDREN, WS_EX_CONTROLPARENT, {},
                          frame, nullptr, nullptr);
}

void StartScreen::Show(bool shown) {
    isShown_ = shown;
    if (!shown) {
        ShowWindow(Handle(), SW_HIDE);
        return Clear();
    }
    Fill();
    ShowWindow(Handle(), SW_SHOWNA);
}

void StartScreen::MoveTo(const RECT& place) const {
    SetWindowPos(Handle(), HWND_TOP, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOACTIVATE);
}

// What is listed.

void StartScreen::Clear() {
    hot_ = nullptr;
    for (const Item& item : std::exchange(items_, {})) {
        a_UnregisterBitmap(item.picture);
        DestroyWindow(item.button);
    }
    lookedUp_.reset();
}

void StartScreen::Fill() {
    Clear();
    AddItem({Kind::New, "", L"New panel...", L"Ctrl+N", ""});
    AddItem({Kind::Open, "", L"Open...", L"Ctrl+O", ""});
    for (const std::string& file : recent_->List()) {
        const std::wstring name = WideFileName(file);
        AddCard(Kind::Recent, file, TitleOf(name), FolderOf(name), recent_->PictureOf(file));
    }
    for (const DemoPanel& demo : DemoPanels()) {
        AddCard(Kind::Demo, demo.file, demo.name, demo.note, demo.picture);
    }
    LookUp();
    Arrange();
}

void StartScreen::AddCard(Kind kind, const std::string& file, std::wstring name, std::wstring note,
                          const std::string& pictureFile) {
    AddItem({kind, file, std::move(name), std::move(note), pictureFile});
}

void StartScreen::AddItem(Item item) {
    if (!item.pictureFile.empty() && FileExists(item.pictureFile)) {
        item.picture = a_GetBitmap3(item.pictureFile.c_str());
    }
    const std::wstring text = item.name + L", " + item.note; // for screen readers
    item.button = CreateWindowExW(0, L"BUTTON", text.c_str(),
                                  WS_CHILD | WS_VISIBLE | WS_TABSTOP | BS_OWNERDRAW | BS_NOTIFY, 0, 0, 0, 0,
                                  Handle(), nullptr, GetModuleHandleA(nullptr), nullptr);
    items_.push_back(std::move(item));
}

void StartScreen::LookUp() {
    const auto count = std::count_if(items_.begin(), items_.end(),
                                     [](const Item& item) { return item.kind == Kind::Recent; });
    const auto files = std::make_shared<LookedUpFiles>(static_cast<std::size_t>(count));
    auto next = files->begin();
    for (const Item& item : items_) {
        if (item.kind == Kind::Recent) {
            (next++)->file = item.file;
        }
    }
    lookedUp_ = files;
    RunAside([files] {
        for (LookedUp& one : *files) {
            const bool isThere = FileExists(one.file);
            one.name = FullFileName(WideFileName(one.file));
            one.state = isThere ? THERE : GONE;
        }
    });
}

void StartScreen::Tick() {
    if (!isShown_) {
        return;
    }
    for (std::size_t i = 0; lookedUp_ && i < lookedUp_->size(); ++i) {
        LookedUp& one = (*lookedUp_)[i];
        const int state = one.state.exchange(UNCERTAIN);
        Item& item = items_[i + 2]; // behind New and Open
        if (state != UNCERTAIN) {
            item.isGone = state == GONE;
            item.name = TitleOf(one.name);
            item.note = FolderOf(one.name);
            SetWindowTextW(item.button,
                           (item.name + L", " + item.note + (item.isGone ? L", not found" : L"")).c_str());
            InvalidateRect(item.button, nullptr, FALSE);
        }
    }
    POINT cursor{};
    GetCursorPos(&cursor);
    const HWND under = WindowFromPoint(cursor);
    const HWND hot = GetCapture() ? hot_ : ItemOf(under) ? under : nullptr;
    if (hot != hot_) {
        for (const HWND button : {std::exchange(hot_, hot), hot}) {
            if (button) {
                InvalidateRect(button, nullptr, FALSE);
            }
        }
    }
}

// Where it stands.

int StartScreen::ArrangeCards(Kind kind, int top, int columns) {
    int count = 0;
    for (Item& item : items_) {
        if (item.kind == kind) {
            const int left = MARGIN + COLUMN + MARGIN + count % columns * (CARD_WIDTH + GAP);
            const int y = top + count / columns * (CARD_HEIGHT + GAP);
            item.place = {left, y, left + CARD_WIDTH, y + CARD_HEIGHT};
            ++count;
        }
    }
    return count == 0 ? top + EMPTY : top + (count + columns - 1) / columns * (CARD_HEIGHT + GAP);
}

void StartScreen::Arrange() {
    if (arranging_ || !isShown_) { // showing the bar sizes the client area
        return;
    }
    arranging_ = true;
    RECT client;
    GetWindowRect(Handle(), &client); // it has no border
    OffsetRect(&client, -client.left, -client.top);
    const auto arrange = [&](int width) {
        const int left = MARGIN + COLUMN + MARGIN;
        const int columns = std::max(1, (width - left - MARGIN + GAP) / (CARD_WIDTH + GAP));
        items_[0].place = {MARGIN, COMMANDS_TOP, MARGIN + COLUMN, COMMANDS_TOP + COMMAND_HEIGHT};
        items_[1].place = items_[0].place;
        OffsetRect(&items_[1].place, 0, COMMAND_HEIGHT + GAP / 2);
        const int right = std::max(left + CARD_WIDTH, width - MARGIN);
        recentHeading_ = {left, MARGIN, right, MARGIN + HEADING};
        const int top = ArrangeCards(Kind::Recent, recentHeading_.bottom, columns) + GAP / 2;
        demoHeading_ = {left, top, right, top + HEADING};
        height_ = ArrangeCards(Kind::Demo, demoHeading_.bottom, columns) - GAP + MARGIN;
    };
    arrange(client.right);
    const bool hasBar = height_ > client.bottom;
    if (hasBar) {
        arrange(client.right - GetSystemMetrics(SM_CXVSCROLL));
    }
    position_ = std::clamp(position_, 0, std::max(0, height_ - static_cast<int>(client.bottom)));
    SCROLLINFO info{};
    info.cbSize = sizeof info;
    info.fMask = SIF_RANGE | SIF_PAGE | SIF_POS;
    info.nMax = height_ - 1;
    info.nPage = static_cast<UINT>(std::max(0L, client.bottom));
    info.nPos = position_;
    SetScrollInfo(Handle(), SB_VERT, &info, TRUE);
    ShowScrollBar(Handle(), SB_VERT, hasBar);
    for (const Item& item : items_) {
        SetWindowPos(item.button, nullptr, item.place.left, item.place.top - position_,
                     item.place.right - item.place.left, item.place.bottom - item.place.top,
                     SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    }
    InvalidateRect(Handle(), nullptr, FALSE);
    arranging_ = false;
}

void StartScreen::ScrollTo(int position) {
    position_ = position;
    Arrange();
}

void StartScreen::MakeVisible(const RECT& place) {
    RECT client;
    GetClientRect(Handle(), &client);
    const bool isFirst = place.top <= demoHeading_.bottom && place.top < client.bottom;
    if (place.top - GAP < position_) {
        ScrollTo(isFirst ? 0 : place.top - GAP);
    } else if (place.bottom + GAP > position_ + client.bottom) {
        ScrollTo(place.bottom + GAP - client.bottom);
    }
}

// Keys.

StartScreen::Item* StartScreen::ItemOf(HWND button) {
    const auto found =
        std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.button == button; });
    return found == items_.end() || !button ? nullptr : &*found;
}

void StartScreen::TakeFocus() {
    const auto recent = std::find_if(items_.begin(), items_.end(),
                                     [](const Item& item) { return item.kind == Kind::Recent; });
    if (!items_.empty() && !ItemOf(GetFocus())) {
        SetFocus(recent == items_.end() ? items_.front().button : recent->button);
    }
}

bool StartScreen::FocusBeside(const RECT& from, int key) {
    const Item* best = nullptr;
    for (const Item& item : items_) {
        const LONG way = WayTo(from, item.place, key);
        if (way >= 0 && (!best || way < WayTo(from, best->place, key))) {
            best = &item;
        }
    }
    return best && SetFocus(best->button);
}

void StartScreen::FocusNext(HWND from, bool backwards) {
    const auto at =
        std::find_if(items_.begin(), items_.end(), [&](const Item& item) { return item.button == from; });
    const std::size_t count = items_.size();
    const auto index = static_cast<std::size_t>(at - items_.begin()) % count;
    SetFocus(items_[(index + (backwards ? count - 1 : 1)) % count].button);
}

bool StartScreen::TranslateKey(const MSG& message) {
    if (!isShown_ || message.message != WM_KEYDOWN || items_.empty() ||
        (message.hwnd != Handle() && !IsChild(Handle(), message.hwnd))) {
        return false;
    }
    const Item* item = ItemOf(message.hwnd);
    switch (message.wParam) {
    case VK_TAB:
        FocusNext(message.hwnd, GetKeyState(VK_SHIFT) < 0);
        return true;
    case VK_LEFT:
    case VK_RIGHT:
    case VK_UP:
    case VK_DOWN:
        FocusBeside(item ? item->place : RECT{}, static_cast<int>(message.wParam));
        return true;
    case VK_HOME:
    case VK_END:
        SetFocus((message.wParam == VK_HOME ? items_.front() : items_.back()).button);
        return true;
    case VK_RETURN:
        if (item) {
            SendMessageA(item->button, BM_CLICK, 0, 0);
        }
        return true;
    case VK_DELETE:
        if (item && item->kind == Kind::Recent) {
            Remove(std::string(item->file));
        }
        return true;
    default:
        return false;
    }
}

// What is done.

void StartScreen::Choose() {
    const std::string file = std::exchange(chosen_, {});
    if (chosenKind_ == Kind::New || chosenKind_ == Kind::Open) {
        SendMessageA(GetParent(Handle()), WM_COMMAND, chosenKind_ == Kind::New ? CMD_NEW : CMD_OPEN, 0);
        return;
    }
    const auto isGone = [&](const Item& item) { return item.file == file && item.isGone; };
    if (std::none_of(items_.begin(), items_.end(), isGone)) {
        actions_.open(file);
    } else if (actions_.askRemoval(file)) {
        Remove(file);
    }
}

void StartScreen::Remove(const std::string& file) {
    recent_->Remove(file);
    if (isShown_) {
        const bool hadFocus = ItemOf(GetFocus()) != nullptr;
        Fill();
        if (hadFocus) {
            TakeFocus();
        }
    }
}

void StartScreen::ShowMenu(const Item& item, POINT point) {
    enum { OPEN = 1, REMOVE };
    const Menu menu(CreatePopupMenu());
    const std::string file = item.file;
    const HWND button = item.button;
    AppendMenuA(menu.get(), MF_STRING, OPEN, "&Open\tEnter");
    if (item.kind == Kind::Recent) {
        AppendMenuA(menu.get(), MF_STRING, REMOVE, "&Take Off the List\tDel");
    }
    SetMenuDefaultItem(menu.get(), OPEN, FALSE);
    const int command =
        TrackPopupMenu(menu.get(), TPM_RETURNCMD | TPM_RIGHTBUTTON, point.x, point.y, 0, Handle(), nullptr);
    if (command == REMOVE && isShown_) {
        Remove(file);
    } else if (command == OPEN && ItemOf(button)) {
        SendMessageA(button, BM_CLICK, 0, 0);
    }
}

LRESULT StartScreen::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
    case WM_PAINT:
        Paint();
        return 0;
    case WM_ERASEBKGND:
        return 1;
    case WM_DRAWITEM:
        Draw(*reinterpret_cast<const DRAWITEMSTRUCT*>(lParam));
        return TRUE;
    case WM_COMMAND:
        if (const Item* item = ItemOf(reinterpret_cast<HWND>(lParam))) {
            if (HIWORD(wParam) == BN_CLICKED) {
                chosen_ = item->file;
                chosenKind_ = item->kind;
                PostMessageA(Handle(), CHOSEN, 0, 0);
            } else if (HIWORD(wParam) == BN_SETFOCUS) {
                MakeVisible(item->place);
            }
        }
        return 0;
    case CHOSEN:
        if (isShown_) {
            Choose();
        }
        return 0;
    case WM_CONTEXTMENU:
        if (const Item* item = ItemOf(reinterpret_cast<HWND>(wParam)); item && !item->file.empty()) {
            POINT point{GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
            if (lParam == -1) { // by key
                point = CentreOf(item->place);
                point.y -= position_;
                ClientToScreen(Handle(), &point);
            }
            ShowMenu(*item, point);
        }
        return 0;
    case WM_SETFOCUS:
        TakeFocus();
        return 0;
    case WM_SIZE:
        Arrange();
        return 0;
    case WM_VSCROLL: {
        SCROLLINFO info{};
        info.cbSize = sizeof info;
        info.fMask = SIF_ALL;
        GetScrollInfo(Handle(), SB_VERT, &info);
        const int request = LOWORD(wParam);
        const int page = static_cast<int>(info.nPage);
        ScrollTo(request == SB_LINEUP                                      ? position_ - LINE
                 : request == SB_LINEDOWN                                  ? position_ + LINE
                 : request == SB_PAGEUP                                    ? position_ - page
                 : request == SB_PAGEDOWN                                  ? position_ + page
                 : request == SB_THUMBTRACK || request == SB_THUMBPOSITION ? info.nTrackPos
                 : request == SB_TOP                                       ? 0
                 : request == SB_BOTTOM                                    ? height_
                                                                           : position_);
        return 0;
    }
    case WM_MOUSEWHEEL:
        wheel_ += GET_WHEEL_DELTA_WPARAM(wParam);
        ScrollTo(position_ - wheel_ / WHEEL_DELTA * LINES_A_NOTCH * LINE);
        wheel_ %= WHEEL_DELTA;
        return 0;
    default:
        return Window::OnMessage(message, wParam, lParam);
    }
}
