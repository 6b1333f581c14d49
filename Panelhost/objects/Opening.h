#pragma once

#include "logic/devices/OpeningValues.h"

#include <utility>

class PanelRoot;

// What a root asks of its devices because a panel file is being loaded, or text pasted: nothing of it is sent
// meanwhile. What is kept of it is sent afterwards.
class Opening {
public:
    bool IsUnderWay() const { return depth_ > 0; }
    // A value that is asked for while the loading is under way. One without an address is forgotten.
    void PutAside(const std::string& address, int datatype, const void* data);
    // Somebody asks for another value now.
    void Supersede(const std::string& address);
    // From now on the values go to their devices as these can be reached, until their time is over.
    void SendLater(logic::OpeningValues values);
    // Sends what can be sent now. What is too late is traced.
    void Send(PanelRoot& root);

private:
    friend class OpeningScope;
    int depth_ = 0;
    logic::OpeningValues* asked_ = nullptr; // by what is being loaded; null: it is forgotten
    logic::OpeningValues waiting_;
};

// As long as it lives a loading is under way.
class OpeningScope {
public:
    OpeningScope(Opening& opening, logic::OpeningValues* asked)
        : opening_(opening), outer_(std::exchange(opening.asked_, asked)) {
        ++opening_.depth_;
    }
    ~OpeningScope() {
        --opening_.depth_;
        opening_.asked_ = outer_;
    }
    OpeningScope(const OpeningScope&) = delete;
    OpeningScope& operator=(const OpeningScope&) = delete;

private:
    Opening& opening_;
    logic::OpeningValues* outer_;
};
