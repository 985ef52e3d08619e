#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace corvel::fuzz {

// A target is a file of targets/ that defines these two. Both take any bytes.

// Reads the bytes in every way that the program has for them, and requires of each what has to hold.
void check(std::string_view bytes);
// Reads them once: what this costs is required to grow no faster than the number of times that they stand
// there.
void work(std::string_view bytes);

// Whether these bytes are among those that what takes long is done for: where inputs are replayed, all; while
// they are looked for, some, chosen by nothing but themselves.
bool isSample(std::string_view bytes);

// Ends the run, and so has the input kept, where a rule does not hold. rule: for whoever reads the log.
void require(bool holds, const char* rule);

// A path that leads to a file with these bytes, in memory; good until the next call.
std::string fileOf(std::string_view bytes);

// What this process has done so far: a number that grows by one for each edge of the control flow that the
// code passes, each 64 bytes that it has copied or searched by a function of the library and each 64 that it
// has asked for. It does not depend on the load of the machine.
std::uint64_t workDone();

} // namespace corvel::fuzz
