#pragma once

#include "common/Errors.h"
#include "config/WindowState.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// Who is doing what on the server, summed over the last who reply. Speeds in kB/s.
struct ActivityCounters {
    std::int32_t uploadSpeed = 0;
    std::int32_t downloadSpeed = 0;
    std::int32_t uploaders = 0;
    std::int32_t downloaders = 0;
    std::int32_t idlers = 0;

    bool operator==(const ActivityCounters&) const = default;
};

// The columns of lvwActivity, with the numbers that the stored state has for them. The first two are the
// list's own: a row's icon, and its number from 1.
enum class ActivityCell : std::uint8_t {
    icon,
    position,
    cid,
    user,
    group,
    ident,
    hostname,
    ip,
    dataIp,
    service,
    action,
    speed,
    lastCommand,
    pwd,
    realPath,
    transferred,
    idleTime,
    sessionTime,
};

enum class ActivityIcon : std::uint8_t { none, idle, up, down };

// A connection as the list shows it, in the server's bytes.
struct ActivityRow {
    // What the row reads in a column. A stale row reads "--" where it names the connection. The icon's column
    // has no text. The text lives until the row next changes.
    std::string_view text(ActivityCell cell) const;

    // By the text of its action.
    ActivityIcon icon() const;

    std::string texts;                                     // of the columns, one behind the other,
    std::array<std::uint32_t, activityColumnCount> ends{}; // and where each of them ends
    std::uint64_t changedIn = 0; // the number of the reply that last made the row read differently
    bool isStale = false;        // the last reply has no record for it
};

// A server's address has no more ports, and its connections come to one.
inline constexpr std::size_t mostConnections = 65536;

// What the replies to who have brought since the connection began.
struct ActivityRows {
    std::vector<ActivityRow> rows;
    std::uint64_t replies = 0; // how many there were
    std::string problem;       // the server's line where it refused the last request
};

// Reads the lines of a reply to who as they arrive. Rows change with each of them; what they sum up to is
// known at the end.
class WhoReader {
  public:
    // activity: borrowed, must outlive the reader and is nobody else's to change.
    explicit WhoReader(ActivityRows& activity) : activity_(&activity) {}

    void read(std::string_view line);
    // That was the reply: rows without a record become stale. Gives the lines that were left out.
    BadLines finish(ActivityCounters& counters);

  private:
    ActivityRows* activity_;
    ActivityCounters counters_;
    BadLines bad_;
    std::size_t lines_ = 0;
    std::size_t next_ = 0; // row
};

// Reads a reply to "SITE CorvelExt who" into the rows, and sums it up in the counters. lines: the whole
// reply, split at CR LF, in the server's bytes. A record is a line that begins with "200-cid" and has
// seventeen separators " | " or more behind it: user, group, cid, service, ident, address, host, address of
// the data connection, last command, code of the last reply, real path, path, seconds idle, seconds of
// session, status (0 idle, 1 download, 2 upload, 3 listing), bytes moved, kB/s. The n-th record is the n-th
// row; rows without one become stale and stay. Records whose numbers are out of range, and those beyond
// mostConnections, are left out and come back as bad lines; sums stop at the limits of 32 bits.
BadLines ParseWhoReply(std::span<const std::string_view> lines, ActivityRows& activity,
                       ActivityCounters& counters);

} // namespace corvel
