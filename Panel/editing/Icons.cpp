#include "Panel/editing/Icons.h"

#include "Panel/editing/NewControls.h"
#include "Panel/theme/Theme.h"
#include "base/Gdi.h"

// GDI+ wants the two without the standard library's.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

#include <cstring>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace {

using Gdiplus::Color;
using Gdiplus::Graphics;
using Gdiplus::REAL;

const Color DARK(255, 58, 66, 78);
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
            pixel[0] = pixel[1] = pixel[2] = 140;
            pixel[3] = static_cast<BYTE>(pixel[3] / 2);
        }
    }
    void AddTo(HIMAGELIST list) const { ImageList_Add(list, bitmap_.get(), nullptr); }

private:
    int size_;
    Bitmap bitmap_;
    BYTE* bits_ = nullptr;
};

// Strips of pictures, which stand in this program with a list of their names.

struct Resource {
    const void* data;
    DWORD size;
};

Resource Find(const std::string& name) {
    const HMODULE module = GetModuleHandleA(nullptr);
    const HRSRC found = FindResourceA(module, name.c_str(), MAKEINTRESOURCEA(10)); // RT_RCDATA
    const HGLOBAL loaded = found ? LoadResource(module, found) : nullptr;
    return {loaded ? LockResource(loaded) : nullptr, found ? SizeofResource(module, found) : 0};
}

// The words of a list, one a line.
std::vector<std::string> Names(const char* strip) {
    const Resource text = Find(std::string(strip) + "_NAMES");
    std::vector<std::string> names;
    std::string name;
    for (DWORD i = 0; text.data && i < text.size; ++i) {
        const char c = static_cast<const char*>(text.data)[i];
        if (c == '\n') {
            names.push_back(std::exchange(name, ""));
        } else if (c != '\r') {
            name += c;
        }
    }
    return names;
}

class Strip {
public:
    // CLASSES or COMMANDS, to be drawn on a dark or on a light ground.
    Strip(const char* name, int size, bool isDark) : size_(size) {
        const Resource file =
            Find(std::string(name) + (isDark ? "_DARK_" : "_LIGHT_") + std::to_string(size));
        const HGLOBAL memory = file.data ? GlobalAlloc(GMEM_MOVEABLE, file.size) : nullptr;
        void* const copy = memory ? GlobalLock(memory) : nullptr;
        if (!copy) {
            return;
        }
        std::memcpy(copy, file.data, file.size);
        GlobalUnlock(memory);
        if (IStream* stream = nullptr; CreateStreamOnHGlobal(memory, TRUE, &stream) == S_OK) {
            image_.reset(Gdiplus::Bitmap::FromStream(stream));
            stream->Release();
        }
    }
    void Draw(Graphics& graphics, int index) const {
        if (image_) {
            graphics.SetInterpolationMode(Gdiplus::InterpolationModeNearestNeighbor);
            graphics.SetPixelOffsetMode(Gdiplus::PixelOffsetModeHalf);
            graphics.DrawImage(image_.get(), Gdiplus::Rect(0, 0, size_, size_), index * size_, 0, size_,
                               size_, Gdiplus::UnitPixel);
        }
    }

private:
    int size_;
    std::unique_ptr<Gdiplus::Bitmap> image_;
};

int IndexOf(const std::vector<std::string>& names, const char* name) {
    const auto found = std::find(names.begin(), names.end(), name);
    return found == names.end() ? -1 : static_cast<int>(found - names.begin());
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

bool HasPicture(const CatalogueEntry& entry) {
    return IndexOf(Names("CLASSES"), entry.className) >= 0;
}

HIMAGELIST MakeTiles() {
    const GdiPlus gdiPlus;
    HIMAGELIST list = ImageList_Create(TILE_SIZE, TILE_SIZE, ILC_COLOR32, 0, 8);
    Canvas canvas(TILE_SIZE);
    for (int i = 0; i < CATALOGUE_GROUPS; ++i) {
        canvas.Draw(
            [&](Graphics& graphics) { RoundedTile(graphics, ColourOf(static_cast<CatalogueGroup>(i)), 5); });
        canvas.AddTo(list);
    }
    const std::vector<std::string> names = Names("CLASSES");
    const Strip strip("CLASSES", ICON_SIZE, IsDarkTheme());
    for (const CatalogueEntry& entry : Catalogue()) {
        const int index = IndexOf(names, entry.className);
        canvas.Draw([&](Graphics& graphics) {
            if (index < 0) {
                return DrawTile(graphics, entry);
            }
            graphics.TranslateTransform((TILE_SIZE - ICON_SIZE) / 2, (TILE_SIZE - ICON_SIZE) / 2);
            strip.Draw(graphics, index);
        });
        canvas.AddTo(list);
    }
    return list;
}

HBITMAP MakePicture(const CatalogueEntry& entry, COLORREF ground) {
    const GdiPlus gdiPlus;
    const int index = IndexOf(Names("CLASSES"), entry.className);
    const auto [width, height] = entry.size;
    const int side = std::min(width, height) < PICTURE_SIZE ? ICON_SIZE : PICTURE_SIZE;
    std::uint32_t* bits = nullptr;
    const HBITMAP bitmap = CreatePixels(width, height, &bits);
    if (bitmap) {
        Gdiplus::Bitmap image(width, height, width * 4, PixelFormat32bppARGB, reinterpret_cast<BYTE*>(bits));
        Graphics graphics(&image);
        Color colour;
        colour.SetFromCOLORREF(ground);
        graphics.Clear(colour);
        graphics.TranslateTransform(static_cast<REAL>((width - side) / 2),
                                    static_cast<REAL>((height - side) / 2));
        index < 0 ? DrawTile(graphics, entry)
                  : Strip("CLASSES", side, IsDarkGround(ground)).Draw(graphics, index);
    }
    return bitmap;
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
    const int count = static_cast<int>(Icon::Count);
    HIMAGELIST list = ImageList_Create(ICON_SIZE, ICON_SIZE, ILC_COLOR32, 0, count);
    const Strip strip("COMMANDS", ICON_SIZE, IsDarkTheme());
    Canvas canvas(ICON_SIZE);
    for (int i = 0; i < count; ++i) {
        canvas.Draw([&](Graphics& graphics) { strip.Draw(graphics, i); });
        if (greyed) {
            canvas.Grey();
        }
        canvas.AddTo(list);
    }
    return list;
}
