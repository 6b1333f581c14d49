#pragma once

#include "Panelhost/Trace.h"
#include "logic/PropertyLine.h"

#include <string>
#include <windows.h>

// Reads a text file line by line, block by block. While one is read, trace lines name the file and the line.
class LineFile {
public:
    explicit LineFile(const std::string& path)
        : file_(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr)),
          name_(path.substr(path.find_last_of("\\/") + 1)),
          location_(name_.c_str()) {}
    ~LineFile() {
        if (IsOpen()) {
            CloseHandle(file_);
        }
    }
    LineFile(const LineFile&) = delete;
    LineFile& operator=(const LineFile&) = delete;

    bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE; }
    // The file could not be read to its end.
    bool HasFailed() const { return failed_; }

    // The next line; false at the end of the file. A line that is too long or holds a NUL is not usable.
    bool Next(std::string& line, bool& usable) {
        while (!reader_.Next(line, usable)) {
            if (atEnd_) {
                return false;
            }
            char block[65536];
            DWORD length = 0;
            failed_ = ReadFile(file_, block, sizeof block, &length, nullptr) == 0;
            if (failed_ || length == 0) {
                reader_.Finish();
                atEnd_ = true;
            } else {
                reader_.Feed({block, length});
            }
        }
        location_.SetLine(reader_.LineNumber());
        return true;
    }

    std::size_t LineNumber() const { return reader_.LineNumber(); }
    // For lines that are applied after the file was read.
    TraceLocation& Location() { return location_; }

private:
    HANDLE file_;
    std::string name_;
    TraceLocation location_;
    logic::LineReader reader_;
    bool atEnd_ = false;
    bool failed_ = false;
};
