// How many faces the image of a button holds.
#pragma once

#include <string_view>

namespace logic {

// An image of a button holds two frames side by side. It holds three when its file name ends in the size of a
// face ("..._26x16.bmp") and the image is exactly three such faces wide and one high.
int ButtonFrameCount(std::string_view fileName, int imageWidth, int imageHeight);

} // namespace logic
