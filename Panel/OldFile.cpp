#include "Panel/OldFile.h"

#include "Panel/common/Paths.h"

#include <windows.h>

bool OldFile::Keep(const std::string& file, std::string& error) {
    copy_.clear();
    if (file_.empty() || lstrcmpiA(file.c_str(), file_.c_str()) != 0 || !FileExists(file)) {
        return true;
    }
    constexpr int MOST_COPIES = 1000;
    for (int number = 1; number <= MOST_COPIES; ++number) {
        const std::string name = file + (number == 1 ? "" : "." + std::to_string(number)) + ".bak";
        if (CopyFileA(file.c_str(), name.c_str(), TRUE)) {
            copy_ = name;
            return true;
        }
        const DWORD code = GetLastError();
        if (GetFileAttributesA(name.c_str()) == INVALID_FILE_ATTRIBUTES) { // its name is not the reason
            error =
                "cannot save " + file + ": the old file cannot be copied to " + name + ": " + ErrorText(code);
            return false;
        }
    }
    error = "cannot save " + file + ": there are too many copies of the old file";
    return false;
}

void OldFile::Saved() {
    if (!copy_.empty()) {
        SetFile("");
    }
}

void OldFile::TakeBack() {
    if (!copy_.empty()) {
        SetFileAttributesA(copy_.c_str(),
                           FILE_ATTRIBUTE_NORMAL); // that of a read-only file is read-only, too
        DeleteFileA(copy_.c_str());
        copy_.clear();
    }
}
