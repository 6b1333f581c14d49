#pragma once

#include <string>
#include <vector>

// The panel files that were opened last, with a picture of each, in the folder of the settings.
class RecentFiles {
public:
    static constexpr std::size_t MOST = 12;

    // An empty folder keeps nothing.
    explicit RecentFiles(std::string folder) : folder_(std::move(folder)) {}

    // The latest first.
    std::vector<std::string> List() const;
    // Puts a file at the front. The picture of one that no longer has room goes.
    void Add(const std::string& file) const;
    void Remove(const std::string& file) const;
    // Where the picture of a file lies, whether there is one or not; empty when nothing is kept.
    std::string PictureOf(const std::string& file) const;

private:
    void Write(const std::vector<std::string>& files) const;

    std::string folder_;
};
