#pragma once

#include <string>

namespace corvel {

// An entry of a list box in which several entries can be selected; the text is in the server's bytes.
struct SelectableEntry {
    std::string sText;
    bool bSelected = false;

    bool operator==(const SelectableEntry&) const = default;
};

} // namespace corvel
