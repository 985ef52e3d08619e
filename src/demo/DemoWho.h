#pragma once

#include "demo/DemoAccounts.h"

#include <string>

namespace corvel {

// Who is on the demo server and does what: a dozen made-up connections in all states, always the same ones,
// those of users that no longer exist left out. One line each, ended by CR LF: "200-cid", then behind
// separators user, group, number of the connection, service, ident, address, host, address of the data
// connection, last command, last reply code, real path, path, seconds idle, seconds of session, state (0
// idle, 1 download, 2 upload, 3 listing), bytes moved, kB/s.
std::string whoLines(const DemoAccounts& accounts);

} // namespace corvel
