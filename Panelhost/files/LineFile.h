#pragma once

#include "Panelhost/Trace.h"
#include "logic/text/PropertyLine.h"

#include <string>
#include <string_view>
#include <utility>
#include <windows.h>

// Lines of a text that is read front to back. While it is read, trace lines name it and the line.
class LineSource {
public:
    // For whoever keeps the lines that are not usable: all of each is left, up to this length.
    static constexpr std::size_t WHOLE_LINES = 1 << 24;
    static constexpr std::size_t EXCERPTS = logic::LineReader::excerptLength;

    LineSource(std::string name, std::size_t leftOfUnusable)
        : name_(std::move(name)), location_(name_.c_str()), reader_(leftOfUnusable) {}
    virtual ~LineSource() = default;
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;

    // The next line; false at the end. A line that is too long or holds a NUL is not usable.
    bool Next(std::string& line, bool& usable) {
        while (!reader_.Next(line, usable)) {
            if (atEnd_) {
                return false;
            }
            atEnd_ = !Feed(reader_);
            if (atEnd_) {
                reader_.Finish();
            }
        }
        location_.SetLine(reader_.LineNumber());
        return true;
    }

    std::size_t LineNumber() const { return reader_.LineNumber(); }
    // The line that Next gave last is not all there.
    bool WasCut() const { return reader_.WasCut(); }
    // For lines that are applied after all were read.
    TraceLocation& Location() { return location_; }

protected:
    // Hands further bytes to the reader; false when there are none.
    virtual bool Feed(logic::LineReader& reader) = 0;

private:
    std::string name_;
    TraceLocation location_;
    logic::LineReader reader_;
    bool atEnd_ = false;
};

// A text in memory.
class LineText : public LineSource {
public:
    LineText(std::string_view text, const char* name) : LineSource(name, WHOLE_LINES), text_(text) {}

protected:
    bool Feed(logic::LineReader& reader) override {
        reader.Feed(text_);
        return !std::exchange(text_, {}).empty();
    }

private:
    std::string_view text_;
};

// A file, read block by block.
class LineFile : public LineSource {
public:
    explicit LineFile(const std::string& path, std::size_t leftOfUnusable = EXCERPTS)
        : LineSource(path.substr(path.find_last_of("\\/") + 1), leftOfUnusable),
          file_(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                            FILE_FLAG_SEQUENTIAL_SCAN, nullptr)) {}
    ~LineFile() override {
        if (file_ != INVALID_HANDLE_VALUE) {
            CloseHandle(file_);
        }
    }

    // A name can also stand for a device, whose reading need not end.
    bool IsOpen() const { return file_ != INVALID_HANDLE_VALUE && GetFileType(file_) == FILE_TYPE_DISK; }
    // The file could not be read to its end.
    bool HasFailed() const { return failed_; }

protected:
    bool Feed(logic::LineReader& reader) override {
        char block[65536];
        DWORD length = 0;
        failed_ = ReadFile(file_, block, sizeof block, &length, nullptr) == 0;
        reader.Feed({block, failed_ ? 0 : length});
        return length > 0 && !failed_;
    }

private:
    HANDLE file_;
    bool failed_ = false;
};
