// The window messages that all controls handle alike.

#include "Controls/framework/Control.h"
#include "Panelhost/Background.h"
#include "Panelhost/Bitmap.h"
#include "Panelhost/Dialogs.h"
#include "Panelhost/Root.h"
#include "logic/text/PropertyLine.h"

#include <exception>
#include <memory>
#include <new>
#include <windowsx.h>

namespace {

constexpr WPARAM PANEL_CLICK = MK_LBUTTON | MK_CONTROL; // belongs to the panel even when it is operated
constexpr WPARAM PROPERTY_CLICK = MK_RBUTTON | MK_SHIFT | MK_CONTROL; // opens the property dialog
// Sent by Windows 8 and later; the headers for Windows 7 do not name them.
constexpr UINT POINTER_UPDATE = 0x0245;
constexpr UINT POINTER_DOWN = 0x0246;
constexpr UINT POINTER_UP = 0x0247;
constexpr int CAPTION_SIZE = 64;
constexpr UINT_PTR APPLY_COMMAND = 1;
constexpr int DRAG_CURSOR = 102;

LRESULT DefaultProc(const ControlClass& controlClass, HWND window, UINT message, WPARAM wParam,
                    LPARAM lParam) {
    WNDPROC system = SystemProcedure(controlClass);
    return system == nullptr ? DefWindowProcA(window, message, wParam, lParam)
                             : CallWindowProcA(system, window, message, wParam, lParam);
}

// Those that a child of the control, which stands on a system control, gives itself.
LRESULT Colours(const ControlClass& controlClass, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const HBRUSH brush = a_AskForColours(message, wParam, lParam);
    return brush != nullptr ? reinterpret_cast<LRESULT>(brush)
                            : DefaultProc(controlClass, window, message, wParam, lParam);
}

POINT PointOf(LPARAM lParam) {
    return {GET_X_LPARAM(lParam), GET_Y_LPARAM(lParam)};
}

void PostAtCursor(HWND target, UINT message, WPARAM wParam) {
    POINT cursor;
    GetCursorPos(&cursor);
    ScreenToClient(target, &cursor);
    PostMessageA(target, message, wParam, MAKELPARAM(cursor.x, cursor.y));
}

void Destroy(CONTROLPROPERTIES& control) {
    control.dragging = false;
    control.CancelDrag();
    control.Destroying();
    control.accessible.Disconnect();
    a_HostinfoDestroyed(a_FindRootHostinfo(control.parent), &control);
    a_CleanHostinfo(&control);
    a_RemoveHostinfo(control.parent, &control);
    control.parent = nullptr; // it may go before this object does
    SetWindowLongA(control.window, GWL_USERDATA, 0);
    Held::Release(control);
}

void FunctionChanged(CONTROLPROPERTIES& control, WPARAM wParam, LPARAM lParam) {
    if (wParam == FUNCTION_CHANGED &&
        a_IsConnected(&control, reinterpret_cast<const char*>(lParam), nullptr) != 0) {
        const std::string line = "function=" + a_BuildString(control.functions);
        SendMessageA(control.window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line.c_str()));
    }
}

// Whether the press went to the panel.
bool ButtonDown(CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam) {
    const HWND window = control.window;
    SetFocus(window);
    if (PropertiesOf<CONTROLPROPERTIES>(window) == nullptr) { // whoever lost the focus has ended it
        return true;
    }
    if (IsPanelClick(control, wParam)) {
        ForwardToPanel(control, message, wParam);
        return true;
    }
    if (control.BeginDrag(PointOf(lParam))) {
        SetCapture(window);
        control.dragging = GetCapture() == window;
        SetCursor(LoadCursorA(ModuleInstance(), MAKEINTRESOURCEA(DRAG_CURSOR)));
    }
    return false;
}

void MouseMove(CONTROLPROPERTIES& control, WPARAM wParam, LPARAM lParam) {
    if (control.dragging) {
        control.MoveDrag(PointOf(lParam));
        a_LetBoundAsk(&control);
    } else if (control.parent != nullptr && control.parent->kind == KIND_ROOT) {
        ForwardToPanel(control, WM_MOUSEMOVE, wParam);
    }
}

void StopDragging(CONTROLPROPERTIES& control) {
    control.dragging = false;
    SetCursor(LoadCursorA(nullptr, IDC_ARROW));
}

void ButtonUp(CONTROLPROPERTIES& control) {
    if (control.dragging) {
        StopDragging(control); // first, so that the loss of the capture is no cancellation
        ReleaseCapture();
        control.EndDrag();
        a_LetBoundAsk(&control);
    }
}

// A touch or a pen does what the left button does.
LRESULT PointerAsMouse(HWND window, UINT message, LPARAM lParam) {
    const UINT mouseMessage = message == POINTER_DOWN ? WM_LBUTTONDOWN
                              : message == POINTER_UP ? WM_LBUTTONUP
                                                      : WM_MOUSEMOVE;
    POINT point = PointOf(lParam);
    ScreenToClient(window, &point);
    SendMessageA(window, mouseMessage, MK_LBUTTON, MAKELPARAM(point.x, point.y));
    return 0;
}

void ExtendMenu(const CONTROLPROPERTIES& control, HMENU menu) {
    if (control.OffersApply()) {
        AppendMenuA(menu, MF_SEPARATOR, 0, nullptr);
        AppendMenuA(menu, MF_STRING, APPLY_COMMAND, "Apply");
    }
}

void RightButtonDown(CONTROLPROPERTIES& control, WPARAM wParam) {
    if (wParam == PROPERTY_CLICK && !IsWindow(control.dialog)) {
        control.dialog = a_PropertyDlg(1, control.parent, &control); // places itself at the cursor
        return;
    }
    PostAtCursor(GetParent(control.window), WM_RBUTTONDOWN, wParam);
}

void PositionChanged(CONTROLPROPERTIES& control, const WINDOWPOS& position) {
    RECT& rectangle = control.rectangle;
    if ((position.flags & SWP_NOMOVE) == 0) {
        OffsetRect(&rectangle, position.x - rectangle.left, position.y - rectangle.top);
    }
    if ((position.flags & SWP_NOSIZE) == 0) {
        rectangle.right = rectangle.left + position.cx;
        rectangle.bottom = rectangle.top + position.cy;
    }
}

void FocusGained(CONTROLPROPERTIES& control) {
    control.flags |= FLAG_FOCUS;
    // The border of a system control would keep the frame when the focus goes.
    const bool isSystem = control.controlClass->systemClass != nullptr;
    const HDC dc = isSystem ? GetDC(control.window) : GetWindowDC(control.window);
    a_DrawSelection(&control, dc);
    ReleaseDC(control.window, dc);
}

// What a control that draws itself does with the messages of drawing, of keyboard navigation and of pointers.
// False when it is none of them.
bool OwnDrawn(CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam, LRESULT& result) {
    result = 0;
    switch (message) {
    case WM_PAINT:
        PaintControl(control);
        return true;
    case WM_PRINTCLIENT:
        DrawInto(control, reinterpret_cast<HDC>(wParam));
        return true;
    case WM_ERASEBKGND:
        result = 1; // painting covers the whole client area
        return true;
    case WM_GETDLGCODE:
        result = DLGC_WANTARROWS;
        return true;
    case POINTER_DOWN:
    case POINTER_UPDATE:
    case POINTER_UP:
        result = PointerAsMouse(control.window, message, lParam);
        return true;
    default:
        return false;
    }
}

} // namespace

bool IsPanelClick(const CONTROLPROPERTIES& control, WPARAM keys) {
    return control.mode != 0 || keys == PANEL_CLICK;
}

bool PassInput(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam, LPARAM lParam) {
    if (control.mode == 0) {
        return false;
    }
    if (const HOSTINFO* root = a_FindRootHostinfo(control.parent); root != nullptr) {
        PostMessageA(root->window, message, wParam, lParam);
    }
    return true;
}

void ForwardToPanel(const CONTROLPROPERTIES& control, UINT message, WPARAM wParam) {
    const HOSTINFO* root = a_FindRootHostinfo(control.parent);
    if (root != nullptr) {
        PostAtCursor(root->window, message, wParam);
    }
}

namespace {

// The control of this library that another one is a child of, or null.
const CONTROLPROPERTIES* StripOf(const CONTROLPROPERTIES& control) {
    const HOSTINFO* parent = control.parent;
    const bool isOurs = parent != nullptr && parent->kind == KIND_CONTROL &&
                        GetClassLongA(parent->window, GCL_HMODULE) ==
                            static_cast<DWORD>(reinterpret_cast<UINT_PTR>(ModuleInstance()));
    return isOurs ? static_cast<const CONTROLPROPERTIES*>(parent) : nullptr;
}

// The panel's background, and on it the strip that the control is a child of.
void DrawBehind(const CONTROLPROPERTIES& control, HDC dc, const RECT& client) {
    cBackground(&control).Draw(dc, client.right, client.bottom);
    if (const CONTROLPROPERTIES* strip = StripOf(control)) {
        RECT area{};
        GetClientRect(strip->window, &area);
        const int saved = SaveDC(dc);
        IntersectClipRect(dc, 0, 0, client.right, client.bottom);
        SetViewportOrgEx(dc, -control.rectangle.left, -control.rectangle.top, nullptr);
        strip->Draw(dc, area);
        RestoreDC(dc, saved);
    }
}

} // namespace

void DrawInto(CONTROLPROPERTIES& control, HDC target) {
    RECT client{};
    GetClientRect(control.window, &client);
    const cOffScreen buffer(target, client.right, client.bottom);
    if (!control.CoversGround()) {
        DrawBehind(control, buffer.Dc(), client);
    }
    control.Draw(buffer.Dc(), client);
    if (control.notEqual && !control.DrawsNotEqual(client)) {
        const POINT place = control.NotEqualPlace();
        a_GetNotEqualSign()->Draw(buffer.Dc(), place.x, place.y);
    }
    a_DrawSelection(&control, buffer.Dc());
    buffer.Show();
}

void PaintControl(CONTROLPROPERTIES& control) {
    PAINTSTRUCT paint;
    if (const HDC dc = BeginPaint(control.window, &paint); dc != nullptr) {
        DrawInto(control, dc);
        EndPaint(control.window, &paint);
    }
    control.accessible.Announce(control);
}

LRESULT CreateControl(const ControlClass& controlClass, HWND window, const CREATESTRUCTA& creation) {
    std::unique_ptr<CONTROLPROPERTIES> created(controlClass.implementation->create());
    CONTROLPROPERTIES* control = created.get();
    control->controlClass = &controlClass;
    a_InitializeHostinfo(window, control, creation.lpCreateParams);
    if (controlClass.systemClass != nullptr && creation.lpszName != nullptr) {
        // A combo box does not keep the text it is created with.
        if (const std::string ownName = logic::CleanName(creation.lpszName); !ownName.empty()) {
            control->name = ownName;
        }
    }
    a_AddHostinfo(control->parent, control);
    HOSTINFO* root = a_FindRootHostinfo(control->parent);
    if (a_FromWindow(window) != control ||
        (root != nullptr && a_FindHostinfo(root, control->name.c_str()) != control)) {
        throw std::bad_alloc(); // the panel would not know that it has to destroy this control
    }
    control->rectangle = {creation.x, creation.y, creation.x + creation.cx, creation.y + creation.cy};
    control->kind = KIND_CONTROL;
    SetWindowLongA(window, GWL_USERDATA, reinterpret_cast<LONG>(static_cast<HOSTINFO*>(created.release())));
    const Held held(*control);
    try {
        if (const char* line = control->DefaultProperties(); line != nullptr) {
            SendMessageA(window, CWM_LOAD, LOAD_FROM_DIALOG, reinterpret_cast<LPARAM>(line));
            control->flags = static_cast<WORD>(control->flags & ~FLAG_CHANGED); // new, not changed
        }
        control->SetDefaults();
        a_HostinfoCreated(root, control);
        control->Created();
    } catch (const std::exception&) {
        if (PropertiesOf<CONTROLPROPERTIES>(window) ==
            control) { // a window that is not created need not get WM_DESTROY
            Destroy(*control);
        }
        throw;
    }
    return 1;
}

LRESULT CALLBACK CommonProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    auto* control = PropertiesOf<CONTROLPROPERTIES>(window);
    if (control == nullptr) {
        return DefWindowProcA(window, message, wParam, lParam);
    }
    const ControlClass& controlClass = *control->controlClass;
    switch (message) {
    case CWM_MESSAGE: {
        const LRESULT result = control->OnMessage(wParam, lParam);
        if (result != 0 && lParam != 0 &&
            reinterpret_cast<const VALUERECORD*>(lParam)->command == COMMAND_SET) {
            a_LetBoundAsk(control);
        }
        return result;
    }
    case CWM_LOAD: {
        const LRESULT result = control->OnLoad(wParam, lParam);
        if (result != 0) {
            a_LetBoundAsk(control);
        }
        return result;
    }
    case CWM_SAVE:
        return control->OnSave(wParam, lParam);
    case CWM_SAVETOLISTCTRL:
        return control->OnSaveToListCtrl(wParam, lParam);
    case CWM_GETPROPERTIES:
        return reinterpret_cast<LRESULT>(static_cast<HOSTINFO*>(control));
    case CWM_GETCONTROLTYPE:
        return control->ControlType();
    case CWM_GETPREFERREDWIDTH:
        return control->PreferredWidth();
    case CWM_FUNCTIONCHANGED:
        FunctionChanged(*control, wParam, lParam);
        break;
    case CWM_GETCAPTION:
        if (lParam != 0) {
            GetWindowTextA(window, reinterpret_cast<char*>(lParam), CAPTION_SIZE);
        }
        break;
    case CWM_PARAMETERDLG:
        if (const HWND dialog = OpenDialogOf(*control); lParam != 0) {
            *reinterpret_cast<HWND*>(lParam) = dialog;
        }
        break;
    case WM_GETOBJECT:
        if (static_cast<LONG>(lParam) == OBJID_CLIENT) {
            return control->accessible.Answer(*control, wParam);
        }
        break;
    case WM_TIMER:
        return control->OnTimer(wParam, lParam);
    case WM_DESTROY: {
        const LRESULT result = DefaultProc(controlClass, window, message, wParam, lParam);
        Destroy(*control);
        return result;
    }
    case WM_WINDOWPOSCHANGED:
        PositionChanged(*control, *reinterpret_cast<const WINDOWPOS*>(lParam));
        break;
    case WM_MOUSEMOVE:
        MouseMove(*control, wParam, lParam);
        break;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK: // the second press, where the class style asks for it
        if (ButtonDown(*control, message, wParam, lParam) && controlClass.systemClass != nullptr) {
            return 0; // the system control would start to select or to drop down
        }
        break;
    case WM_LBUTTONUP:
        ButtonUp(*control);
        break;
    case WM_CAPTURECHANGED:
        if (control->dragging) {
            StopDragging(*control);
            control->CancelDrag();
        }
        break;
    case WM_DROPFILES:
        a_DropBitmap(control, reinterpret_cast<HDROP>(wParam));
        return 0;
    case CWM_DROPFILES: // no control takes what its panel passes on
        a_DropFiles(nullptr, reinterpret_cast<HDROP>(lParam));
        return 0;
    case CWM_EXTENDMENU:
        if (lParam != 0) {
            ExtendMenu(*control, reinterpret_cast<HMENU>(lParam));
        }
        break;
    case CWM_MENUCOMMAND:
        if (lParam != 0) {
            control->Apply();
        }
        break;
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSTATIC:
        return Colours(controlClass, window, message, wParam, lParam);
    case WM_RBUTTONDOWN:
        RightButtonDown(*control, wParam);
        return 0;
    case WM_SETFOCUS:
        FocusGained(*control);
        break;
    case WM_KILLFOCUS:
        control->flags = static_cast<WORD>(control->flags & ~FLAG_FOCUS);
        InvalidateRect(window, nullptr, TRUE);
        break;
    case WM_PAINT:
        if (controlClass.systemClass != nullptr) {
            const LRESULT result = DefaultProc(controlClass, window, message, wParam, lParam);
            if ((control->flags & (FLAG_FOCUS | FLAG_SELECTED)) != 0) {
                const HDC dc = GetDC(window);
                a_DrawSelection(control, dc); // the system control knows nothing of it
                ReleaseDC(window, dc);
            }
            return result;
        }
        [[fallthrough]];
    default:
        if (LRESULT result = 0;
            controlClass.systemClass == nullptr && OwnDrawn(*control, message, wParam, lParam, result)) {
            return result;
        }
        break;
    }
    return DefaultProc(controlClass, window, message, wParam, lParam);
}

LRESULT CALLBACK IndicatorProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const auto* control = PropertiesOf<CONTROLPROPERTIES>(window);
    if (control != nullptr && (message == WM_LBUTTONDOWN || message == WM_LBUTTONDBLCLK)) {
        if (IsPanelClick(*control, wParam)) {
            ForwardToPanel(*control, message, wParam);
        } else if (auto* container = LivingObject<CONTROLPROPERTIES>(control->parent)) {
            container->ChildPressed(window);
        }
        return 0;
    }
    return CommonProc(window, message, wParam, lParam);
}
