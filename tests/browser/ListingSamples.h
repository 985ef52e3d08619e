#pragma once

#include <string>
#include <vector>

namespace corvel {

// A line as some server lists it and the entry that it is read as: type, access, owner, group, size, date
// and name between bars; empty for a line that is no entry.
struct ListingSample {
    const char* name;
    std::string line;
    const char* entry;
    const char* merged = nullptr; // with blanks merged, where that differs
};

const std::vector<ListingSample>& listingSamples();

} // namespace corvel
