#include "DemoProgram.h"
#include "support/qt/HostileServer.h"
#include "widgets/ReportView.h"

#include <QAbstractItemView>
#include <QElapsedTimer>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <fstream>
#include <malloc.h>
#include <string>

// What servers that wish no good can cost, each beside a good server on which a person goes on clicking.

namespace corvel {
namespace {

using test::HostileReply;
using test::HostileServer;

constexpr std::size_t mebibyte = std::size_t{1024} * 1024;
constexpr std::size_t belowLimit = 31 * mebibyte;

struct Attack {
    const char* name;
    const char* command; // whose reply it is; "" for the greeting
    HostileReply reply;
    const char* tab = "1";  // that is in front: console, activity, browser, stats, users, groups
    const char* asked = ""; // that is sent for it; empty where the login does
};

std::string repeated(std::string_view text, std::size_t count) {
    std::string result;
    while (count-- > 0) {
        result += text;
    }
    return result;
}

const std::vector<Attack>& attacks() {
    static const std::vector<Attack> all = {
        {"greeting_with_line_ends",
         "",
         {"220-hi\r\n", "220-" + std::string(74, 'x') + "\r\n", 256 * mebibyte}},
        {"greeting_without_line_ends", "", {"220-hi", "x", 256 * mebibyte}},
        {"greetings", "", {"", "421 " + std::string(74, 'x') + "\r\n", 256 * mebibyte, "220 hi\r\n"}},
        {"million_continuations", "PASS", {"", "230-\r\n", 6000000, "230 in\r\n"}},
        {"million_continuations_of_text", "PASS", {"", "230-welcome to it\r\n", 19000000, "230 in\r\n"}},
        {"empty_lines", "STAT", {"211-x\r\n", "\r\n", belowLimit, "211 end\r\n"}, "3"},
        {"lines_of_the_console", "FEAT", {"211-x\r\n", " a\r\n", belowLimit, "211 end\r\n"}, "1", "FEAT"},
        {"listing_200000",
         "STAT",
         {"211-x\r\n", "-rw-r--r-- 1 user staff 4099123 Jan 5 12:30 an archive of some.iso\r\n", 200000 * 69,
          "211 end\r\n"},
         "3"},
        {"listing_shortest",
         "STAT",
         {"211-x\r\n", "---------- 1 a a 1 a a a a\r\n", belowLimit, "211 end\r\n"},
         "3"},
        {"listing_usual",
         "STAT",
         {"211-x\r\n", "-rw-r--r-- 1 user staff 4099123 Jan 5 12:30 an archive of some.iso\r\n", belowLimit,
          "211 end\r\n"},
         "3"},
        {"listing_long",
         "STAT",
         {"211-x\r\n", "-rw-r--r-- 1 user staff 4099123 Jan 5 12:30 " + std::string(200, 'n') + "\r\n",
          belowLimit, "211 end\r\n"},
         "3"},
        {"listing_strange", "STAT", {"211-x\r\n", "a\r\n", belowLimit, "211 end\r\n"}, "3"},
        {"users_shortest",
         "SITE CorvelExt usertable",
         {"200-x\r\n", " | 1 |  |  | \r\n", belowLimit, "200 end\r\n"},
         "5"},
        {"users_usual",
         "SITE CorvelExt usertable",
         {"200-x\r\n", "200- | 17 | somebody of some name | staff | 3M\r\n", belowLimit, "200 end\r\n"},
         "5"},
        {"users_long",
         "SITE CorvelExt usertable",
         {"200-x\r\n",
          "200- | 17 | " + std::string(40, 'n') + " | " + std::string(40, 'g') + " | " +
              std::string(40, '3') + "\r\n",
          belowLimit, "200 end\r\n"},
         "5"},
        {"groups_shortest",
         "SITE CorvelExt grouptable",
         {"200-x\r\n", " | 1 |  | 1\r\n", belowLimit, "200 end\r\n"},
         "6"},
        {"who_shortest",
         "SITE CorvelExt who",
         {"200-x\r\n", "200-cid" + repeated(" | ", 17) + "\r\n", belowLimit, "200 end\r\n"},
         "2",
         "who"},
        {"userfile_groups",
         "SITE CorvelExt userfile",
         {"200-x\r\n", "200-groups" + repeated(" | 1", 16000) + "\r\n", belowLimit, "200 end\r\n"},
         "5",
         "userfile"},
        {"userfile_short_lines",
         "SITE CorvelExt userfile",
         {"200-x\r\n", "200-groups | 1\r\n", belowLimit, "200 end\r\n"},
         "5",
         "userfile"},
        {"groupfile_members",
         "SITE CorvelExt groupfile",
         {"200-x\r\n", "200-members" + repeated(" | 1", 16000) + "\r\n", belowLimit, "200 end\r\n"},
         "6",
         "groupfile"},
    };
    return all;
}

std::unique_ptr<QTemporaryDir> twoSites(int good, int bad) {
    auto directory = std::make_unique<QTemporaryDir>();
    std::ofstream file(directory->filePath(QStringLiteral("sites.ini")).toStdString());
    for (const int port : {good, bad}) {
        file << "name = site\nhost = 127.0.0.1\nport = " << port << "\nuser = demo\npass = demo\n\n";
    }
    return directory;
}

void ask(mdlMain& program, std::string_view asked) {
    if (asked == "userfile") {
        program.admin().users().open(2, 0);
        program.admin().proceed(2);
    } else if (asked == "groupfile") {
        program.admin().groups().open(2, 0);
        program.admin().proceed(2);
    } else if (asked == "who") {
        program.askWho(2);
    } else {
        program.sendConsoleCommand(2, std::string(asked));
    }
}

// An attack from the first byte on until its reply is dealt with and shown, or its connection is ended. The
// site that attacks is in front; on the other one a person lists a directory again and again. Growth should
// stay below 2.5 times the limit of 32 MiB, 40 MiB where the reply is none of a list; a turn and a click
// below 50 and 100 ms.
void attack(benchmark::State& state) {
    const Attack& attack = attacks()[static_cast<std::size_t>(state.range(0))];
    state.SetLabel(attack.name);
    std::atomic<std::size_t> received = 0;
    ServerThread good({.entries = 1000});
    ServerThread bad([&](QObject* parent) {
        HostileServer::Script script = {
            {attack.command, attack.reply},
            {"SITE CorvelExt usertable", {"200-x\r\n200- | 7 | bob | staff | 3\r\n200 end\r\n"}},
            {"SITE CorvelExt grouptable", {"200-x\r\n200- | 7 | staff | 1\r\n200 end\r\n"}}};
        return static_cast<int>(
            (new HostileServer(std::move(script), 65536, received, parent))->serverPort());
    });
    const auto directory = twoSites(good.waitForPort(), bad.waitForPort());
    MemoryStore store = normalWindow();
    store.setValue("selected_tab", attack.tab);
    for ([[maybe_unused]] auto iteration : state) {
        frmMain window(store, directory->path().toStdString());
        window.start();
        waitUntilExposed(window);
        mdlMain& program = window.program();
        const SiteSession& goodSession = program.site(1).session;
        const SiteSession& session = program.site(2).session;
        const auto turn = [] { QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents); };
        program.connectSite(1);
        while (goodSession.sBrowserPWD.empty() || goodSession.bAwaitingReply) {
            turn();
        }
        program.selectSite(2);
        malloc_trim(0);
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = mebibytes("VmRSS:");
        double longest = 0;
        double longestClick = 0;
        QElapsedTimer click;
        std::uint64_t listings = 0;
        int quiet = 0;
        bool hasAsked = attack.asked[0] == '\0';
        const double start = threadSeconds();
        program.connectSite(2);
        // Over when nothing has been on its way for some turns.
        while (quiet < 20) {
            if (goodSession.browser.listings != listings || !click.isValid()) {
                longestClick = click.isValid()
                                   ? std::max(longestClick, 1e-6 * static_cast<double>(click.nsecsElapsed()))
                                   : 0;
                listings = goodSession.browser.listings;
                program.browser().refresh(1);
                click.start();
            }
            const double turnStart = threadSeconds();
            turn();
            longest = std::max(longest, threadSeconds() - turnStart);
            const bool isClosed = program.site(2).wSock->state() == SocketState::closed;
            const bool isRest = session.bLoggedIn && !session.bAwaitingReply && !session.sBrowserPWD.empty();
            if (isRest && !hasAsked) {
                hasAsked = true;
                ask(program, attack.asked);
            } else {
                quiet = isClosed || isRest ? quiet + 1 : 0;
            }
        }
        state.counters["cpu_s"] = threadSeconds() - start;
        state.counters["longest_turn_ms"] = 1e3 * longest;
        state.counters["longest_click_ms"] = longestClick;
        state.counters["growth_MiB"] = mebibytes("VmHWM:") - before;
        state.counters["kept_MiB"] = mebibytes("VmRSS:") - before;
        state.counters["bytes_sent"] = static_cast<double>(received.load());
        state.counters["logged_in"] = session.bLoggedIn ? 1 : 0;
        state.counters["console"] = static_cast<double>(session.consoleLog.text().size());
    }
}
BENCHMARK(attack)->DenseRange(0, 19)->Iterations(1)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace corvel
