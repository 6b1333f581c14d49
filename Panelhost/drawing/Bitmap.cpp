// Images: loading and saving through GDI+, drawing through GDI, and the registry that loads each file once.

#include "Panelhost/Bitmap.h"

#include "Panelhost/ApplicationPaths.h"
#include "base/Gdi.h"
#include "base/Guard.h"
#include "logic/drawing/BitmapFile.h"
#include "logic/drawing/PanelColours.h"
#include "logic/text/PropertyLine.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <optional>
#include <string>
#include <objidl.h>
#include <string>
#include <unordered_map>
#include <vector>

// gdiplus.h uses min and max as if they were built in.
#include <algorithm>
namespace Gdiplus {
using std::max;
using std::min;
} // namespace Gdiplus
#include <gdiplus.h>

namespace {

constexpr UINT MAXIMUM_SIDE = 16384;

// GDI+ is started with the first image and stays: it may not be ended while a library is unloaded.
bool StartGdiplus() {
    static const bool started = [] {
        ULONG_PTR token = 0;
        Gdiplus::GdiplusStartupInput input;
        return Gdiplus::GdiplusStartup(&token, &input, nullptr) == Gdiplus::Ok;
    }();
    return started;
}

std::wstring Widen(const char* text) {
    wchar_t wide[MAX_PATH] = L"";
    MultiByteToWideChar(CP_ACP, 0, text, -1, wide, MAX_PATH);
    return wide;
}

std::uint32_t Premultiplied(std::uint32_t pixel) {
    const std::uint32_t alpha = pixel >> 24;
    const auto scale = [alpha](std::uint32_t channel) { return (channel * alpha + 127) / 255; };
    return (alpha << 24) | (scale((pixel >> 16) & 255) << 16) | (scale((pixel >> 8) & 255) << 8) |
           scale(pixel & 255);
}

// Copies the image's pixels in the given format, rows without gaps.
bool ReadPixels(Gdiplus::Bitmap& image, Gdiplus::PixelFormat format, std::uint32_t* pixels) {
    const Gdiplus::Rect area(0, 0, static_cast<INT>(image.GetWidth()), static_cast<INT>(image.GetHeight()));
    Gdiplus::BitmapData data;
    if (image.LockBits(&area, Gdiplus::ImageLockModeRead, format, &data) != Gdiplus::Ok) {
        return false;
    }
    for (UINT row = 0; row < data.Height; ++row) {
        std::memcpy(pixels + std::size_t{row} * data.Width,
                    static_cast<const char*>(data.Scan0) + static_cast<std::ptrdiff_t>(row) * data.Stride,
                    std::size_t{data.Width} * 4);
    }
    image.UnlockBits(&data);
    return true;
}

// The file as a whole; nothing when it cannot be read or is larger than any picture is.
std::optional<std::string> ReadWholeFile(const char* path) {
    constexpr DWORD LARGEST = 0x40000000;
    const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_FLAG_SEQUENTIAL_SCAN, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return std::nullopt;
    }
    const std::unique_ptr<void, decltype(&CloseHandle)> closed(file, CloseHandle);
    const DWORD size = GetFileType(file) == FILE_TYPE_DISK ? GetFileSize(file, nullptr) : INVALID_FILE_SIZE;
    if (size > LARGEST) {
        return std::nullopt;
    }
    std::string bytes(size, '\0');
    DWORD length = 0;
    return ReadFile(file, bytes.data(), size, &length, nullptr) && length == size ? std::optional(bytes)
                                                                                  : std::nullopt;
}

std::unique_ptr<OSMIRBitmap> LoadImageFile(const char* path) {
    const auto bytes = ReadWholeFile(path);
    if (!bytes || !logic::IsSoundBitmapFile(*bytes) || !StartGdiplus()) {
        return nullptr;
    }
    Gdiplus::Bitmap image(Widen(path).c_str());
    const UINT width = image.GetWidth();
    const UINT height = image.GetHeight();
    if (image.GetLastStatus() != Gdiplus::Ok || width == 0 || height == 0 || width > MAXIMUM_SIDE ||
        height > MAXIMUM_SIDE) {
        return nullptr;
    }
    std::uint32_t* pixels = nullptr;
    HBITMAP bitmap = CreatePixels(static_cast<int>(width), static_cast<int>(height), &pixels);
    if (bitmap == nullptr) {
        return nullptr;
    }
    // A bitmap file with 32 bits a pixel counts as opaque for GDI+, yet its fourth byte may hold an alpha
    // channel.
    const bool fourthByteUnused = image.GetPixelFormat() == PixelFormat32bppRGB;
    const bool read =
        ReadPixels(image, fourthByteUnused ? PixelFormat32bppRGB : PixelFormat32bppARGB, pixels);
    if (!read) {
        DeleteObject(bitmap);
        return nullptr;
    }
    const std::size_t count = std::size_t{width} * height;
    if (fourthByteUnused &&
        std::all_of(pixels, pixels + count, [](std::uint32_t p) { return p >> 24 == 0; })) {
        std::for_each(pixels, pixels + count, [](std::uint32_t& p) { p |= 0xFF000000; });
    }
    const bool hasAlpha = std::any_of(pixels, pixels + count, [](std::uint32_t p) { return p >> 24 != 255; });
    if (hasAlpha) {
        std::transform(pixels, pixels + count, pixels, Premultiplied);
    }
    return std::make_unique<OSMIRBitmap>(bitmap, static_cast<int>(width), static_cast<int>(height), hasAlpha);
}

struct Registration {
    std::unique_ptr<OSMIRBitmap> bitmap;
    int references = 0;
};

// By absolute path, without regard to case. Used on the user-interface thread only.
std::unordered_map<std::string, Registration>& Registry() {
    static std::unordered_map<std::string, Registration> registry;
    return registry;
}

// Most controls of a panel ask for the same picture as the one before. That of a name below the application
// folder is always the same file; others may depend on the current drive and folder.
std::string RegistryKey(const char* name) {
    static std::string lastName;
    static std::string lastKey;
    if (!lastName.empty() && name != nullptr && lastName == name) {
        return lastKey;
    }
    char path[MAX_PATH];
    std::string key = a_MakeFullPathName(name, path) != 0 ? logic::FoldName(path) : std::string();
    if (!key.empty() && *name != '\\' && *name != '/' && std::strchr(name, ':') == nullptr) {
        lastName.clear(); // for the case that there is no memory for one of the two
        lastKey = key;
        lastName = name;
    }
    return key;
}

} // namespace

OSMIRBitmap::OSMIRBitmap(HBITMAP bitmap, int width, int height, bool hasAlpha)
    : width_(width),
      height_(height),
      hasAlpha_(hasAlpha),
      bitmap_(bitmap),
      dc_(CreateCompatibleDC(nullptr)),
      previous_(SelectObject(dc_, bitmap)) {}

OSMIRBitmap::~OSMIRBitmap() {
    SelectObject(dc_, previous_);
    DeleteDC(dc_);
    DeleteObject(bitmap_);
}

void OSMIRBitmap::Draw(HDC target, int x, int y, int width, int height, int sourceX, int sourceY) const {
    // AlphaBlend refuses a source that reaches beyond the image.
    width = std::min(width, width_ - sourceX);
    height = std::min(height, height_ - sourceY);
    if (width <= 0 || height <= 0 || sourceX < 0 || sourceY < 0) {
        return;
    }
    if (hasAlpha_) {
        const BLENDFUNCTION blend{AC_SRC_OVER, 0, 255, AC_SRC_ALPHA};
        GdiAlphaBlend(target, x, y, width, height, dc_, sourceX, sourceY, width, height, blend);
    } else {
        BitBlt(target, x, y, width, height, dc_, sourceX, sourceY, SRCCOPY);
    }
}

OSMIRBitmap* a_GetBitmap3(const char* name) {
    return Guarded<OSMIRBitmap*>(nullptr, [&]() -> OSMIRBitmap* {
        const std::string key = RegistryKey(name);
        if (key.empty()) {
            return nullptr;
        }
        auto& registry = Registry();
        const auto found = registry.find(key);
        if (found != registry.end()) {
            ++found->second.references;
            return found->second.bitmap.get();
        }
        char path[MAX_PATH];
        a_MakeFullPathName(name, path);
        auto bitmap = LoadImageFile(path);
        if (bitmap == nullptr) {
            return nullptr;
        }
        Registration& registration = registry[key];
        registration = {std::move(bitmap), 1};
        return registration.bitmap.get();
    });
}

void a_UnregisterBitmap3(const char* name) {
    Guarded([&] {
        auto& registry = Registry();
        const auto found = registry.find(RegistryKey(name));
        if (found != registry.end() && --found->second.references == 0) {
            registry.erase(found);
        }
    });
}

void a_UnregisterBitmap(const OSMIRBitmap* bitmap) {
    auto& registry = Registry();
    const auto found = std::find_if(registry.begin(), registry.end(), [bitmap](const auto& entry) {
        return entry.second.bitmap.get() == bitmap;
    });
    if (found != registry.end() && --found->second.references == 0) {
        registry.erase(found);
    }
}

int a_BitmapCount() {
    return static_cast<int>(Registry().size());
}

const OSMIRBitmap* a_GetNotEqualSign() {
    constexpr std::uint32_t ACCENT = 0xFF000000U | (logic::PANEL_ACCENT & 0xFF) << 16 |
                                     (logic::PANEL_ACCENT & 0xFF00) | logic::PANEL_ACCENT >> 16;
    // An amber badge with a dark sign; a dot lets the control show through.
    static constexpr const char* SIGN[] = {
        ".aaaaaaaaaaa.", "aaaaaaaaa##aa", "aaaaaaaa##aaa", "aa#########aa", "aa#########aa", "aaaaa##aaaaaa",
        "aa#########aa", "aa#########aa", "aaa##aaaaaaaa", "aa##aaaaaaaaa", ".aaaaaaaaaaa.",
    };
    static const int width = static_cast<int>(std::strlen(SIGN[0]));
    static const int height = static_cast<int>(std::size(SIGN));
    // Not on the heap: it is wanted when there is no memory, too.
    static const OSMIRBitmap bitmap(
        [] {
            std::uint32_t* pixels = nullptr;
            HBITMAP handle = CreatePixels(width, height, &pixels);
            for (const char* row : SIGN) {
                for (; *row != '\0' && pixels != nullptr; ++row) {
                    *pixels++ = *row == '.' ? 0 : (*row == 'a' ? ACCENT : 0xFF201000);
                }
            }
            return handle;
        }(),
        width, height, true);
    return &bitmap;
}

int a_SavePicture(HDC source, int width, int height, const char* path) {
    if (width <= 0 || height <= 0 || path == nullptr || !StartGdiplus()) {
        return 0;
    }
    return Guarded(0, [&] {
        std::uint32_t* pixels = nullptr;
        const OSMIRBitmap picture(CreatePixels(width, height, &pixels), width, height, false);
        if (pixels == nullptr || !BitBlt(picture.Dc(), 0, 0, width, height, source, 0, 0, SRCCOPY)) {
            return 0;
        }
        GdiFlush();
        static constexpr CLSID PNG{
            0x557CF406, 0x1A04, 0x11D3, {0x9A, 0x73, 0x00, 0x00, 0xF8, 0x1E, 0xF3, 0x2E}};
        Gdiplus::Bitmap image(width, height, width * 4, PixelFormat32bppRGB, reinterpret_cast<BYTE*>(pixels));
        return image.Save(Widen(path).c_str(), &PNG, nullptr) == Gdiplus::Ok ? 1 : 0;
    });
}
