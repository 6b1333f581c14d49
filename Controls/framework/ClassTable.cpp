// The table of all control classes and their registration.

#include "Controls/framework/ClassTable.h"

#include "Controls/framework/Controls.h"
#include "Controls/framework/SharedResources.h"

#include <array>
#include <exception>
#include <utility>

namespace {

constexpr UINT S1 = CS_GLOBALCLASS | CS_HREDRAW | CS_VREDRAW;
constexpr UINT S2 = S1 | CS_DBLCLKS;
constexpr auto NO_BACKGROUND = ClassBackground::None;
constexpr auto NULL_BACKGROUND = ClassBackground::Null;

constexpr int INTEGER = DATATYPE_INTEGER;
constexpr int FLOAT = DATATYPE_FLOAT;
constexpr int TEXT_TYPE = DATATYPE_TEXT;
constexpr int DATA = DATATYPE_DATA;
constexpr int BAND = DATATYPE_MASTER_EQ; // or that of a channel, as its keyword says
constexpr int NONE = DATATYPE_NONE;

// In the order of registration.
constexpr ControlClass CLASSES[] = {
    {"FADER", "Fader", &faderControl, FLOAT, S1, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::PopupTooltip},
    {"LED", "Led", &ledControl, INTEGER, S2},
    {"BBUTTON", "PushButton", &pushButtonControl, INTEGER, S1, 0, "Controls\\PushButton.ico"},
    {"BSTATIC", "Static", &staticControl, NONE, S1, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Tooltip},
    {"BTRISTATEBUTTON", "SwitchButton", &switchButtonControl, INTEGER, S1},
    {"CONTACTBUTTON", "ContactButton", &plainControl, INTEGER, S1, 0, "Controls\\ContactButton.ico"},
    {"METER", "Meter", &meterControl, INTEGER, S1},
    {"BRADIOBUTTON", "RadioButton", &plainControl, INTEGER, S1},
    {"CLOCK", "Clock", &clockControl, NONE, S1, 0, nullptr, NO_BACKGROUND, nullptr, SharedResource::Tooltip},
    {"LISTSELECTION", "ListSelection", &plainControl, INTEGER, S1},
    {"LSBBUTTON", "LSPushButton", &plainControl, INTEGER, S1, 0, "Controls\\PushButton.ico"},
    {"LSBSTATIC", "LSStatic", &plainControl, NONE, S1, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Tooltip},
    {"DANTECONTROL", "DanteControl", &plainControl, NONE, S1, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Tooltip},
    {"BCOMBOBOX", "ComboBox", &plainControl, TEXT_TYPE, 0, 0, "Controls\\ComboBox.ico", NO_BACKGROUND,
     "COMBOBOX"},
    {"CONDITIONALLED", "ConditionalLed", &plainControl, INTEGER, S1},
    {"BEDIT", "Edit", &editControl, NONE, 0, 0, "Controls\\Edit.ico", NO_BACKGROUND, "EDIT"},
    {"BEDIT2", "Edit2", &plainControl, NONE, 0, 0, "Controls\\Edit.ico", ClassBackground::SystemColour2,
     "EDIT"},
    {"EQ", "EQ", &eqControl, BAND, S1, 0, nullptr, NO_BACKGROUND, nullptr, SharedResource::FilterImages},
    {"FADING", "BarGraph", &plainControl, INTEGER, S1},
    {"BIMAGELIST", "ImageList", &plainControl, INTEGER, S2},
    {"XIPCHECK", "IPCheck", &plainControl, NONE, S1, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Tooltip},
    {"KNOB", "Knob", &knobControl, FLOAT, S1, 4},
    {"IMESSAGING", "Messaging", &plainInterface, NONE, S2, 4, "Controls\\Messaging.ico", NO_BACKGROUND,
     nullptr, SharedResource::MessagingPicture, "Controls\\Messaging.bmp"},
    {"MINIDELAY", "MiniDelay", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::DelayPictures, "Controls\\MiniDelay.bmp", "Controls\\MiniDelay.png"},
    {"MINIDYNAMICS", "MiniDynamics", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Picture, "Controls\\MiniDynamics.bmp", "Controls\\MiniDynamics.png"},
    {"MINIEDIT", "MiniEdit", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr, SharedResource::Picture,
     "Controls\\MiniEdit.bmp", "Controls\\MiniEdit.png"},
    {"MINIEQ", "MiniEQ", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr, SharedResource::Picture,
     "Controls\\MiniEQ.bmp", "Controls\\MiniEQ.png"},
    {"MINIROUTING", "MiniRouting", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Picture, "Controls\\MiniRouting.bmp", "Controls\\MiniRouting.png"},
    {"MINIXOVER", "MiniXOver", &miniView, NONE, S2, 0, nullptr, NO_BACKGROUND, nullptr,
     SharedResource::Picture, "Controls\\MiniXOver.bmp", "Controls\\MiniXOver.png"},
    {"INETWORK", "Network", &networkControl, NONE, S1, 4, "Controls\\Network.ico", NULL_BACKGROUND, nullptr,
     SharedResource::NetworkPicture, "Controls\\Network.bmp"},
    {"BRANGE", "Range", &plainControl, FLOAT, S1},
    {"SWITCH", "RockerSwitch", &plainControl, INTEGER, S1, 4, "Controls\\RockerButton.ico", NULL_BACKGROUND},
    {"SCALE", "Scale", &plainControl, INTEGER, S1},
    {"SPEAKERCONTROL", "SpeakerControl", &plainControl, INTEGER, S1},
    {"SPINEDIT", "SpinEdit", &plainControl, FLOAT, S1},
    {"ITELEPHONE", "Telephone", &telephoneControl, NONE, S2, 4, "Controls\\Telephone.ico", NO_BACKGROUND,
     nullptr, SharedResource::Picture, "Controls\\Telephone.bmp"},
    {"IWAVEGENERATOR", "WaveGenerator", &waveGeneratorControl, INTEGER, S1, 0, "Controls\\WaveGenerator.ico",
     NO_BACKGROUND, nullptr, SharedResource::Picture, "Controls\\WaveGenerator.bmp"},
    {"IWAVEIN", "WaveIn", &plainInterface, DATA, S1, 0, "Controls\\WaveIn.ico", NO_BACKGROUND, nullptr,
     SharedResource::Picture, "Controls\\WaveIn.bmp"},
    // Deliberately with the icon of the sound output.
    {"IMIDI", "Midi", &midiControl, DATA, S1, 0, "Controls\\WaveOut.ico", NO_BACKGROUND, nullptr,
     SharedResource::MidiPicture, "Controls\\midi.bmp"},
    {"IWAVEOUT", "WaveOut", &plainInterface, INTEGER, S1, 0, "Controls\\WaveOut.ico", NO_BACKGROUND, nullptr,
     SharedResource::Picture, "Controls\\WaveOut.bmp"},
    {"XOVER", "XOver", &xoverControl, DATATYPE_CROSSOVER, S1},
    {"CROSSOVER", "CrossOver", &plainControl, INTEGER, S1},
    {"MIXER", "Mixer", &mixerControl, INTEGER, S1},
    {"AUTOMIXER", "AutoMixer", &plainControl, INTEGER, S1},
    {"REVMETER", "RevMeter", &plainReverseMeter, INTEGER, S1},
};
constexpr std::size_t CLASS_COUNT = std::size(CLASSES);
static_assert(CLASS_COUNT == 45);

// What registration made of a row.
struct RegisteredClass {
    ATOM atom = 0; // 0: not registered by this library
    HICON icon = nullptr;
    WNDPROC systemProcedure = nullptr;
    ClassResources resources;
};
RegisteredClass registered[CLASS_COUNT];

std::size_t RowOf(const ControlClass& controlClass) {
    return static_cast<std::size_t>(&controlClass - CLASSES);
}

// The system control takes its style from what its window is created with.
LRESULT CreateStyled(WNDPROC system, DWORD (*styleFor)(DWORD), HWND window, WPARAM wParam, LPARAM lParam) {
    CREATESTRUCTA creation = *reinterpret_cast<const CREATESTRUCTA*>(lParam);
    creation.style = static_cast<LONG>(styleFor(static_cast<DWORD>(creation.style)));
    const auto style = static_cast<DWORD>(GetWindowLongA(window, GWL_STYLE));
    if (styleFor(style) != style) {
        SetWindowLongA(window, GWL_STYLE, static_cast<LONG>(styleFor(style)));
    }
    return CallWindowProcA(system, window, WM_NCCREATE, wParam, reinterpret_cast<LPARAM>(&creation));
}

LRESULT Dispatch(std::size_t row, HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    const ControlClass& controlClass = CLASSES[row];
    if (auto* control = PropertiesOf<CONTROLPROPERTIES>(window); control != nullptr) {
        const Held held(*control);
        return controlClass.implementation->procedure(window, message, wParam, lParam);
    }
    const WNDPROC system = registered[row].systemProcedure;
    const auto windowStyle = controlClass.implementation->windowStyle;
    if (message == WM_NCCREATE && system != nullptr && windowStyle != nullptr) {
        return CreateStyled(system, windowStyle, window, wParam, lParam);
    }
    const LRESULT result =
        system == nullptr && message == WM_CREATE
            ? 0
            : (system == nullptr ? DefWindowProcA(window, message, wParam, lParam)
                                 : CallWindowProcA(system, window, message, wParam, lParam));
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
        TRACE("%s: message %x failed: %s\n", CLASSES[row].name, message, failure.what());
        return message == WM_CREATE || message == CWM_SAVE ? -1 : 0;
    }
}

template <std::size_t... rows>
constexpr std::array<WNDPROC, CLASS_COUNT> ClassProcs(std::index_sequence<rows...>) {
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

void Register(std::size_t row, HINSTANCE module) {
    static constexpr auto PROCEDURES = ClassProcs(std::make_index_sequence<CLASS_COUNT>());
    const ControlClass& controlClass = CLASSES[row];
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
        made.resources.Make(controlClass, module);
    }
}

} // namespace

void RegisterControls(HINSTANCE module) {
    for (std::size_t row = 0; row < CLASS_COUNT; ++row) {
        Register(row, module);
    }
}

void ReleaseControls(HINSTANCE module) {
    for (std::size_t row = 0; row < CLASS_COUNT; ++row) {
        RegisteredClass& made = registered[row];
        made.resources.Release();
        // A class that stayed would send the next window of its name into the library that is gone.
        if (made.atom != 0) {
            ph_UnregisterControlClass(CLASSES[row].name);
            UnregisterClassA(CLASSES[row].name, module);
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

const ClassResources& ResourcesOf(const ControlClass& controlClass) {
    return registered[RowOf(controlClass)].resources;
}
