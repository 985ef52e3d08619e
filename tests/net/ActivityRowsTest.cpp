#include "net/ActivityRows.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

using Texts = std::vector<std::string>;

// What varies from record to record.
struct Connection {
    std::string cid = "7";
    std::string status = "0";
    std::string bytes = "0";
    std::string speed = "0";
};

std::string recordOf(const Connection& connection) {
    return "200-cid | bob | staff | " + connection.cid +
           " | ftp | bobby | 10.0.0.5 | host | 10.0.0.6 | RETR x | 150 | /srv/pub | /pub | 12 | 345 | " +
           connection.status + " | " + connection.bytes + " | " + connection.speed;
}

// The rows of a site, fed with replies.
class Activity : public testing::Test {
  protected:
    void reply(const Texts& records) {
        Texts lines = {"200-who"};
        lines.insert(lines.end(), records.begin(), records.end());
        lines.insert(lines.end(), {"200 Command successful.", ""});
        bad_ = ParseWhoReply(std::vector<std::string_view>(lines.begin(), lines.end()), rows_, counters_);
    }

    Texts cells(std::size_t row) const {
        Texts texts;
        for (std::size_t column = 0; column < activityColumnCount; ++column) {
            texts.emplace_back(rows_.rows[row].text(static_cast<ActivityCell>(column)));
        }
        return texts;
    }

    std::string cell(std::size_t row, ActivityCell cell) const {
        return std::string(rows_.rows[row].text(cell));
    }

    ActivityRows rows_;
    ActivityCounters counters_;
    BadLines bad_;
};

TEST_F(Activity, ShowsTheFieldsInTheOrderOfTheColumns) {
    reply({recordOf({.status = "2", .bytes = "1048576", .speed = "33"})});
    ASSERT_EQ(rows_.rows.size(), 1U);
    EXPECT_EQ(cells(0),
              (Texts{"", "1", "    7", "bob", "staff", "bobby", "host", "10.0.0.5", "10.0.0.6", "ftp",
                     "uploading", "33 kBps", "RETR x", "/pub", "/srv/pub", "1 MB", "12", "345"}));
    EXPECT_EQ(counters_, (ActivityCounters{.uploadSpeed = 33, .uploaders = 1}));
}

TEST_F(Activity, NamesAndCountsTheStates) {
    using enum ActivityIcon;
    struct Row {
        const char* name;
        std::string status, bytes, speed; // as they are sent
        Texts shown;                      // action, speed, transferred
        ActivityIcon icon;
        ActivityCounters counters;
    };
    const std::vector<Row> rows = {
        {"idle", "0", "0", "5", {"idle", "5 kBps", "0 MB"}, idle, {.idlers = 1}},
        {"listing", "3", "1572864", "5", {"LIST", "5 kBps", "1.5 MB"}, idle, {.idlers = 1}},
        {"download", "1", "4294967296", "12.5", {"downloading", "12 kBps", "4096 MB"}, down, {0, 12, 0, 1}},
        {"no numbers", "1", "many", "fast", {"downloading", "0 kBps", "0 MB"}, down, {.downloaders = 1}},
        {"empty numbers", "2", "", "", {"uploading", "0 kBps", "0 MB"}, up, {.uploaders = 1}},
        {"unknown status", "4", "10485", "9", {"4", "9 kBps", "0.01 MB"}, none, {}},
        {"no status", "", "0", "9", {"", "9 kBps", "0 MB"}, none, {}},
        {"more behind the speed", "2", "0", "9 | x", {"uploading", "9 kBps", "0 MB"}, up, {9, 0, 1}},
    };
    for (const Row& row : rows) {
        reply({recordOf({"7", row.status, row.bytes, row.speed})});
        ASSERT_EQ(rows_.rows.size(), 1U) << row.name;
        EXPECT_EQ((Texts{cell(0, ActivityCell::action), cell(0, ActivityCell::speed),
                         cell(0, ActivityCell::transferred)}),
                  row.shown)
            << row.name;
        EXPECT_EQ(rows_.rows[0].icon(), row.icon) << row.name;
        EXPECT_EQ(counters_, row.counters) << row.name;
    }
}

TEST_F(Activity, TakesTheLinesThatAreRecords) {
    const std::string separators = recordOf({}).substr(7); // with the fields between them
    const std::vector<std::pair<std::string, bool>> lines = {
        {recordOf({}), true},
        {recordOf({}) + " | ", true},
        {recordOf({}).substr(0, recordOf({}).rfind(" | ")), false},
        {"200-cid " + separators, false},
        {"200-CID" + separators, false},
        {"200-cidr" + separators, false},
        {"250-cid" + separators, false},
        {"200-cid", false},
        {"", false},
    };
    for (const auto& [line, isRecord] : lines) {
        rows_ = {};
        reply({line});
        EXPECT_EQ(rows_.rows.size(), isRecord ? 1U : 0U) << line;
    }
}

TEST_F(Activity, KeepsRowsThatAreLeftOverAsStale) {
    reply({recordOf({.status = "1", .speed = "5"}), recordOf({.cid = "8", .status = "1", .speed = "6"})});
    reply({});
    EXPECT_EQ(counters_, ActivityCounters{});
    ASSERT_EQ(rows_.rows.size(), 2U);
    EXPECT_EQ(cells(1), (Texts{"", "--", "--", "--", "--", "--", "--", "--", "10.0.0.6", "ftp", "downloading",
                               "6 kBps", "RETR x", "/pub", "/srv/pub", "0 MB", "12", "345"}));
    EXPECT_EQ(rows_.rows[1].icon(), ActivityIcon::down);

    // Rows go by their place, not by their connection.
    reply({recordOf({.cid = "8"}), recordOf({.cid = "123456"}), recordOf({.cid = ""})});
    ASSERT_EQ(rows_.rows.size(), 3U);
    EXPECT_EQ(cell(0, ActivityCell::cid), "    8");
    EXPECT_EQ(cell(1, ActivityCell::cid), "123456");
    EXPECT_EQ(cell(1, ActivityCell::position), "2");
    EXPECT_EQ(cell(2, ActivityCell::cid), "     ");
}

TEST_F(Activity, SaysWhichRowsReadDifferently) {
    const auto changed = [this] {
        std::vector<std::size_t> rows;
        for (std::size_t row = 0; row < rows_.rows.size(); ++row) {
            if (rows_.rows[row].changedIn == rows_.replies) {
                rows.push_back(row);
            }
        }
        return rows;
    };
    using Rows = std::vector<std::size_t>;
    const std::string first = recordOf({.cid = "1"});
    const std::string second = recordOf({.cid = "2"});
    reply({first, second});
    EXPECT_EQ(changed(), (Rows{0, 1}));
    reply({first, second});
    EXPECT_EQ(changed(), Rows{});
    reply({first});
    EXPECT_EQ(changed(), (Rows{1}));
    reply({first});
    EXPECT_EQ(changed(), Rows{});
    reply({first, second, second});
    EXPECT_EQ(changed(), (Rows{1, 2})) << "the second is stale no more";
}

TEST_F(Activity, LeavesOutRecordsWithNumbersOutOfRange) {
    reply({recordOf({.cid = "1", .speed = "2147483648"}), recordOf({.cid = "2", .speed = "-2147483649"}),
           recordOf({.cid = "3", .bytes = std::string(400, '9')}), recordOf({.cid = "4"})});
    ASSERT_EQ(rows_.rows.size(), 1U);
    EXPECT_EQ(cell(0, ActivityCell::cid), "    4");
    EXPECT_EQ(badLinesMessage(bad_),
              "reply line 2: \"2147483648\" is no 32-bit number, the line is left out, "
              "and so are 2 more");

    reply({recordOf({.status = "1", .speed = "2147483647"}), recordOf({.status = "1", .speed = "1"}),
           recordOf({.status = "2", .speed = "-2147483648"}), recordOf({.status = "2", .speed = "-1"})});
    EXPECT_EQ(counters_.downloadSpeed, 2147483647);
    EXPECT_EQ(counters_.uploadSpeed, -2147483647 - 1);
}

} // namespace
} // namespace corvel
