#include "Panel/editing/PanelSizeGesture.h"

#include "Panelhost/Editing.h"
#include "Panelhost/Hostinfo.h"

#include <algorithm>
#include <string>

namespace {

constexpr LONG LEAST_PANEL = 32; // pixels
constexpr LONG LARGEST_PANEL = 32767;

LONG OnGrid(LONG length, LONG spacing) {
    const LONG snapped = spacing > 0 ? (length + spacing / 2) / spacing * spacing : length;
    return std::clamp(snapped, LEAST_PANEL, LARGEST_PANEL);
}

} // namespace

PanelSizeGesture::PanelSizeGesture(const EditSurface& surface, logic::Handle edge, POINT start)
    : Gesture(surface), edge_(edge), threshold_(start) {
    RECT client;
    GetClientRect(surface.panel, &client);
    before_ = now_ = {client.right, client.bottom};
}

void PanelSizeGesture::Move(POINT point) {
    if (!threshold_.Passed(point)) {
        return;
    }
    const logic::Offset by = threshold_.From(point);
    const LONG spacing = surface_.Snapping().grid;
    now_ = before_;
    if (logic::MovesRight(edge_)) {
        now_.cx = OnGrid(before_.cx + by.x, spacing);
    }
    if (logic::MovesBottom(edge_)) {
        now_.cy = OnGrid(before_.cy + by.y, spacing);
    }
    Show(now_);
}

// Its view arranges it when the drag has ended.
void PanelSizeGesture::Show(SIZE size) const {
    SetWindowPos(surface_.panel, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    RedrawWindow(surface_.panel, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_UPDATENOW);
}

void PanelSizeGesture::End() {
    if (now_.cx == before_.cx && now_.cy == before_.cy) {
        return;
    }
    const std::string line = "size=" + std::to_string(now_.cx) + "," + std::to_string(now_.cy);
    if (a_ApplyEdit(surface_.edits.Root(), line.c_str()) == 0) {
        Show(before_);
    }
}

void PanelSizeGesture::Cancel() {
    Show(before_);
}
