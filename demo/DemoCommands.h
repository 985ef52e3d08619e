#pragma once

#include "demo/DemoAccounts.h"
#include "demo/DemoTree.h"

#include <initializer_list>
#include <optional>
#include <span>
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

// One command on its way through the tables.
struct DemoRequest {
    DemoWorld& world;
    DemoClient& client;
    TreeViewer viewer;         // who is logged in; no name before login
    std::string_view argument; // what follows the verb and one blank
    std::string syntax;        // of the command, from its row
};

enum class WhoMay { anyone, users, masters };
enum class Argument { optional, needed };

// One row of a command table: the verb in upper case, who may use it, what it says about its argument.
struct DemoCommand {
    std::string_view verb;
    std::string (*answer)(DemoRequest&);
    WhoMay whoMay = WhoMay::users;
    Argument argument = Argument::needed;
    std::string_view syntax = {}; // of the argument, for people
};

using DemoTables = std::span<const std::span<const DemoCommand>>;

// The tables: the commands of the protocol, those behind SITE, those behind SITE CorvelExt.
std::span<const DemoCommand> loginCommands();
std::span<const DemoCommand> fileCommands();
std::span<const DemoCommand> siteCommands();
std::span<const DemoCommand> accountCommands();
std::span<const DemoCommand> extensionCommands();

// Looks the first word of line up in the tables, in any case, and answers with that row, the rest of line its
// argument. prefix: what came before the line, such as "SITE ", for the error replies.
std::string dispatch(DemoTables tables, DemoRequest& request, std::string_view line, std::string_view prefix);

// A reply of one line, its text whole or in pieces; a reply of several, whose inner lines come each with
// their CR LF (RFC 959, section 4.2).
std::string reply(int code, std::string_view text);
std::string reply(int code, std::initializer_list<std::string_view> textPieces);
std::string longReply(int code, std::string_view first, std::string_view innerLines, std::string_view last);

// The reply to HELP: the verbs of the tables.
std::string helpReply(DemoTables tables, std::string_view first);

// The reply to a change of accounts: code 200 and what was done, or 550 and the problem.
std::string changeReply(const Problem& problem, std::initializer_list<std::string_view> done);

// The account that is logged in, or nothing; valid until the next change of the accounts.
const DemoUser* loggedInUser(const DemoWorld& world, const DemoClient& client);

// The reply to an argument of the wrong shape: code 501 and the command's syntax.
std::string syntaxReply(const DemoRequest& request);

// What a failed tree operation on a path answers: code 550, the path and the reason.
std::string treeReply(std::string_view path, TreeError error);

} // namespace corvel
