#pragma once

#include "common/Pattern.h"
#include "demo/DemoCommands.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace corvel {

// One command and the pattern that its whole reply must match; the last CR LF is left out of both.
struct Exchange {
    std::string command;
    std::string pattern;
};

struct DialogueCase {
    const char* name;
    std::vector<Exchange> exchanges;
};

inline std::string ask(DemoWorld& world, DemoClient& client, std::string_view command) {
    std::string reply = answerCommand(world, client, command);
    EXPECT_TRUE(reply.ends_with("\r\n")) << command;
    reply.resize(reply.size() - 2);
    return reply;
}

inline DemoClient loggedIn(DemoWorld& world, const std::string& name = "demo") {
    DemoClient client;
    ask(world, client, "USER " + name);
    EXPECT_TRUE(matchesPattern(ask(world, client, "PASS " + name), "*230 *")) << name;
    return client;
}

// Plays every dialogue in a world of its own, with demo logged in unless it is to log in itself.
inline void play(const std::vector<DialogueCase>& cases, bool isLoggedIn = true) {
    for (const DialogueCase& row : cases) {
        DemoWorld world(60, 0);
        DemoClient client = isLoggedIn ? loggedIn(world) : DemoClient();
        for (const Exchange& exchange : row.exchanges) {
            const std::string reply = ask(world, client, exchange.command);
            EXPECT_TRUE(matchesPattern(reply, exchange.pattern))
                << row.name << "\n> " << exchange.command << "\n"
                << reply << "\nwanted: " << exchange.pattern;
        }
    }
}

} // namespace corvel
