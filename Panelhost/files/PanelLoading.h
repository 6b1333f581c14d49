#pragma once

#include "Panelhost/files/LineFile.h"
#include "Panelhost/objects/PanelRoot.h"
#include "logic/PropertyLine.h"

#include <string>
#include <vector>

// Applies a panel file to a root, line by line. Connections are applied at the end, when all their targets
// exist.
class PanelLoading {
public:
    explicit PanelLoading(PanelRoot& root) : root_(root) {}
    // Number of controls created, -1 when the file cannot be read.
    int LoadFile(const std::string& path);
    // What the lines ask of devices is left in "asked", or forgotten.
    int LoadLines(LineSource& source, logic::OpeningValues* asked = nullptr);

private:
    struct Connection {
        std::string line;
        std::size_t lineNumber;
    };

    void Apply(const std::string& line);
    void CreateFromHeader(const std::string& line, const logic::PropertyLine& parts);
    void Send(const std::string& line, const logic::PropertyLine& parts);
    void PassOn();
    void Fail(const char* format, const std::string& text);

    PanelRoot& root_;
    int created_ = 0;
    std::string lastName_; // most lines belong to the same object as the line before
    HOSTINFO* lastObject_ = nullptr;
};
