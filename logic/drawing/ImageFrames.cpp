#include "logic/drawing/ImageFrames.h"

#include <string>

namespace logic {

int ButtonFrameCount(std::string_view fileName, int imageWidth, int imageHeight) {
    const std::string_view stem = fileName.substr(0, fileName.rfind('.'));
    const std::string face = "_" + std::to_string(imageWidth / 3) + "x" + std::to_string(imageHeight);
    return imageWidth % 3 == 0 && stem.ends_with(face) ? 3 : 2;
}

} // namespace logic
