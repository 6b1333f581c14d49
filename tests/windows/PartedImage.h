#pragma once

#include "tests/windows/TestPanel.h"

// A bitmap file in two halves of one colour each (0xrrggbb), side by side or one below the other.
inline std::string PartedImage(int width, int height, unsigned first, unsigned second, bool stacked = false) {
    const auto row = static_cast<std::size_t>((width * 3 + 3) / 4 * 4);
    std::string bytes = BitmapFile(width, height, first);
    const std::size_t start = bytes.size() - row * static_cast<std::size_t>(height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            // The lowest row stands first in the file.
            const bool isFirst = stacked ? y >= height - height / 2 : x < width / 2;
            const std::size_t pixel =
                start + static_cast<std::size_t>(y) * row + static_cast<std::size_t>(x) * 3;
            for (std::size_t channel = 0; channel < 3; ++channel) {
                bytes[pixel + channel] = static_cast<char>((isFirst ? first : second) >> (8 * channel));
            }
        }
    }
    return bytes;
}
