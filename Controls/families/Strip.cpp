#include "Controls/families/Strip.h"

#include "Controls/drawing/DarkParts.h"
#include "base/Gdi.h"
#include "base/Guard.h"
#include "logic/text/PropertyLine.h"

#include <algorithm>
#include <map>
#include <tuple>

// A finished background.
class StripBackground {
public:
    explicit StripBackground(const STRIPPROPERTIES& strip)
        : bitmap_(CreatePixels(strip.StripSize().cx, strip.StripSize().cy)), dc_(bitmap_.get()) {
        strip.DrawWholeBackground(dc_.Get());
    }

    HDC Dc() const { return dc_.Get(); }

    static std::shared_ptr<const StripBackground> Get(const STRIPPROPERTIES& strip) {
        static std::map<std::tuple<const ControlClass*, int, bool>, std::weak_ptr<const StripBackground>>
            known;
        auto& entry = known[{strip.controlClass, strip.Look(), strip.IsDark()}];
        auto found = entry.lock();
        if (!found) {
            found = std::make_shared<StripBackground>(strip);
            entry = found;
        }
        return found;
    }

private:
    Bitmap bitmap_;
    MemoryDc dc_;
};

namespace {

// The lines are the child's defaults and no changes to the panel.
void Load(HWND child, const char* line) {
    SendMessageA(child, CWM_LOAD, LOAD_FROM_FILE, reinterpret_cast<LPARAM>(line));
}

HWND CreateChild(const StripChild& child, STRIPPROPERTIES& strip) {
    HOSTINFO* context = &strip;
    const HWND made =
        CreateWindowExA(child.extendedStyle, child.className, child.name, WS_CHILD | child.style,
                        child.place.left, child.place.top, child.place.right, child.place.bottom,
                        strip.window, reinterpret_cast<HMENU>(child.id), ModuleInstance(), context);
    for (const char* line : child.lines) {
        if (line != nullptr) {
            Load(made, line);
        }
    }
    return made;
}

} // namespace

void STRIPPROPERTIES::SetDefaults() {
    captionFont_.Load("Small Fonts,5");
    darkFont_.Load("Tahoma,6");
    const SIZE size = StripSize();
    Resize(size.cx, size.cy);
    SetWindowLongA(window, GWL_STYLE, GetWindowLongA(window, GWL_STYLE) | WS_CLIPCHILDREN);
    SetWindowLongA(window, GWL_EXSTYLE, GetWindowLongA(window, GWL_EXSTYLE) | WS_EX_CONTROLPARENT);
    children_.reserve(Children().size());
    for (const StripChild& child : Children()) {
        children_.push_back(CreateChild(child, *this));
    }
    LookChanged();
}

// Children

HWND STRIPPROPERTIES::Child(std::string_view childName) const {
    const auto table = Children();
    for (std::size_t place = 0; place < children_.size(); ++place) {
        if (childName == table[place].name) {
            return children_[place];
        }
    }
    return nullptr;
}

bool STRIPPROPERTIES::MakesChild(const char* ownName) const noexcept {
    return Guarded(false, [&] {
        const std::string folded = logic::FoldName(ownName);
        const auto table = Children();
        return std::any_of(table.begin(), table.end(),
                           [&](const StripChild& child) { return logic::FoldName(child.name) == folded; });
    });
}

int STRIPPROPERTIES::SendToChild(std::string_view childName, int command, int datatype, void* data) const {
    const HWND child = Child(childName);
    if (a_FromWindow(child) == nullptr) {
        return 0;
    }
    VALUERECORD record{command, 0, datatype, 0, data, nullptr, 0};
    return static_cast<int>(SendMessageA(child, CWM_MESSAGE, 0, reinterpret_cast<LPARAM>(&record)));
}

void STRIPPROPERTIES::Change(std::span<const StripChange> changes) const {
    for (const StripChange& change : changes) {
        const HWND child = Child(change.child);
        if (change.line != nullptr) {
            Load(child, change.line);
        }
        if (change.show >= 0) {
            ShowWindow(child, change.show);
        }
    }
}

// Background

COLORREF STRIPPROPERTIES::InkColour() const {
    return IsDark() ? logic::PANEL_FAINT : RGB(0, 0, 0);
}

COLORREF STRIPPROPERTIES::LineColour() const {
    return IsDark() ? logic::PANEL_EDGE : RGB(0, 0, 0);
}

void STRIPPROPERTIES::DrawWholeBackground(HDC dc) const {
    const SIZE size = StripSize();
    const RECT all{0, 0, size.cx, size.cy};
    const auto brush = static_cast<HBRUSH>(GetStockObject(DC_BRUSH));
    SetDCBrushColor(dc, IsDark() ? COLORREF{logic::PANEL_PLATE} : STRIP_COLOUR);
    FillRect(dc, &all, brush);
    if (IsDark()) {
        SetDCBrushColor(dc, DARK_OFF);
        FrameRect(dc, &all, brush);
    }
    const Selected font(dc, CaptionFont().Get());
    const Selected pen(dc, GetStockObject(DC_PEN));
    SetDCPenColor(dc, LineColour());
    SetBkMode(dc, TRANSPARENT);
    SetTextColor(dc, InkColour());
    DrawBackground(dc);
}

void STRIPPROPERTIES::LookChanged() {
    background_ = StripBackground::Get(*this);
    Redraw();
}

void STRIPPROPERTIES::Draw(HDC dc, const RECT& client) const {
    BitBlt(dc, 0, 0, client.right, client.bottom, background_->Dc(), 0, 0, SRCCOPY);
}

LRESULT CALLBACK StripProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    return message == WM_GETDLGCODE ? DLGC_WANTARROWS | DLGC_WANTALLKEYS
                                    : CommonProc(window, message, wParam, lParam);
}
