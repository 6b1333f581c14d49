#include "Panel/start/RecentFiles.h"

#include "Panel/common/Settings.h"
#include "base/FileSearch.h"

#include <windows.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>

namespace {

constexpr const char* LIST = "Recent.txt";

std::vector<std::string> Without(std::vector<std::string> files, const std::string& file) {
    std::erase_if(files,
                  [&](const std::string& other) { return lstrcmpiA(file.c_str(), other.c_str()) == 0; });
    return files;
}

} // namespace

std::vector<std::string> RecentFiles::List() const {
    std::vector<std::string> files;
    if (folder_.empty()) {
        return files;
    }
    const std::string text = ReadSettings(folder_, LIST);
    for (std::size_t at = 0; at < text.size() && files.size() < MOST;) {
        const std::size_t end = std::min(text.find_first_of("\r\n", at), text.size());
        if (end > at) {
            files.push_back(text.substr(at, end - at));
        }
        at = end + 1;
    }
    return files;
}

void RecentFiles::Add(const std::string& file) const {
    std::vector<std::string> files = Without(List(), file);
    files.insert(files.begin(), file);
    files.resize(std::min(files.size(), MOST));
    Write(files);
}

void RecentFiles::Remove(const std::string& file) const {
    Write(Without(List(), file));
}

std::string RecentFiles::PictureOf(const std::string& file) const {
    if (folder_.empty()) {
        return {};
    }
    std::string folded = file;
    CharLowerBuffA(folded.data(), static_cast<DWORD>(folded.size()));
    std::uint64_t hash = 0xCBF29CE484222325; // FNV-1a
    for (const char character : folded) {
        hash = (hash ^ static_cast<unsigned char>(character)) * 0x100000001B3;
    }
    char name[40];
    std::snprintf(name, sizeof name, "\\Recent_%08x%08x.png", static_cast<unsigned>(hash >> 32),
                  static_cast<unsigned>(hash));
    return folder_ + name;
}

void RecentFiles::Write(const std::vector<std::string>& files) const {
    std::string text;
    std::vector<std::string> pictures;
    for (const std::string& file : files) {
        text += file + "\r\n";
        pictures.push_back(PictureOf(file));
    }
    if (!WriteSettings(folder_, LIST, text)) {
        return;
    }
    for (FileSearch found(folder_ + "\\Recent_*.png"); found.HasFile(); found.Next()) {
        const std::string picture = folder_ + "\\" + found.Name();
        if (std::find(pictures.begin(), pictures.end(), picture) == pictures.end()) {
            DeleteFileA(picture.c_str());
        }
    }
}
