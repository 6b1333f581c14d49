#include "Panel/PanelWindow.h"

#include "Panel/LoadProgress.h"
#include "Panel/common/Paths.h"
#include "Panelhost/Editing.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Hostinfo.h"
#include "Panelhost/Messages.h"
#include "Panelhost/Operating.h"
#include "Panelhost/PropertyLines.h"
#include "Panelhost/Root.h"
#include "Panelhost/Snapshots.h"
#include "Panelhost/ValueRecord.h"
#include "base/Handles.h"

#include <windowsx.h>

#include <algorithm>

namespace {

// A panel that does not state its size.
constexpr int MARGIN = 10;
constexpr int LEAST_WIDTH = 320;
constexpr int LEAST_HEIGHT = 200;

// Why a file could not be read, in the system's words where it has some.
std::string ReadFailure(const std::string& file) {
    const DWORD attributes = GetFileAttributesA(file.c_str());
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY)) {
        return "it is a folder";
    }
    const Handle opened = MakeFile(CreateFileA(file.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                               OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
    return opened ? "it cannot be read" : ErrorText(GetLastError());
}

// What a load function answered: empty when the file can be used.
std::string LoadFailure(int created, HOSTINFO* root, const std::string& file, const char* kind) {
    if (created < 0) {
        return "cannot open " + std::string(kind) + " file " + file + ": " + ReadFailure(file);
    }
    return created == 0 && a_LoadErrorCount(root) > 0 ? file + " is not a " + kind + " file" : "";
}

} // namespace

std::unique_ptr<PanelWindow> PanelWindow::Open(HWND view, const PanelSource& source, LoadProgress& progress,
                                               const PanelEdits::Warning& warn, std::string& error) {
    std::unique_ptr<PanelWindow> panel(new PanelWindow);
    // Hidden while it is filled: creating thousands of visible children is slow.
    if (!panel->Create("PanelWindow", "", WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, WS_EX_CONTROLPARENT,
                       {0, 0, LEAST_WIDTH, LEAST_HEIGHT}, view, nullptr,
                       reinterpret_cast<HBRUSH>(static_cast<INT_PTR>(COLOR_BTNFACE + 1)))) {
        error = "cannot make a panel window: " + ErrorText(GetLastError());
        return nullptr;
    }
    if (!panel->Load(source, progress, warn, error)) {
        return nullptr;
    }
    return panel;
}

bool PanelWindow::Load(const PanelSource& source, LoadProgress& progress, const PanelEdits::Warning& warn,
                       std::string& error) {
    root_ = ph_CreateRoot(Handle(), FileName(source.panelFile).c_str());
    if (!root_) {
        error = "cannot make a panel";
        return false;
    }
    error.clear();
    if (source.follows) {
        a_SetNeverSendsOnOpen(root_);
    }
    panelFile_ = source.panelFile;
    const int devices = source.deviceFile.empty() ? 0 : ph_LoadDevices(root_, source.deviceFile.c_str());
    NoteDevices(devices, source.deviceFile);
    editor_ = std::make_unique<Editor>(Handle(), root_, warn);
    ph_SetLoadProgress(root_, LoadProgress::Tell, &progress);
    const bool isLoaded = LoadControls(source, error);
    ph_SetLoadProgress(root_, nullptr, nullptr);
    if (progress.IsCancelled()) {
        error.clear();
        return false;
    }
    namedDevices_ = NamedDevices();
    if (source.deviceFile.empty()) {
        NoteDevices(0, "");
    }
    return isLoaded;
}

// A panel without its devices is shown nevertheless, and says what is missing.
void PanelWindow::NoteDevices(int created, const std::string& file) {
    deviceFile_ = file;
    deviceFault_.clear();
    if (file.empty()) {
        if (HasFunctions()) {
            deviceFault_ = "There is no device file " + FileName(WithExtension(panelFile_, ".devices")) +
                           " beside the panel.";
        }
        return;
    }
    const std::string unusable = LoadFailure(created, root_, file, "device");
    for (const std::string& fault : a_DeviceFaults(root_)) {
        if (created >= 0) { // else the system's reason says more
            deviceFault_ += (deviceFault_.empty() ? "" : " ") + fault + ".";
        }
    }
    if (deviceFault_.empty() && !unusable.empty()) {
        deviceFault_ = unusable + ".";
    }
}

void PanelWindow::ReloadDevices(const std::string& file) {
    namedDevices_ = NamedDevices();
    NoteDevices(ph_ReloadDevices(root_, file.c_str()), file);
}

bool PanelWindow::HasFunctions() const {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(root_);
    return std::any_of(objects.begin(), objects.end(),
                       [](const HOSTINFO* object) { return !object->functions.empty(); });
}

bool PanelWindow::LoadControls(const PanelSource& source, std::string& error) {
    if (source.copy) {
        if (a_LoadText(root_, source.copy->panel, "Copy") < 0) {
            error = "cannot open the copy";
            return false;
        }
        a_SetPanelFile(root_, source.panelFile.c_str()); // what lies beside it is meant
        editor_->Edits().MarkUnsaved(source.copy->changes);
        return true;
    }
    if (const std::string& file = source.panelFile; file.empty()) {
        const bool isMade =
            a_LoadText(root_, source.text.empty() ? "style=dark\r\n" : source.text, "New panel") >= 0;
        error = isMade ? "" : "cannot make a panel";
    } else {
        error = LoadFailure(ph_LoadPanel(root_, file.c_str()), root_, file, "panel");
    }
    return error.empty();
}

PanelWindow::~PanelWindow() {
    editor_.reset();
    ph_DestroyRoot(root_);
}

bool PanelWindow::Save(const std::string& file, const std::string& namedDevices, std::string& error) {
    const std::string before = NamedDevices();
    const auto name = [this](const std::string& devices) {
        if (devices != NamedDevices()) {
            const std::string line = "devices=" + devices;
            SendMessageA(Handle(), CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line.c_str()));
            namedDevices_ = NamedDevices();
        }
    };
    name(namedDevices);
    SetLastError(ERROR_SUCCESS);
    if (ph_SavePanel(root_, file.c_str()) != 0) {
        panelFile_ = file;
        editor_->Edits().MarkSaved();
        return true;
    }
    const DWORD code = GetLastError();
    name(before);
    error = "cannot save " + file + ": " + (code != ERROR_SUCCESS ? ErrorText(code) : "it cannot be written");
    return false;
}

bool PanelWindow::IsChanged() const {
    return a_IsChanged(root_);
}

bool PanelWindow::HasLock() const {
    return a_HasLock(root_);
}

void PanelWindow::Tick() {
    editor_->SetLocked(true);
    ph_Tick(root_);
    editor_->SetLocked(false);
}

std::string PanelWindow::RootText(const char* keyword) const {
    char text[TEXT_SIZE] = "";
    VALUERECORD record;
    record.command = COMMAND_GET;
    record.datatype = DATATYPE_TEXT;
    record.data = text;
    record.name = keyword;
    SendMessageA(Handle(), CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record));
    return text;
}

std::string PanelWindow::Title() const {
    return RootText("title");
}

std::string PanelWindow::StatedSize() const {
    return RootText("size");
}

SIZE PanelWindow::Size() const {
    const std::string text = StatedSize();
    RECT stated{};
    if (!text.empty() && a_ReadRectString(("0,0," + text).c_str(), &stated) && stated.right > 0 &&
        stated.bottom > 0) {
        return {stated.right, stated.bottom};
    }
    SIZE size{LEAST_WIDTH, LEAST_HEIGHT};
    for (HWND child = GetWindow(Handle(), GW_CHILD); child; child = GetWindow(child, GW_HWNDNEXT)) {
        if (GetWindowLongA(child, GWL_STYLE) & WS_VISIBLE) { // the panel itself may be hidden
            RECT place{};
            GetWindowRect(child, &place);
            MapWindowPoints(nullptr, Handle(), reinterpret_cast<POINT*>(&place), 2);
            size.cx = std::max(size.cx, place.right + MARGIN);
            size.cy = std::max(size.cy, place.bottom + MARGIN);
        }
    }
    return size;
}

int PanelWindow::ControlCount() const {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(root_);
    return static_cast<int>(std::count_if(
        objects.begin(), objects.end(), [](const HOSTINFO* object) { return object->kind == KIND_CONTROL; }));
}

bool PanelWindow::HasInterfaceControls() const {
    const std::list<HOSTINFO*> objects = a_ListHostinfos(root_);
    return std::any_of(objects.begin(), objects.end(), [](const HOSTINFO* object) {
        char className[64] = "";
        GetClassNameA(object->window, className, sizeof className);
        return object->kind == KIND_CONTROL && className[0] == 'I'; // theirs alone begin so
    });
}

std::string PanelWindow::StatusText() {
    if (editor_->IsActive()) {
        return editor_->StatusText();
    }
    HOSTINFO* control = ControlOf(HoveredWindow());
    if (!control) {
        control = ControlOf(GetFocus());
    }
    if (!control) {
        return {};
    }
    char text[TEXT_SIZE] = "";
    return control->OnGetTooltip(0, reinterpret_cast<LPARAM>(text)) == 1 ? text : control->name;
}

HOSTINFO* PanelWindow::ControlOf(HWND window) const {
    if (!IsChild(Handle(), window)) {
        return nullptr;
    }
    // Controls may be made of windows that have no object of their own.
    for (; window != Handle(); window = GetAncestor(window, GA_PARENT)) {
        if (HOSTINFO* object = a_FromWindow(window)) {
            return object;
        }
    }
    return nullptr;
}

// The innermost visible window at a point of the panel, or null where there is only the panel.
HWND PanelWindow::WindowAt(POINT point) const {
    HWND found = Handle();
    for (;;) {
        POINT inner = point;
        MapWindowPoints(Handle(), found, &inner, 1);
        HWND child = ChildWindowFromPointEx(found, inner, CWP_SKIPINVISIBLE);
        if (!child || child == found) {
            return found == Handle() ? nullptr : found;
        }
        found = child;
    }
}

HWND PanelWindow::HoveredWindow() {
    POINT now;
    if (IsChild(Handle(), GetCapture())) {
        return GetCapture(); // the mouse may be anywhere while a control is dragged
    }
    // Controls tell of each movement over them, but not when the mouse leaves them.
    if (GetCursorPos(&now) && (now.x != cursor_.x || now.y != cursor_.y)) {
        cursor_ = now;
        const HWND window = WindowFromPoint(now);
        ScreenToClient(Handle(), &now);
        hovered_ = window == Handle() || IsChild(Handle(), window) ? WindowAt(now) : nullptr;
    }
    return hovered_;
}

void PanelWindow::RememberFocus() {
    const HWND focus = GetFocus();
    lastFocus_ = IsChild(Handle(), focus) ? focus : nullptr;
}

void PanelWindow::RestoreFocus() {
    const bool usable = !editor_->IsActive() && IsChild(Handle(), lastFocus_) &&
                        IsWindowVisible(lastFocus_) && IsWindowEnabled(lastFocus_);
    SetFocus(usable ? lastFocus_ : Handle());
}

bool PanelWindow::IsTab(const MSG& message) {
    if (message.message != WM_KEYDOWN || message.wParam != VK_TAB || GetKeyState(VK_CONTROL) < 0) {
        return false;
    }
    const LRESULT wanted =
        SendMessageA(message.hwnd, WM_GETDLGCODE, VK_TAB, reinterpret_cast<LPARAM>(&message));
    return (wanted & (DLGC_WANTTAB | DLGC_WANTALLKEYS)) == 0;
}

HWND PanelWindow::MoveFocus(bool backwards) {
    const HWND focus = GetFocus();
    const HWND next = GetNextDlgTabItem(Handle(), IsChild(Handle(), focus) ? focus : nullptr, backwards);
    // Where no control takes the focus, the answer is the first child or the one that has it.
    if (!next || !(GetWindowLongA(next, GWL_STYLE) & WS_TABSTOP)) {
        return nullptr;
    }
    SetFocus(next);
    if (SendMessageA(next, WM_GETDLGCODE, 0, 0) & DLGC_HASSETSEL) {
        SendMessageA(next, EM_SETSEL, 0, -1);
    }
    return next;
}

LRESULT PanelWindow::OnMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_MOUSEMOVE) {
        hovered_ = WindowAt({GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)});
        GetCursorPos(&cursor_);
    }
    if (LRESULT result = 0; editor_ && editor_->OnMessage(message, wParam, lParam, result)) {
        return result;
    }
    return Window::OnMessage(message, wParam, lParam);
}
