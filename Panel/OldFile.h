#pragma once

#include <string>

// A panel file that was opened with lines that could not be read. Before it is saved for the first time it is
// copied to a free name.
class OldFile {
public:
    // Empty where there is nothing to keep.
    void SetFile(const std::string& file) {
        file_ = file;
        copy_.clear();
    }
    // About to save to that file: copies the old one when it is this. False when that fails.
    bool Keep(const std::string& file, std::string& error);
    // The file was saved: the copy stays, and no further one is made.
    void Saved();
    // It could not be saved: the copy goes again.
    void TakeBack();

private:
    std::string file_;
    std::string copy_; // made by Keep; empty for none
};
