#pragma once

#include "base/Sockets.h"

#include <string>

// The programs that the tests of real devices talk to, as partners.py has started them.
class Partner {
public:
    // The control port that stands at that place in a variable of the environment; 0 when there is none.
    explicit Partner(int port);
    // What it answers to a text; empty when it does not.
    std::string Ask(const std::string& text) const;

private:
    int port_;
    Socket socket_;
};

// Ports: of the mixer, of its control, of the other partners. 0 when the test was started without.
int MixerPort();
int MixerControlPort();
int PartnersPort();
