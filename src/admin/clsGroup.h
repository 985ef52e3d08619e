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
    bool got_info = false;      // a groupfile reply was read to its end
    int my_index = 0;           // the site, from 1
    std::string sGIDText;       // the gid as the table reply spells it; the list shows it
    std::string sUserCountText; // and the user count

    // Reads the lines of a groupfile reply, "200-key | value" each, into this record; lines with unknown keys
    // are passed over. Throws ConversionError, IndexOutOfRange or InvalidArgument with the reply line's
    // number: what was read before stays, and got_info is false.
    void ParseGroupFile(std::span<const std::string_view> lines);

    // Whether uid is among gadmins().
    bool IsGadmin(std::int16_t uid) const;

    // User ids, one -1 where a groupfile names none; empty before the first groupfile.
    const std::vector<std::int16_t>& members() const { return members_; }
    const std::vector<std::int16_t>& gadmins() const { return gadmins_; }

  private:
    friend struct GroupFileReader;

    std::vector<std::int16_t> members_;
    std::vector<std::int16_t> gadmins_;
};

} // namespace corvel
