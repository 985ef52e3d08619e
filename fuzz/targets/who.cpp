// Replies that say who is online.
#include "common/Text.h"
#include "Fuzz.h"
#include "net/ActivityRows.h"
#include "net/Statistics.h"

#include <algorithm>
#include <string>
#include <vector>

namespace corvel::fuzz {

namespace {

using Lines = std::vector<std::string_view>;

struct Online {
    ActivityRows activity;
    ActivityCounters counters;

    BadLines read(const Lines& lines) { return ParseWhoReply(lines, activity, counters); }
    std::int64_t connections() const {
        return std::int64_t{counters.uploaders} + counters.downloaders + counters.idlers;
    }
};

// Each line is read for itself, whatever stands around it.
void checkLinesAlone(const Online& all, const BadLines& bad, const Lines& lines) {
    std::size_t rows = 0;
    std::size_t badCount = 0;
    std::int64_t connections = 0;
    for (const std::string_view& line : lines) {
        Online alone;
        badCount += alone.read(Lines{line}).count;
        connections += alone.connections();
        for (const ActivityRow& row : alone.activity.rows) {
            require(rows < all.activity.rows.size(), "a line alone gives the row that it gives among others");
            const ActivityRow& same = all.activity.rows[rows++];
            for (std::size_t column = firstMovableColumn; column < activityColumnCount; ++column) {
                const auto cell = static_cast<ActivityCell>(column);
                require(row.text(cell) == same.text(cell), "a line alone reads as it does among others");
            }
            require(row.icon() == same.icon(), "and so does its picture");
        }
    }
    require(rows == all.activity.rows.size() && badCount == bad.count && connections == all.connections(),
            "all lines together are the lines");
    require(std::ranges::none_of(all.activity.rows, &ActivityRow::isStale), "what was just sent is fresh");
}

void checkTexts(const Online& online) {
    for (const ActivityRow& row : online.activity.rows) {
        for (std::size_t column = 0; column < activityColumnCount; ++column) {
            row.text(static_cast<ActivityCell>(column));
        }
    }
    const Status status{.hasSites = true, .sitename = "site", .isOnline = true, .activity = online.counters};
    statisticsText(online.counters);
    transfersText(online.counters);
    require(statusText(status, "%(online_all)/%(bandwidth_total)", "").find('/') != std::string::npos,
            "sums are told");
    trayImage(status);
}

} // namespace

void check(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    Online online;
    const BadLines bad = online.read(lines);
    checkLinesAlone(online, bad, lines);
    checkTexts(online);
    const ActivityCounters counters = online.counters;
    online.read(lines);
    require(online.counters == counters &&
                std::ranges::all_of(online.activity.rows,
                                    [](const ActivityRow& row) { return row.changedIn == 1; }),
            "the same reply changes no row");
    online.read({});
    require(online.counters == ActivityCounters{} &&
                std::ranges::all_of(online.activity.rows, &ActivityRow::isStale),
            "who is not named any more is stale");
    checkTexts(online);
}

void work(std::string_view bytes) {
    const Lines lines = split(bytes, lineEnd);
    Online online;
    online.read(lines);
    online.read(lines);
}

} // namespace corvel::fuzz
