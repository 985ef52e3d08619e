#include "net/ActivityRows.h"
#include "net/Statistics.h"
#include "support/TestPorts.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace corvel {
namespace {

using Texts = std::vector<std::string>;

std::string recordOf(const std::string& cid, const std::string& behindTheSession = "0 | 0 | 0") {
    return "200-cid | bob | staff | " + cid +
           " | ftp | bobby | 10.0.0.5 | host | 10.0.0.6 | RETR x | 150 | /srv/pub | /pub | 12 | 345 | " +
           behindTheSession; // status, bytes and speed
}

// The rows of a site, fed with replies.
class Activity : public testing::Test {
  protected:
    // What the rows read that the reply has changed, the cells of each joined.
    Texts reply(const Texts& records) {
        Texts lines = {"200-who"};
        lines.insert(lines.end(), records.begin(), records.end());
        lines.insert(lines.end(), {"200 Command successful.", ""});
        bad_ = ParseWhoReply(std::vector<std::string_view>(lines.begin(), lines.end()), rows_, counters_);
        Texts changed;
        for (const ActivityRow& row : rows_.rows) {
            if (row.changedIn == rows_.replies) {
                changed.emplace_back();
                for (std::size_t column = 1; column < activityColumnCount; ++column) {
                    changed.back().append(row.text(static_cast<ActivityCell>(column))).append(";");
                }
            }
        }
        return changed;
    }

    ActivityRows rows_;
    ActivityCounters counters_;
    BadLines bad_;
};

TEST_F(Activity, ShowsAndCountsTheRecords) {
    using enum ActivityIcon;
    struct Row {
        std::string sent; // status, bytes, speed
        std::string action;
        std::string transferred;
        ActivityIcon icon;
        ActivityCounters counters;
    };
    const std::vector<Row> rows = {
        {"2 | 1048576 | 33", "uploading;33 kBps", "1 MB", up, {.uploadSpeed = 33, .uploaders = 1}},
        {"3 | 1572864 | 5", "LIST;5 kBps", "1.5 MB", idle, {.idlers = 1}},
        {"1 | 4294967296 | 12.5", "downloading;12 kBps", "4096 MB", down, {0, 12, 0, 1}},
        {"1 | many | fast", "downloading;0 kBps", "0 MB", down, {.downloaders = 1}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(reply({recordOf("7", row.sent)}),
                  Texts{"1;    7;bob;staff;bobby;host;10.0.0.5;10.0.0.6;ftp;" + row.action +
                        ";RETR x;/pub;/srv/pub;" + row.transferred + ";12;345;"});
        EXPECT_EQ(rows_.rows[0].icon(), row.icon) << row.sent;
        EXPECT_EQ(counters_, row.counters) << row.sent;
    }
}

TEST_F(Activity, RowsGoByTheirPlaceAndSomeAreLeftOver) {
    EXPECT_EQ(reply({recordOf("1"), recordOf("2", "1 | 0 | 6")}).size(), 2U);
    EXPECT_EQ(reply({recordOf("1"), recordOf("2", "1 | 0 | 6")}), Texts());
    EXPECT_EQ(
        reply({recordOf("1")}),
        Texts{"--;--;--;--;--;--;--;10.0.0.6;ftp;downloading;6 kBps;RETR x;/pub;/srv/pub;0 MB;12;345;"});
    EXPECT_EQ(rows_.rows[1].icon(), ActivityIcon::down);
    EXPECT_EQ(counters_, ActivityCounters{.idlers = 1});
    EXPECT_EQ(reply({recordOf("1")}), Texts());
    const Texts changed = reply({recordOf("1"), recordOf("123456"), recordOf("")});
    ASSERT_EQ(changed.size(), 2U) << "the second is stale no more";
    EXPECT_TRUE(changed[0].starts_with("2;123456;bob;"));
    EXPECT_TRUE(changed[1].starts_with("3;     ;bob;"));
}

TEST_F(Activity, LeavesOutRecordsWithNumbersOutOfRange) {
    reply({recordOf("1", "0 | 0 | 2147483648"), recordOf("2", "0 | 0 | -2147483649"),
           recordOf("3", "0 | " + std::string(400, '9') + " | 0"), recordOf("4")});
    ASSERT_EQ(rows_.rows.size(), 1U);
    EXPECT_EQ(rows_.rows[0].text(ActivityCell::cid), "    4");
    EXPECT_EQ(badLinesMessage(bad_),
              "reply line 2: \"2147483648\" is no 32-bit number, the line is left out, and so are 2 more");
    reply({recordOf("1", "1 | 0 | 2147483647"), recordOf("1", "1 | 0 | 1")});
    EXPECT_EQ(counters_.downloadSpeed, 2147483647);
}

const Status online = {
    .hasSites = true,
    .sitename = "home",
    .isOnline = true,
    .activity = {.uploadSpeed = 120, .downloadSpeed = 40, .uploaders = 3, .downloaders = 1, .idlers = 7}};

TEST(Statistics, SumUpWhoIsOnline) {
    std::string rows;
    for (const MenuVariable& row : statisticsRows(online)) {
        rows += row.sName + "=" + row.sValue + ";";
    }
    EXPECT_EQ(rows, "sitename=home;online_all=11;online_transfer=4;online_up=3;online_down=1;online_idle=7;"
                    "bandwidth_total=160;bandwidth_up=120;bandwidth_down=40;");
    EXPECT_EQ(transfersText(online.activity), "3 up 120 kBps · 1 down 40 kBps");
}

TEST(Statistics, FillTheTemplateOfTheState) {
    Status offline = online;
    offline.isOnline = false;
    EXPECT_EQ(statusText({}, "on", ""), "Corvel");
    EXPECT_EQ(statusText(online, "", "off"), "Corvel - home");
    EXPECT_EQ(statusText(offline, "on", "%(sitename) is away"), "home is away");
    EXPECT_EQ(statusText(online, "%(sitename): %(ONLINE_UP,4,R) up", "off"), "home:    3 up");
}

TEST(Statistics, SayHowAConnectionIsProtected) {
    struct Row {
        SocketState state;
        Encryption encryption;
        std::string address, cipher, text;
    };
    using enum SocketState;
    const std::vector<Row> rows = {
        {connecting, Encryption::greeting, "10.0.0.5", "", ""},
        {connected, Encryption::consent, "127.0.0.1", "", "encrypting..."},
        {connected, Encryption::on, "127.0.0.1", "AES", "closed TLS 1.3, AES"},
        {connected, Encryption::on, "10.0.0.5", "", "closed TLS 1.3"},
        {connected, Encryption::none, "127.1.2.3", "", ""},
        {connected, Encryption::none, "::ffff:127.0.0.1", "", ""},
        {connected, Encryption::none, "10.0.0.5", "", "open not encrypted"},
        {connected, Encryption::none, "::1:5", "", "open not encrypted"},
    };
    for (const Row& row : rows) {
        auto socket = std::make_unique<test::FakeSocket>();
        socket->current = row.state;
        socket->address = row.address;
        socket->facts = {.protocol = "TLS 1.3", .cipher = row.cipher};
        Site site;
        site.session.encryption = row.encryption;
        site.wSock = std::move(socket);
        const EncryptionStatus status = encryptionStatus(site);
        static constexpr std::array locks = {"", "open ", "closed "};
        EXPECT_EQ(locks[static_cast<std::size_t>(status.lock)] + status.text, row.text) << row.address;
    }
}

} // namespace
} // namespace corvel
