#pragma once

#include "Panelhost/Fonts.h"

#include <string>

// The font of a control; keeps the cache's reference count right.
class FontProperty {
public:
    FontProperty() = default;
    ~FontProperty() { Release(); }
    FontProperty(const FontProperty&) = delete;
    FontProperty& operator=(const FontProperty&) = delete;

    // False, and nothing changed, when the description is unreadable.
    bool Load(const std::string& description) {
        const HFONT loaded = a_GetFont(description.c_str());
        if (loaded == nullptr) {
            return false;
        }
        Release();
        font_ = loaded;
        return true;
    }

    // The description; empty when there is no font.
    std::string Text() const { return a_GetFontString(font_); }
    // Null when there is none.
    HFONT Get() const { return font_; }

private:
    void Release() {
        if (font_ != nullptr) {
            a_ReleaseFont(font_);
        }
    }

    HFONT font_ = nullptr;
};
