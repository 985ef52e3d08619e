#include "browser/Listing.h"
#include "common/Text.h"
#include "support/qt/HostileServer.h"
#include "support/qt/ServerThread.h"
#include "ui/WindowDriver.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace corvel::test {
namespace {

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
#ifdef __SANITIZE_ADDRESS__
constexpr std::size_t ofInstruments = 768 * mebibyte; // zones, shadows, and what is freed but not given back
#else
constexpr std::size_t ofInstruments = 0;
#endif

// A number of kB in this process's status, in bytes.
std::size_t statusBytes(std::string_view key) {
    std::ifstream status("/proc/self/status");
    std::string word;
    std::size_t kilobytes = 0;
    while (status >> word && word != key) {
    }
    status >> kilobytes;
    return kilobytes * 1024;
}

// What no turn of the loop may take, in seconds: what reading 500,000 harmless lines takes this machine now,
// 50 ms where the bounds were set.
double longestTurn() {
    const std::vector<std::string_view> lines(100000, "-rw-r--r-- 1 user staff 512 Jan 5 12:34 readme.txt");
    double best = 1;
    for (int i = 0; i < 3; ++i) {
        const double start = threadSeconds();
        EXPECT_EQ(ParseDirectoryListing(lines, {}).entries.size(), lines.size());
        best = std::min(best, threadSeconds() - start);
    }
    return 5 * best;
}

// How the hostile site ends up.
enum class Ends { loggedIn, closed, waiting };

struct Row {
    const char* name;
    const char* command; // whose reply it is; "" for the greeting
    HostileReply reply;
    Ends ends = Ends::loggedIn;
    std::size_t mostSent = 97; // bytes: a login with the requests behind it
    std::size_t mostGrowth = 16 * mebibyte;
    const char* tab = "3"; // that is in front, counted from 1
    std::size_t pieceSize = 65536;
};

const std::vector<Row>& rows() {
    constexpr std::size_t much = 8 * mebibyte;
    constexpr std::size_t mostOfAList = 80 * mebibyte; // 2.5 times the longest reply
    static const std::string line = "-rw-r--r-- 1 u g 1 Jan 5 12:00 ";
    static const std::vector<Row> table = {
        {"endless greeting", "", {"220-hi\r\n", "220-and welcome\r\n", 40 * mebibyte}, Ends::closed, 0},
        {"endless greeting without line ends", "", {"220-hi", "x", much}, Ends::closed, 0},
        {"silence", "", {}, Ends::waiting, 0},
        {"silence in the middle", "STAT", {"211-status of /:\r\n-rw-r"}, Ends::waiting},
        {"many greetings", "", {"", "421 no\r\n", much, "220 hi\r\n"}, Ends::loggedIn},
        {"byte by byte",
         "STAT",
         {"211-x\r\n", line + "f\r\n", 400, "211 end\r\n"},
         Ends::loggedIn,
         97,
         16 * mebibyte,
         "3",
         1},
        {"a million continuation lines", "PASS", {"", "230-\r\n", 6000000, "230 in\r\n"}},
        {"empty lines", "STAT", {"211-x\r\n", "\r\n", much, "211 end\r\n"}},
        {"a listing of shortest rows",
         "STAT",
         {"211-x\r\n", "---------- 1 a a 1 a a a a\r\n", much, "211 end\r\n"},
         Ends::loggedIn,
         97,
         mostOfAList},
        {"shortest users",
         "SITE CorvelExt usertable",
         {"200-x\r\n", " | 1 |  |  | \r\n", much, "200 end\r\n"},
         Ends::loggedIn,
         97,
         mostOfAList,
         "5"},
        {"shortest groups",
         "SITE CorvelExt grouptable",
         {"200-x\r\n", " | 1 |  | 1\r\n", much, "200 end\r\n"},
         Ends::loggedIn,
         97,
         mostOfAList,
         "6"},
        {"long names", // which are kept, and once more while they are ordered
         "STAT",
         {"211-x\r\n", line + std::string(60000, 'n') + "\r\n", much, "211 end\r\n"},
         Ends::loggedIn,
         97,
         3 * much},
        {"names that steer",
         "STAT",
         {"211-x\r\n" + line + std::string("a\0b\r\n", 5) + line + "\x1B[2Jescape\r\n" + line +
          "\u202Egnp.exe\r\n" + line + "\xFF\xFB\x01telnet\xFF\xFF\r\n" + line + "%(name)\r\n" + line +
          "-rf\r\n" + line + "../../up\r\n211 end\r\n"}},
    };
    return table;
}

// Whatever one site does, its own window is held up by nothing and the other site goes on.
TEST(HostileServer, CostsNoMoreThanItsRowAllows) {
    ServerThread good(DemoOptions{});
    const double bound = longestTurn();
    for (const Row& row : rows()) {
        SCOPED_TRACE(row.name);
        std::atomic<std::size_t> received = 0;
        ServerThread bad([&](QObject* parent) {
            return (new HostileServer({{row.command, row.reply}}, row.pieceSize, received, parent))
                ->serverPort();
        });
        WindowDriver driver(
            siteRecord("good", good.waitForPort(), DemoServer::userName, DemoServer::password) +
            siteRecord("bad", bad.waitForPort(), "bob", "secret"));
        ASSERT_TRUE(driver.logIn(1));
        mdlMain& program = driver.window->program();
        driver.showTab(row.tab[0] - '1');
        program.selectSite(2);
        std::ofstream("/proc/self/clear_refs") << "5";
        const std::size_t before = statusBytes("VmRSS:");
        double longest = 0;
        const auto turnsUntil = [&](const std::function<bool()>& isSo) {
            QElapsedTimer timer;
            timer.start();
            while (!isSo() && timer.elapsed() < 20000) {
                const double start = threadSeconds();
                QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
                longest = std::max(longest, threadSeconds() - start);
            }
            return isSo();
        };
        program.connectSite(2);
        const SiteSession& session = driver.session(2);
        EXPECT_TRUE(turnsUntil([&] {
            switch (row.ends) {
            case Ends::loggedIn:
                return session.bLoggedIn && driver.isIdle(2) && session.browser.listings > 0 &&
                       session.browser.isArranged;
            case Ends::closed:
                return program.site(2).wSock->state() == SocketState::closed &&
                       session.consoleLog.text().ends_with("connection closed -----------\r\n");
            case Ends::waiting:
                return program.site(2).wSock->state() == SocketState::connected &&
                       received == (row.mostSent == 0 ? 0U : 92U);
            }
            return false;
        }));
        const std::uint64_t listings = driver.session(1).browser.listings;
        program.browser().refresh(1);
        EXPECT_TRUE(turnsUntil([&] { return driver.session(1).browser.listings > listings; }))
            << "the good site";
        EXPECT_LE(longest, bound) << "seconds for which the window did not answer";
        EXPECT_LE(statusBytes("VmHWM:") - before, row.mostGrowth + ofInstruments);
        EXPECT_LE(received, row.mostSent);
        EXPECT_LE(characterCount(session.consoleLog.text()), 25000U);
    }
}

} // namespace
} // namespace corvel::test
