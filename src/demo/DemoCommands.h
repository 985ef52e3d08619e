#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

#include <optional>
#include <string>
#include <string_view>

namespace corvel {

// What all clients of a demo server share.
struct DemoWorld {
    // users: the number of accounts, 1 to DemoAccounts::mostUsers; bigEntries: above 0 there is a directory
    // /big with that many files.
    DemoWorld(int users, int bigEntries);

    DemoTree tree;
    DemoAccounts accounts;
};

// What the server remembers of one control connection.
struct DemoClient {
    std::string pendingUser;               // from USER, until PASS
    std::optional<int> uid;                // of who is logged in
    std::string directory = "/";           // the current directory
    std::optional<std::string> renameFrom; // from RNFR, until RNTO
    bool isLeaving = false;                // after QUIT: close when the reply is out
};

// The reply that opens a connection.
std::string demoGreeting();

// The reply for a command line that was too long to keep.
std::string demoLineTooLong();

// The whole reply to one command line, CR LF at its end; line holds the client's bytes without line end, any
// bytes. Changes world and client as the command says. There is always a reply: what is no command gets one
// with code 500.
std::string answerCommand(DemoWorld& world, DemoClient& client, std::string_view line);

} // namespace corvel
