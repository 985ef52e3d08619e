#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// One group of one site. The table reply fills iGID, sName and iUserCount; ParseGroupFile the rest. All texts
// are the server's bytes.
class clsGroup {
  public:
    std::int16_t iGID = 0; // -1 marks the one record of an empty table
    std::string sName;
    std::int16_t iUserCount = 0;
    std::string sDescription;
    std::string sVFSFile;
    std::int16_t iGroupSlots = 0;
    std::int16_t iLeechSlots = 0;
    // User ids, one -1 where a groupfile names none; empty before the first groupfile.
    std::vector<std::int16_t> members;
    std::vector<std::int16_t> gadmins;
    bool got_info = false;      // a groupfile reply was read to its end
    int my_index = 0;           // the site, from 1
    std::string sGIDText;       // the gid as the table reply spells it; the list shows it
    std::string sUserCountText; // and the user count

    // Reads the lines of a groupfile reply, as clsUser::ParseUserFile does those of a userfile.
    void ParseGroupFile(std::span<const std::string_view> lines);

    // Whether uid is among the gadmins.
    bool IsGadmin(std::int16_t uid) const;
};

} // namespace corvel
