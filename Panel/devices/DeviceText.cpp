#include "Panel/devices/DeviceText.h"

#include "Panel/common/Paths.h"
#include "Panel/common/TextFile.h"
#include "Panelhost/DeviceFiles.h"

namespace {

std::string WithReturns(const std::string& bytes) {
    std::string text;
    text.reserve(bytes.size());
    for (const char letter : bytes) {
        if (letter == '\n' && !text.ends_with('\r')) {
            text += '\r';
        }
        text += letter;
    }
    return text;
}

std::string WithoutReturns(const std::string& text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (const char letter : text) {
        if (letter == '\n' && bytes.ends_with('\r')) {
            bytes.pop_back();
        }
        bytes += letter;
    }
    return bytes;
}

} // namespace

std::string DeviceText::Read(const std::string& file) {
    file_ = file;
    text_.clear();
    bytes_.reset();
    hasReturns_ = true;
    if (file.empty()) {
        return {};
    }
    unsigned long error = 0;
    bytes_ = ReadTextFile(file, LONGEST, &error);
    if (!bytes_) {
        return FileExists(file) ? "it cannot be read: " + ErrorText(error) : "";
    }
    if (bytes_->find('\0') != std::string::npos) {
        return "it is no text";
    }
    hasReturns_ = bytes_->find('\n') == std::string::npos || bytes_->find("\r\n") != std::string::npos;
    text_ = WithReturns(*bytes_);
    return {};
}

bool DeviceText::IsOtherOutside() const {
    unsigned long error = 0;
    return !file_.empty() && ReadTextFile(file_, LONGEST, &error) != bytes_;
}

std::string DeviceText::Write(const std::string& file, const std::string& text) {
    std::string bytes = hasReturns_ ? text : WithoutReturns(text);
    if (const unsigned long error = a_ReplaceFile(file.c_str(), bytes); error != 0) {
        return ErrorText(error);
    }
    file_ = file;
    text_ = text;
    bytes_ = std::move(bytes);
    return {};
}
