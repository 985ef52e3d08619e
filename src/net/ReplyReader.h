#pragma once

#include "admin/mdlUsersGroups.h"
#include "browser/Listing.h"
#include "net/ActivityRows.h"

#include <string_view>
#include <variant>

namespace corvel {

// What reads the lines of a reply as they arrive, so that neither the reply has to be kept nor all of it to
// be read at once. None for a reply of which only the ends count.
using ReplyReader = std::variant<std::monostate, ListingReader, WhoReader, TableReader<clsUser>,
                                 TableReader<clsGroup>, DetailsReader<clsUser>, DetailsReader<clsGroup>>;

inline void read(std::monostate /*reader*/, std::string_view /*line*/) {}
template <typename Reader>
void read(Reader& reader, std::string_view line) {
    reader.read(line);
}

} // namespace corvel
