#include "demo/DemoCommands.h"

#include "common/Text.h"
#include "common/TextEncoding.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace corvel {
namespace {

// A server and a client on it.
struct Session {
    // A command and the pattern that its whole reply but for the last CR LF must match.
    struct Exchange {
        std::string command;
        std::string pattern;
    };

    void play(const std::vector<Exchange>& exchanges) {
        for (const auto& [command, pattern] : exchanges) {
            const std::string reply = answerCommand(world, client, command);
            EXPECT_TRUE(matchesPattern(reply, pattern + "\r\n") && isValidUtf8(reply))
                << "> " << command << "\n"
                << reply << "\nwanted: " << pattern;
        }
    }

    DemoWorld world{60, 0};
    DemoClient client;
};

TEST(DemoCommands, EncryptWhereTheServerDoes) {
    struct Row {
        const char* name;
        DemoClient client;
        std::vector<Session::Exchange> exchanges;
    };
    const std::vector<Row> rows = {
        {"never", {}, {{"AUTH TLS", "500 *"}, {"HELP", "*STOR\r\n CWD *"}, {"FEAT", "211-*:\r\n UTF8*"}}},
        {"from the first byte on",
         {.tls = DemoTls::implicit},
         {{"AUTH TLS", "500 *"}, {"USER demo", "331 *"}}},
        {"for who wants it",
         {.tls = DemoTls::offered},
         {{"HELP", "*STOR\r\n AUTH CWD *"},
          {"FEAT", "*\r\n AUTH TLS\r\n*"},
          {"AUTH", "501 *"},
          {"AUTH SSL", "504 *"},
          {"USER demo", "331 *"},
          {"auth tls", "234 *"},
          {"PASS demo", "503 *"}, // the name came in clear
          {"AUTH TLS", "503 *"},
          {"PBSZ 0", "500 *"},
          {"PROT P", "500 *"},
          {"USER demo", "331 *"},
          {"AUTH TLS", "503 *"}}},
        {"not after the login",
         {.tls = DemoTls::offered},
         {{"USER demo", "331 *"}, {"PASS demo", "*230 *"}, {"AUTH TLS", "503 *"}, {"PWD", "257 *"}}},
        {"or nobody logs in",
         {.tls = DemoTls::required},
         {{"USER demo", "530 *"}, {"PASS demo", "503 *"}, {"AUTH TLS", "234 *"}, {"USER demo", "331 *"}}},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.name);
        Session session;
        session.client = row.client;
        session.play(row.exchanges);
    }
}

} // namespace
} // namespace corvel
