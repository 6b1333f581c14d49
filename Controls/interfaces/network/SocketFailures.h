#pragma once

#include "base/Sockets.h"

#include <optional>

// What goes wrong with sockets, as the trace tells it.

// The address of a host; one that is not found is traced. Blocks for as long as the look-up takes.
std::optional<in_addr> FindHost(const char* host);

void TraceSocketError(const char* what, int error = WSAGetLastError());
