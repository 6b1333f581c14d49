#pragma once

// Whether a host answers an echo request within two seconds: 1, otherwise 0. Any datagram counts as an
// answer. Blocks for as long, and for as long as its name takes to be looked up.
int PingHost(const char* host);
