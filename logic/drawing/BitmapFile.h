// The headers of bitmap files, looked at before the system reads them: its decoders trust them.
#pragma once

#include <string_view>

namespace logic {

// Whether what the headers of a bitmap file say of sizes, palette and place of the pixels fits the file.
// Bytes that do not begin as a bitmap file does are not judged: true.
bool IsSoundBitmapFile(std::string_view bytes);

} // namespace logic
