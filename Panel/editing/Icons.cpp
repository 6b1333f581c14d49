#include "Panel/editing/Icons.h"

#include "base/Gdi.h"

// GDI+ wants the two without the standard library's.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

#include <cstring>

namespace {

using Gdiplus::Color;
using Gdiplus::Graphics;
using Gdiplus::PointF;
using Gdiplus::REAL;

const Color DARK(255, 58, 66, 78);
const Color BLUE(255, 38, 122, 204);
const Color PALE(255, 176, 204, 236);
const Color WHITE(255, 255, 255, 255);

class GdiPlus {
public:
    GdiPlus() {
        const Gdiplus::GdiplusStartupInput input;
        Gdiplus::GdiplusStartup(&token_, &input, nullptr);
    }
    ~GdiPlus() { Gdiplus::GdiplusShutdown(token_); }
    GdiPlus(const GdiPlus&) = delete;
    GdiPlus& operator=(const GdiPlus&) = delete;

private:
    ULONG_PTR token_ = 0;
};

// Pixels with alpha, to be drawn on with GDI+ and put into an image list.
class Canvas {
public:
    explicit Canvas(int size) : size_(size) {
        std::uint32_t* bits = nullptr;
        bitmap_.reset(CreatePixels(size, size, &bits));
        bits_ = reinterpret_cast<BYTE*>(bits);
    }

    template <class Drawing>
    void Draw(Drawing&& drawing) {
        if (!bits_) {
            return;
        }
        std::memset(bits_, 0, static_cast<std::size_t>(size_) * size_ * 4);
        Gdiplus::Bitmap image(size_, size_, size_ * 4, PixelFormat32bppARGB, bits_);
        Graphics graphics(&image);
        graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
        drawing(graphics);
    }
    void Grey() {
        for (int i = 0; bits_ && i < size_ * size_; ++i) {
            BYTE* pixel = bits_ + 4 * i;
            const int light = (pixel[0] + 2 * pixel[1] + pixel[2]) / 4;
            pixel[0] = pixel[1] = pixel[2] = static_cast<BYTE>(150 + light / 4);
            pixel[3] = static_cast<BYTE>(pixel[3] * 2 / 3);
        }
    }
    void AddTo(HIMAGELIST list) const { ImageList_Add(list, bitmap_.get(), nullptr); }

private:
    int size_;
    Bitmap bitmap_;
    BYTE* bits_ = nullptr;
};

// Icons.

void Box(Graphics& graphics, REAL x, REAL y, REAL width, REAL height, Color fill) {
    const Gdiplus::SolidBrush brush(fill);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeNone);
    graphics.FillRectangle(&brush, x, y, width, height);
    graphics.SetSmoothingMode(Gdiplus::SmoothingModeAntiAlias);
}

void Frame(Graphics& graphics, REAL x, REAL y, REAL width, REAL height, Color fill, Color edge) {
    Box(graphics, x, y, width, height, edge);
    Box(graphics, x + 1, y + 1, width - 2, height - 2, fill);
}

void Line(Graphics& graphics, PointF from, PointF to, REAL width, Color colour) {
    Gdiplus::Pen pen(colour, width);
    pen.SetStartCap(Gdiplus::LineCapRound);
    pen.SetEndCap(Gdiplus::LineCapRound);
    graphics.DrawLine(&pen, from, to);
}

void Polygon(Graphics& graphics, const PointF* points, int count, Color colour) {
    const Gdiplus::SolidBrush brush(colour);
    graphics.FillPolygon(&brush, points, count);
}

// An arrow that turns back to the left; redo is its mirror image.
void Turn(Graphics& graphics, bool mirrored) {
    if (mirrored) {
        graphics.TranslateTransform(16, 0);
        graphics.ScaleTransform(-1, 1);
    }
    Gdiplus::Pen pen(BLUE, 2);
    graphics.DrawArc(&pen, 4.0F, 5.0F, 9.0F, 8.0F, -100.0F, 220.0F);
    graphics.DrawLine(&pen, PointF(8.5F, 5), PointF(5, 5));
    const PointF head[] = {{1, 5}, {6.5F, 0.5F}, {6.5F, 9.5F}};
    Polygon(graphics, head, 3, BLUE);
}

void Pencil(Graphics& graphics) {
    const PointF body[] = {{10.5F, 1.5F}, {14.5F, 5.5F}, {6, 14}, {2, 10}};
    Polygon(graphics, body, 4, BLUE);
    const PointF point[] = {{2, 10}, {6, 14}, {1, 15}};
    Polygon(graphics, point, 3, DARK);
    Line(graphics, {9, 3.5F}, {12.5F, 7}, 1, WHITE);
}

void Scissors(Graphics& graphics) {
    Line(graphics, {5, 1.5F}, {10, 10.5F}, 1.7F, DARK);
    Line(graphics, {11, 1.5F}, {6, 10.5F}, 1.7F, DARK);
    Gdiplus::Pen pen(BLUE, 1.7F);
    graphics.DrawEllipse(&pen, 2.0F, 10.0F, 4.5F, 4.5F);
    graphics.DrawEllipse(&pen, 9.5F, 10.0F, 4.5F, 4.5F);
}

void Clipboard(Graphics& graphics) {
    Frame(graphics, 2, 2, 11, 13, PALE, DARK);
    Box(graphics, 5, 1, 5, 3, DARK);
    Frame(graphics, 6, 6, 9, 9, WHITE, BLUE);
    Box(graphics, 8, 9, 5, 1, BLUE);
    Box(graphics, 8, 11, 5, 1, BLUE);
}

// Two bars along a line; turned for the other axis.
void Bars(Graphics& graphics, REAL line, REAL first, REAL second, bool turned) {
    const auto box = [&](REAL x, REAL y, REAL width, REAL height, Color colour) {
        turned ? Box(graphics, y, x, height, width, colour) : Box(graphics, x, y, width, height, colour);
    };
    box(line, 0, 1, 16, DARK);
    box(first, 3, 11, 4, BLUE);
    box(second, 9, 6, 4, BLUE);
}

void Spread(Graphics& graphics, bool turned) {
    const auto box = [&](REAL x, REAL y, REAL width, REAL height, Color colour) {
        turned ? Box(graphics, y, x, height, width, colour) : Box(graphics, x, y, width, height, colour);
    };
    box(0, 1, 1, 14, DARK);
    box(15, 1, 1, 14, DARK);
    box(2, 4, 3, 8, BLUE);
    box(6.5F, 4, 3, 8, BLUE);
    box(11, 4, 3, 8, BLUE);
}

void DrawIcon(Graphics& graphics, Icon icon) {
    switch (icon) {
    case Icon::Edit:
        return Pencil(graphics);
    case Icon::Undo:
    case Icon::Redo:
        return Turn(graphics, icon == Icon::Redo);
    case Icon::Cut:
        return Scissors(graphics);
    case Icon::Copy:
        Frame(graphics, 1, 1, 9, 11, WHITE, DARK);
        return Frame(graphics, 5, 4, 9, 11, PALE, BLUE);
    case Icon::Paste:
        return Clipboard(graphics);
    case Icon::Duplicate:
        Frame(graphics, 1, 1, 9, 9, WHITE, DARK);
        Frame(graphics, 6, 6, 9, 9, PALE, BLUE);
        Box(graphics, 8, 10, 5, 1, BLUE);
        return Box(graphics, 10, 8, 1, 5, BLUE);
    case Icon::AlignLeft:
        return Bars(graphics, 1, 3, 3, false);
    case Icon::AlignTop:
        return Bars(graphics, 1, 3, 3, true);
    case Icon::AlignRight:
        return Bars(graphics, 14, 2, 7, false);
    case Icon::AlignBottom:
        return Bars(graphics, 14, 2, 7, true);
    case Icon::CentreAcross:
        return Bars(graphics, 8, 3, 5, false);
    case Icon::CentreDown:
        return Bars(graphics, 8, 3, 5, true);
    case Icon::DistributeAcross:
        return Spread(graphics, false);
    case Icon::DistributeDown:
        return Spread(graphics, true);
    case Icon::Foreground:
        Frame(graphics, 5, 5, 10, 10, WHITE, DARK);
        return Frame(graphics, 1, 1, 10, 10, BLUE, BLUE);
    case Icon::Background:
        Frame(graphics, 1, 1, 10, 10, BLUE, BLUE);
        return Frame(graphics, 5, 5, 10, 10, WHITE, DARK);
    case Icon::Grid:
        for (int i = 0; i < 9; ++i) {
            Box(graphics, 2 + 5.0F * (i % 3), 2 + 5.0F * (i / 3), 2, 2, i == 4 ? BLUE : DARK);
        }
        return;
    case Icon::Count:
        return;
    }
}

// Tiles.

Color ColourOf(CatalogueGroup group) {
    Color colour;
    colour.SetFromCOLORREF(GroupColour(group));
    return colour;
}

void RoundedTile(Graphics& graphics, Color colour, REAL inset) {
    constexpr REAL CORNER = 6;
    const REAL end = TILE_SIZE - inset - CORNER - 1;
    Gdiplus::GraphicsPath path;
    path.AddArc(inset, inset, CORNER, CORNER, 180, 90);
    path.AddArc(end, inset, CORNER, CORNER, 270, 90);
    path.AddArc(end, end, CORNER, CORNER, 0, 90);
    path.AddArc(inset, end, CORNER, CORNER, 90, 90);
    path.CloseFigure();
    const Gdiplus::SolidBrush brush(colour);
    graphics.FillPath(&brush, &path);
}

void DrawTile(Graphics& graphics, const CatalogueEntry& entry) {
    RoundedTile(graphics, ColourOf(entry.group), 0);
    const WCHAR letters[] = {static_cast<WCHAR>(entry.letters[0]), static_cast<WCHAR>(entry.letters[1])};
    const Gdiplus::Font font(L"Tahoma", 10, Gdiplus::FontStyleBold, Gdiplus::UnitPixel);
    Gdiplus::StringFormat format;
    format.SetAlignment(Gdiplus::StringAlignmentCenter);
    format.SetLineAlignment(Gdiplus::StringAlignmentCenter);
    format.SetFormatFlags(Gdiplus::StringFormatFlagsNoWrap | Gdiplus::StringFormatFlagsNoClip);
    const Gdiplus::SolidBrush brush(WHITE);
    graphics.SetTextRenderingHint(Gdiplus::TextRenderingHintAntiAliasGridFit);
    graphics.DrawString(letters, 2, &font, Gdiplus::RectF(-3, 0, TILE_SIZE + 5, TILE_SIZE - 1), &format,
                        &brush);
}

} // namespace

HIMAGELIST MakeTiles() {
    const GdiPlus gdiPlus;
    HIMAGELIST list = ImageList_Create(TILE_SIZE, TILE_SIZE, ILC_COLOR32, 0, 8);
    Canvas canvas(TILE_SIZE);
    for (int i = 0; i < CATALOGUE_GROUPS; ++i) {
        canvas.Draw(
            [&](Graphics& graphics) { RoundedTile(graphics, ColourOf(static_cast<CatalogueGroup>(i)), 5); });
        canvas.AddTo(list);
    }
    for (const CatalogueEntry& entry : Catalogue()) {
        canvas.Draw([&](Graphics& graphics) { DrawTile(graphics, entry); });
        canvas.AddTo(list);
    }
    return list;
}

HIMAGELIST MakeSigns() {
    constexpr REAL EDGE = 4;
    constexpr REAL SIZE_OF_SIGN = 8;
    const GdiPlus gdiPlus;
    HIMAGELIST list = ImageList_Create(ICON_SIZE, ICON_SIZE, ILC_COLOR32, 0, 3);
    Canvas canvas(ICON_SIZE);
    for (int i = 0; i < 3; ++i) {
        canvas.Draw([&](Graphics& graphics) {
            if (i == 0) { // what is transparent everywhere would be shown as black
                const Gdiplus::SolidBrush hardly(Color(1, 255, 255, 255));
                graphics.FillRectangle(&hardly, 0, 0, ICON_SIZE, ICON_SIZE);
                return;
            }
            graphics.SetSmoothingMode(Gdiplus::SmoothingModeNone);
            const Gdiplus::SolidBrush white(WHITE);
            const Gdiplus::Pen dark(DARK, 1);
            graphics.FillRectangle(&white, EDGE, EDGE, SIZE_OF_SIGN, SIZE_OF_SIGN);
            graphics.DrawRectangle(&dark, EDGE, EDGE, SIZE_OF_SIGN, SIZE_OF_SIGN);
            const REAL middle = EDGE + SIZE_OF_SIGN / 2;
            graphics.DrawLine(&dark, EDGE + 2, middle, EDGE + SIZE_OF_SIGN - 2, middle);
            if (i == 1) {
                graphics.DrawLine(&dark, middle, EDGE + 2, middle, EDGE + SIZE_OF_SIGN - 2);
            }
        });
        canvas.AddTo(list);
    }
    return list;
}

int GroupTile(CatalogueGroup group) {
    return static_cast<int>(group);
}

int EntryTile(const CatalogueEntry& entry) {
    return CATALOGUE_GROUPS + static_cast<int>(&entry - Catalogue().data());
}

HIMAGELIST MakeIcons(bool greyed) {
    const GdiPlus gdiPlus;
    HIMAGELIST list = ImageList_Create(ICON_SIZE, ICON_SIZE, ILC_COLOR32, 0, static_cast<int>(Icon::Count));
    Canvas canvas(ICON_SIZE);
    for (int i = 0; i < static_cast<int>(Icon::Count); ++i) {
        canvas.Draw([&](Graphics& graphics) { DrawIcon(graphics, static_cast<Icon>(i)); });
        if (greyed) {
            canvas.Grey();
        }
        canvas.AddTo(list);
    }
    return list;
}
