#pragma once

#include "common/ports/Socket.h"

#include <string>

namespace corvel {

// What a person reads about the state of a socket, such as "Connected (10.0.0.5:21)". The host of state 6 is
// the one that was configured, the one of state 7 its address.
std::string SocketStateText(const Socket& socket);

} // namespace corvel
