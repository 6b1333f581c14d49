// The registration of control classes and the procedure of their windows.

#include "Controls/framework/ControlClass.h"

#include "Controls/framework/Control.h"
#include "Panelhost/ApplicationPaths.h"
#include "Panelhost/HostInterface.h"
#include "Panelhost/Trace.h"

#include <algorithm>
#include <array>
#include <exception>
#include <utility>

namespace {

// What registration made of a row.
struct RegisteredClass {
    ATOM atom = 0; // 0: not registered by this library
    HICON icon = nullptr;
    WNDPROC systemProcedure = nullptr;
    std::unique_ptr<SharedResources> resources;
};

// As many as there can be in one library.
constexpr std::size_t MOST_CLASSES = 64;
RegisteredClass registered[MOST_CLASSES];
std::span<const ControlClass> registeredClasses;
DialogOpener dialogOpener = nullptr;

std::size_t RowOf(const ControlClass& controlClass) {
    return static_cast<std::size_t>(&controlClass - registeredClasses.data());
}

// The system control takes its style from what its window is created with.
LRESULT CreateStyled(WNDPROC system, DWORD (*styleFor)(DWORD), HWND window, UINT message, LPARAM lParam) {
    CREATESTRUCTA creation = *reinterpret_cast<const CREATESTRUCTA*>(lParam);
    creation.style = static_cast<LONG>(styleFor(static_cast<DWORD>(creation.style)));
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    if (message == WM_NCCREATE && styleFor(style) != style) { // later the system has taken some bits away
        SetWindowLongA(window, GWL_STYLE, static_cast<LONG>(styleFor(style)));
    }
    return CallWindowProcA(system, window, message, 0, reinterpret_cast<LPARAM>(&creation));
}

LRESULT Dispatch(std::size_t row, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const ControlClass& controlClass = registeredClasses[row];
    if (auto* control = PropertiesOf<CONTROLPROPERTIES>(window); control != nullptr) {
        const Held held(*control);
        return controlClass.implementation->procedure(window, message, wParam, lParam);
    }
    if (message == WM_NCCREATE && controlClass.part != nullptr &&
        reinterpret_cast<const CREATESTRUCTA*>(lParam)->lpCreateParams == controlClass.part) {
        SetWindowLongA(window, GWL_WNDPROC, reinterpret_cast<LONG>(*controlClass.part));
        return (*controlClass.part)(window, message, wParam, lParam);
    }
    const WNDPROC system = registered[row].systemProcedure;
    const auto windowStyle = controlClass.implementation->windowStyle;
    const bool isMade = message == WM_NCCREATE || message == WM_CREATE;
    LRESULT result = 0;
    if (system == nullptr) {
        result = message == WM_CREATE ? 0 : DefWindowProcA(window, message, wParam, lParam);
    } else if (isMade && windowStyle != nullptr) {
        result = CreateStyled(system, windowStyle, window, message, lParam);
    } else {
        result = CallWindowProcA(system, window, message, wParam, lParam);
    }
    if (message == WM_CREATE && result != -1) {
        return CreateControl(controlClass, window, *reinterpret_cast<const CREATESTRUCTA*>(lParam));
    }
    return result;
}

// The registered procedure of each row. No exception leaves it: a window that lacks the memory to be created
// is not created, properties that cannot be written fail the saving, any other message is answered with 0.
template <std::size_t row>
LRESULT CALLBACK ClassProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) noexcept {
    try {
        return Dispatch(row, window, message, wParam, lParam);
    } catch (const std::exception& failure) {
        TRACE("%s: message %x failed: %s\n", registeredClasses[row].name, message, failure.what());
        return message == WM_CREATE || message == CWM_SAVE ? -1 : 0;
    }
}

template <std::size_t... rows>
constexpr std::array<WNDPROC, MOST_CLASSES> ClassProcs(std::index_sequence<rows...>) {
    return {ClassProc<rows>...};
}

HICON LoadIconFile(const char* file) {
    char path[MAX_PATH];
    a_MakeFullPathName(file, path);
    return static_cast<HICON>(LoadImageA(nullptr, path, IMAGE_ICON, 16, 16, LR_LOADFROMFILE));
}

HBRUSH BackgroundBrush(ClassBackground background) {
    switch (background) {
    case ClassBackground::Null:
        return static_cast<HBRUSH>(GetStockObject(NULL_BRUSH));
    case ClassBackground::SystemColour2:
        return reinterpret_cast<HBRUSH>(COLOR_BACKGROUND + 1);
    default:
        return nullptr;
    }
}

void Describe(const ControlClass& controlClass) {
    const PaletteEntry& palette = controlClass.palette;
    const PH_CONTROLCLASS description{controlClass.name,      controlClass.systemClass,
                                      controlClass.Purpose(), static_cast<int>(palette.group),
                                      palette.position,       palette.name,
                                      palette.letters,        palette.size.cx,
                                      palette.size.cy,        palette.takesFocus ? 1 : 0};
    ph_DescribeControlClass(&description);
}

void Register(std::size_t row, HINSTANCE module) {
    static constexpr auto PROCEDURES = ClassProcs(std::make_index_sequence<MOST_CLASSES>());
    const ControlClass& controlClass = registeredClasses[row];
    RegisteredClass& made = registered[row];
    WNDCLASSA windowClass{};
    if (controlClass.systemClass != nullptr) {
        if (!GetClassInfoA(nullptr, controlClass.systemClass, &windowClass)) {
            return;
        }
        made.systemProcedure = windowClass.lpfnWndProc;
        windowClass.style |= CS_GLOBALCLASS;
    } else {
        windowClass.style = controlClass.style;
        windowClass.cbWndExtra = controlClass.extraBytes;
        windowClass.hCursor = LoadCursorA(nullptr, IDC_ARROW);
    }
    windowClass.lpfnWndProc = PROCEDURES[row];
    windowClass.hInstance = module;
    windowClass.lpszClassName = controlClass.name;
    if (const HBRUSH brush = BackgroundBrush(controlClass.background); brush != nullptr) {
        windowClass.hbrBackground = brush;
    }
    if (controlClass.icon != nullptr) {
        made.icon = LoadIconFile(controlClass.icon);
        windowClass.hIcon = made.icon;
    }
    made.atom = RegisterClassA(&windowClass);
    if (made.atom != 0) {
        ph_RegisterControlClass(controlClass.name);
        Describe(controlClass);
        if (const auto share = controlClass.implementation->share; share != nullptr) {
            made.resources = share(controlClass, module);
        }
    }
}

} // namespace

void RegisterControls(std::span<const ControlClass> classes, HINSTANCE module, DialogOpener openDialog) {
    registeredClasses = classes.first(std::min(classes.size(), MOST_CLASSES));
    dialogOpener = openDialog;
    for (std::size_t row = 0; row < registeredClasses.size(); ++row) {
        Register(row, module);
    }
}

void ReleaseControls(HINSTANCE module) {
    for (std::size_t row = 0; row < registeredClasses.size(); ++row) {
        RegisteredClass& made = registered[row];
        made.resources.reset();
        // A class that stayed would send the next window of its name into the library that is gone.
        if (made.atom != 0) {
            ph_UnregisterControlClass(registeredClasses[row].name);
            UnregisterClassA(registeredClasses[row].name, module);
        }
        if (made.icon != nullptr) {
            DestroyIcon(made.icon);
        }
        made = {};
    }
}

WNDPROC SystemProcedure(const ControlClass& controlClass) {
    return registered[RowOf(controlClass)].systemProcedure;
}

const SharedResources* ResourcesOf(const ControlClass& controlClass) {
    return registered[RowOf(controlClass)].resources.get();
}

HWND OpenDialogOf(CONTROLPROPERTIES& control) {
    return dialogOpener == nullptr ? nullptr : dialogOpener(control);
}
