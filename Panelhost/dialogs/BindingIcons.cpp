#include "Panelhost/dialogs/BindingIcons.h"

#include "Panelhost/Dialogs.h"
#include "Panelhost/dialogs/Bindables.h"

namespace {

constexpr int SIZE_OF_ICON = 16;
constexpr int ENLARGEMENT = 4; // drawn larger and reduced, so that edges are smooth

constexpr COLORREF DARK = RGB(44, 62, 80);
constexpr COLORREF GREY = RGB(149, 165, 166);
constexpr COLORREF LIGHT = RGB(236, 240, 241);
constexpr COLORREF AMBER = RGB(230, 168, 60);
constexpr COLORREF GREEN = RGB(39, 174, 96);
constexpr COLORREF RED = RGB(214, 48, 49);
constexpr COLORREF BLUE = RGB(52, 120, 190);

// Shapes without a border, in units of the finished icon.
class Canvas {
public:
    explicit Canvas(HDC dc) : dc_(dc) {
        SelectObject(dc_, GetStockObject(DC_BRUSH));
        SelectObject(dc_, GetStockObject(NULL_PEN));
    }
    void Box(COLORREF colour, double left, double top, double right, double bottom, double corner = 0) const {
        SetDCBrushColor(dc_, colour);
        // Without a pen the last row and column are left out.
        RoundRect(dc_, At(left), At(top), At(right) + 1, At(bottom) + 1, At(corner), At(corner));
    }
    void Disc(COLORREF colour, double x, double y, double radius) const {
        SetDCBrushColor(dc_, colour);
        Ellipse(dc_, At(x - radius), At(y - radius), At(x + radius) + 1, At(y + radius) + 1);
    }

private:
    static int At(double place) { return static_cast<int>(place * ENLARGEMENT); }
    HDC dc_;
};

void DrawRack(const Canvas& canvas, COLORREF body, COLORREF lamp) {
    canvas.Box(body, 1, 4, 15, 12, 2);
    canvas.Box(LIGHT, 3, 6, 8, 7);
    canvas.Box(LIGHT, 3, 9, 8, 10);
    canvas.Disc(lamp, 11.5, 8, 1.75);
}

void DrawIcon(const Canvas& canvas, BindableKind kind) {
    switch (kind) {
    case BindableKind::Group:
        canvas.Box(AMBER, 1, 3, 7, 7, 2);
        canvas.Box(AMBER, 1, 4.5, 15, 13, 2);
        canvas.Box(RGB(246, 205, 120), 1, 6.5, 15, 13, 2);
        break;
    case BindableKind::Device:
        DrawRack(canvas, DARK, GREEN);
        break;
    case BindableKind::LostDevice:
        DrawRack(canvas, GREY, RED);
        break;
    case BindableKind::Parameter:
        canvas.Box(GREY, 7, 2, 9, 14, 1);
        canvas.Box(BLUE, 3.5, 5, 12.5, 8.5, 1.5);
        break;
    case BindableKind::Control:
        canvas.Disc(DARK, 8, 8, 6.25);
        canvas.Box(LIGHT, 7.25, 2.5, 8.75, 7, 1);
        break;
    case BindableKind::Keyword:
        canvas.Disc(GREY, 8, 8, 2.75);
        break;
    }
}

} // namespace

ImageList MakeBindingIcons() {
    constexpr int LARGE = SIZE_OF_ICON * ENLARGEMENT;
    constexpr BindableKind KINDS[] = {BindableKind::Group,      BindableKind::Device,
                                      BindableKind::LostDevice, BindableKind::Parameter,
                                      BindableKind::Control,    BindableKind::Keyword};
    ImageList icons(ImageList_Create(SIZE_OF_ICON, SIZE_OF_ICON, ILC_COLOR24, std::size(KINDS), 1));
    const HDC screen = GetDC(nullptr);
    const Bitmap large(CreateCompatibleBitmap(screen, LARGE, LARGE));
    const Bitmap small(CreateCompatibleBitmap(screen, SIZE_OF_ICON, SIZE_OF_ICON));
    ReleaseDC(nullptr, screen);
    for (const BindableKind kind : KINDS) {
        {
            const MemoryDc drawing(large.get());
            const RECT all{0, 0, LARGE, LARGE};
            FillRect(drawing.Get(), &all, a_GetObject(BRUSH_FIELD));
            DrawIcon(Canvas(drawing.Get()), kind);
            const MemoryDc reduced(small.get());
            SetStretchBltMode(reduced.Get(), HALFTONE);
            StretchBlt(reduced.Get(), 0, 0, SIZE_OF_ICON, SIZE_OF_ICON, drawing.Get(), 0, 0, LARGE, LARGE,
                       SRCCOPY);
        } // a bitmap that is still selected cannot be added
        ImageList_Add(icons.get(), small.get(), nullptr);
    }
    return icons;
}
