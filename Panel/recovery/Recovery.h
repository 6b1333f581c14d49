#pragma once

#include "Panel/recovery/RecoveryWriter.h"
#include "logic/editing/RecoveryCopy.h"

#include <windows.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

class PanelEdits;
class Reporter;
struct CommandLine;

// A copy that a program left behind.
struct FoundCopy {
    RecoveryFile file;
    logic::RecoveryCopy copy;
};

// Keeps a copy of the panel on the disk while it has edits that its file does not hold, for a program that
// ends without being asked to. The copy goes when the panel is saved or let go of.
class Recovery {
public:
    // Keeps nothing and finds nothing in a run that ends by itself.
    explicit Recovery(const CommandLine& commandLine);

    // Asks for each copy that was left behind whether it is to be opened, that of the panel file first, then
    // from the latest on. The one that is, or nothing; what the user does not want is deleted.
    std::optional<FoundCopy> Offer(const Reporter& reporter, const std::string& file) const;
    // The panel came from that copy: the place is this program's from now on.
    void Adopt(RecoveryFile file, const PanelEdits& edits);

    // Does a part of what is due for the panel with that file.
    void Tick(PanelEdits& edits, const std::string& file);
    // The panel is let go of.
    void Discard();
    // The program ends well: waits until the copy is gone.
    void End();

private:
    void StartText(unsigned serial);
    void MakeText(PanelEdits& edits, const std::string& file);
    std::vector<FoundCopy> LeftBehind(const std::string& file) const;
    void Failed(const PanelEdits& edits, const std::string& reason);

    std::string devices_;                    // the device file that the program was started with
    std::wstring folder_;                    // empty when no copies are kept
    std::unique_ptr<RecoveryWriter> writer_; // null without a folder
    bool hasCopy_ = false;                   // written, or being written
    std::optional<unsigned> written_;        // the edits that the copy holds
    ULONGLONG due_ = 0;                      // when to begin with the next one; 0 while there is nothing new

    bool failureTold_ = false; // of these unsaved changes

    // The text that is being made.
    bool making_ = false;
    unsigned madeOf_ = 0; // edits
    int next_ = 0;        // object
    std::string text_;
};
