#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// One account of one site. The table reply fills iUID, sName, sStdGroup and sFlags; ParseUserFile the rest.
// All texts are the server's bytes.
class clsUser {
  public:
    static constexpr std::size_t sectionCount = 10;

    std::int16_t iUID = 0; // -1 marks the one record of an empty table
    std::string sName;
    std::string sStdGroup;
    std::string sFlags;
    std::string sPwdHash; // no reply fills it
    std::string sTagline;
    std::string sVFSFile;
    std::string sHomePath;
    std::int32_t iBWLimitUp = 0; // kB/s
    std::int32_t iBWLimitDn = 0;
    std::int16_t iLoginsFTP = 0;
    std::int16_t iLoginsTelnet = 0;
    std::int16_t iLoginsHTTP = 0;
    bool got_info = false; // a userfile reply was read to its end
    int my_index = 0;      // the site, from 1
    std::string sUIDText;  // the uid as the table reply spells it; the list shows it

    // Reads the lines of a userfile reply, "200-key | value" each, into this record; lines with unknown keys
    // are passed over. Throws ConversionError, IndexOutOfRange or InvalidArgument with the reply line's
    // number: what was read before stays, and got_info is false.
    void ParseUserFile(std::span<const std::string_view> lines);

    // Whether gid is among groups() (admingroups()). A user without groups is a member of -1.
    bool IsMemberOf(std::int16_t gid) const;
    bool IsAdminOf(std::int16_t gid) const;

    // Credits of the ten sections, in 1/10000 of the server's unit, of which 1024 make a megabyte.
    const std::array<std::int64_t, sectionCount>& credits() const { return lists().credits; }
    const std::array<std::int16_t, sectionCount>& ratios() const { return lists().ratios; }

    // Group ids, one -1 where a userfile names none.
    const std::vector<std::int16_t>& groups() const { return lists().groups; }
    const std::vector<std::int16_t>& admingroups() const { return lists().admingroups; }

    // The masks from which the user may log in, ident@host.
    const std::vector<std::string>& ips() const { return lists().ips; }

  private:
    friend struct UserFileReader;

    struct Lists {
        std::array<std::int64_t, sectionCount> credits{};
        std::array<std::int16_t, sectionCount> ratios{};
        std::vector<std::int16_t> groups{-1};
        std::vector<std::int16_t> admingroups{-1};
        std::vector<std::string> ips{""};
    };

    const Lists& lists() const;

    // Only the few accounts that were opened have lists, and a table of many thousands is quick to build
    // without. Each ParseUserFile makes its own, so copies of a record may share them.
    std::shared_ptr<Lists> lists_;
};

} // namespace corvel
