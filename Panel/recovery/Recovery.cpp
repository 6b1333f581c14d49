#include "Panel/recovery/Recovery.h"

#include "Panel/common/CommandLine.h"
#include "Panel/common/Paths.h"
#include "Panel/common/Report.h"
#include "Panel/editing/PanelEdits.h"
#include "Panelhost/Editing.h"
#include "Panelhost/Trace.h"

#include "base/FileNames.h"

#include <algorithm>
#include <utility>

namespace {

constexpr ULONGLONG DELAY = 5000;        // milliseconds from an edit to its copy
constexpr ULONGLONG LONGEST_TRY = 20000; // milliseconds, when edit follows upon edit
constexpr LONGLONG SLICE = 4;            // milliseconds of each tick
constexpr int OBJECTS_AT_ONCE = 16;

class Stopwatch {
public:
    Stopwatch() {
        QueryPerformanceFrequency(&frequency_);
        QueryPerformanceCounter(&start_);
    }
    LONGLONG Milliseconds() const {
        LARGE_INTEGER now;
        QueryPerformanceCounter(&now);
        return (now.QuadPart - start_.QuadPart) * 1000 / frequency_.QuadPart;
    }

private:
    LARGE_INTEGER frequency_{};
    LARGE_INTEGER start_{};
};

// Empty when the system names no place.
std::wstring FolderOf(const CommandLine& commandLine) {
    if (commandLine.unattended) {
        return {}; // nobody edits
    }
    if (!commandLine.recoveryFolder.empty()) {
        return WideFileName(commandLine.recoveryFolder);
    }
    const std::wstring folder = LocalDataFolder();
    return folder.empty() ? folder : folder + L"\\Recovery";
}

std::string Question(const FoundCopy& found) {
    const std::string& file = found.copy.file;
    const int changes = found.copy.changes;
    return "Panel has ended without saving " + (file.empty() ? "an untitled panel" : file) +
           ". There is a copy of " + found.file.TimeText() + " with " + std::to_string(changes) +
           (changes == 1 ? " unsaved change" : " unsaved changes") +
           ". Open it?\n\n"
           "Yes: it is opened; the file changes when you save it.\n"
           "No: the copy is deleted.\n"
           "Cancel: you are asked again at the next start.";
}

} // namespace

Recovery::Recovery(const CommandLine& commandLine)
    : devices_(commandLine.deviceFile),
      folder_(FolderOf(commandLine)),
      writer_(folder_.empty() ? nullptr : std::make_unique<RecoveryWriter>(folder_)) {}

std::optional<FoundCopy> Recovery::Offer(const Reporter& reporter, const std::string& file) const {
    for (FoundCopy& found : LeftBehind(file)) {
        switch (reporter.Ask(nullptr, Question(found))) {
        case IDYES:
            return std::move(found);
        case IDNO:
            found.file.Remove();
            break;
        default:
            break;
        }
    }
    return std::nullopt;
}

std::vector<FoundCopy> Recovery::LeftBehind(const std::string& file) const {
    std::vector<FoundCopy> found;
    if (!writer_) {
        return found;
    }
    for (RecoveryFile& left : RecoveryFile::TakeLeftBehind(folder_)) {
        const auto text = left.Read();
        if (!text) {
            continue;
        }
        if (auto copy = logic::ParseRecoveryText(*text)) {
            found.push_back({std::move(left), std::move(*copy)});
        } else {
            TRACE("Panel: a damaged copy for recovery was removed%s\n", "");
            left.Remove();
        }
    }
    const auto isAsked = [&](const FoundCopy& one) {
        return !file.empty() && lstrcmpiA(one.copy.file.c_str(), file.c_str()) == 0;
    };
    std::sort(found.begin(), found.end(), [&](const FoundCopy& one, const FoundCopy& other) {
        return isAsked(one) != isAsked(other) ? isAsked(one) : one.file.Time() > other.file.Time();
    });
    return found;
}

void Recovery::Adopt(RecoveryFile file, const PanelEdits& edits) {
    if (writer_) {
        writer_->Adopt(std::move(file));
        hasCopy_ = true;
        written_ = edits.Serial();
    }
}

void Recovery::Tick(PanelEdits& edits, const std::string& file) {
    if (!writer_) {
        return;
    }
    const ULONGLONG now = GetTickCount64();
    if (const DWORD error = writer_->TakeFailure(); error != ERROR_SUCCESS) {
        Failed(edits, ErrorText(error));
    }
    if (edits.UnsavedChanges() == 0) {
        return Discard();
    }
    if (making_ && madeOf_ != edits.Serial()) {
        if (now < due_ + LONGEST_TRY) {
            StartText(edits.Serial());
        } else { // at once, before the next edit
            StartText(edits.Serial());
            while (making_) {
                MakeText(edits, file);
            }
        }
    }
    if (making_) {
        return MakeText(edits, file);
    }
    if (written_ == edits.Serial()) {
        return;
    }
    if (due_ == 0) {
        due_ = now + DELAY;
    }
    if (now >= due_ && !writer_->IsBusy()) {
        StartText(edits.Serial());
    }
}

void Recovery::StartText(unsigned serial) {
    making_ = true;
    madeOf_ = serial;
    next_ = 0;
    text_.clear();
}

void Recovery::MakeText(PanelEdits& edits, const std::string& file) {
    const Stopwatch watch;
    int made = 0;
    do {
        made = a_PanelText(edits.Root(), next_, OBJECTS_AT_ONCE, &text_);
        next_ += made;
    } while (made > 0 && watch.Milliseconds() < SLICE);
    if (made > 0) {
        return;
    }
    making_ = false;
    due_ = 0; // also after a failure: it is tried again later
    if (made < 0) {
        Failed(edits, "properties cannot be read");
    } else {
        written_ = madeOf_;
        hasCopy_ = true;
        writer_->Write(logic::RecoveryText({file, devices_, edits.UnsavedChanges(), std::move(text_)}));
    }
    text_ = {};
}

// It is tried again.
void Recovery::Failed(const PanelEdits& edits, const std::string& reason) {
    written_.reset();
    if (!std::exchange(failureTold_, true)) {
        EDITTRACE(edits.Root(), "No copy of the unsaved changes can be written: %s", reason.c_str());
    }
}

void Recovery::Discard() {
    making_ = false;
    text_ = {};
    due_ = 0;
    written_.reset();
    failureTold_ = false;
    if (hasCopy_) {
        hasCopy_ = false;
        writer_->Remove();
    }
}

void Recovery::End() {
    Discard();
    writer_.reset();
}
