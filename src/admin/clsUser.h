#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// What a userfile says about an account beyond its table.
struct UserDetails {
    static constexpr std::size_t sectionCount = 10;

    std::string sPwdHash; // no reply fills it
    std::string sTagline;
    std::string sVFSFile;
    std::string sHomePath;
    std::int32_t iBWLimitUp = 0; // kB/s
    std::int32_t iBWLimitDn = 0;
    std::int16_t iLoginsFTP = 0;
    std::int16_t iLoginsTelnet = 0;
    std::int16_t iLoginsHTTP = 0;
    // Of the ten sections; credits in 1/10000 of the server's unit, of which 1024 make a megabyte.
    std::array<std::int64_t, sectionCount> credits{};
    std::array<std::int16_t, sectionCount> ratios{};
    // Group ids, one -1 where a userfile names none.
    std::vector<std::int16_t> groups{-1};
    std::vector<std::int16_t> admingroups{-1};
    std::vector<std::string> ips{""}; // the masks from which the user may log in, ident@host
};

// One account of one site. The table reply fills the fields, ParseUserFile the details. All texts are the
// server's bytes.
class clsUser {
  public:
    std::int16_t iUID = 0; // -1 marks the one record of an empty table
    bool got_info = false; // a userfile reply was read to its end
    int my_index = 0;      // the site, from 1
    std::string sName;
    std::string sStdGroup;
    std::string sFlags;
    std::string sUIDText; // the uid as the table reply spells it; the list shows it

    // Reads the lines of a userfile reply, "200-key | value" each, into this record; lines with unknown keys
    // are passed over. Throws ConversionError, IndexOutOfRange or InvalidArgument with the reply line's
    // number: what was read before stays, and got_info is false.
    void ParseUserFile(std::span<const std::string_view> lines);

    // Empty ones before the first userfile.
    const UserDetails& details() const;

    // Whether gid is among the groups (admingroups). A user without groups is a member of -1.
    bool IsMemberOf(std::int16_t gid) const;
    bool IsAdminOf(std::int16_t gid) const;

  private:
    // One or none: only the few accounts that were opened have details, and tables hold many thousands.
    std::vector<UserDetails> details_;
};

} // namespace corvel
