#pragma once

#include "Panelhost/files/LineFile.h"
#include "Panelhost/objects/KeptLines.h"
#include "Panelhost/objects/PanelRoot.h"
#include "logic/text/PropertyLine.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_set>

// Applies a panel file to a root, line by line. Connections are applied at the end, when all their targets
// exist. What cannot be applied is traced, counted and kept. Whoever watches the root's progress can cancel
// it.
class PanelLoading {
public:
    // Lines that belong to no object are kept with the panel, or, where a text is that of single objects, not
    // at all.
    enum class OfNoObject { Kept, Dropped };

    explicit PanelLoading(PanelRoot& root, OfNoObject ofNoObject = OfNoObject::Kept)
        : root_(root), ofNoObject_(ofNoObject) {}
    // Number of controls created, -1 when the file cannot be read or the loading was cancelled. What the
    // lines of a file ask of devices is sent where the root asks for it, that of a text is forgotten.
    int LoadFile(const std::string& path);
    int LoadText(std::string_view text, const char* nameInTraces);

private:
    struct Connection {
        std::string line;
        logic::PropertyLine parts; // of that line
        std::size_t number;
        HOSTINFO* object = nullptr; // null while it is not there
        bool isRefused = false;     // with its object
        KeptLines::Place place{};   // for the case that its object does not come
    };

    int LoadLines(LineSource& source, logic::OpeningValues* asked);
    void CountHeaders(LineSource& source);
    // Tells whoever watches; false when the loading was cancelled, or the root has gone.
    bool GoesOn();
    void Apply(const std::string& line, const logic::PropertyLine& parts);
    void Defer(std::deque<Connection>& connections, const std::string& line,
               const logic::PropertyLine& parts);
    void ApplyDeferred(const Connection& connection);
    // Reason why the header creates nothing, 0 when there is the control.
    int CreateFromHeader(const std::string& line, const logic::PropertyLine& parts, HOSTINFO*& control);
    int Create(const logic::ControlHeader& header, HOSTINFO& parent, HOSTINFO*& control);
    // False when the object went meanwhile.
    bool Send(HOSTINFO& object, const std::string& line, const logic::PropertyLine& parts);
    void RefuseWhole(const std::string& line, const logic::PropertyLine& parts);
    void KeepStray(const std::string& line, const logic::PropertyLine& parts, int reason);
    KeptLines::Place Reserve(const std::string& line, const logic::PropertyLine& parts, int reason);
    void PassOn();
    void Fail(const char* format, const std::string& text);

    HOSTINFO* ObjectOf(const logic::PropertyLine& parts);
    // Whether a header of the object or of what it is in was refused.
    bool IsRefused(std::string name) const;
    HOSTINFO& OwnerOf(const logic::PropertyLine& parts);
    bool Keeps(const HOSTINFO& owner) const;
    void ForgetLast();

    PanelRoot& root_;
    OfNoObject ofNoObject_;
    int created_ = 0;
    int headers_ = 0; // read so far
    int total_ = 0;   // headers that there are, when somebody watches
    DWORD lastTold_ = 0;
    bool mayCancel_ = false;
    bool isCancelled_ = false;
    std::size_t number_ = 0; // of the line
    std::string lastName_;   // most lines belong to the same object as the line before
    HOSTINFO* lastObject_ = nullptr;
    std::unordered_set<std::string> refused_; // folded names of controls whose headers were refused
};
